// Pose sets: the add, update and delete rules, comparison by name and poses, and the document round trip.
#include <gtest/gtest.h>

#include "manipulation/support/RkManipulationTestTasks.h"
#include "sequencing/RkPoseSet.h"
#include "support/RkRoundTrip.h"

TEST(RkPoseSet, adds_only_new_names_updates_only_held_names_and_deletes_quietly) {
  RkPoseSet poses;
  poses.setName("cell 1");
  EXPECT_TRUE(poses.addPose(std::string("pick"), placementAt(0.4, -0.3, 0.2)));
  EXPECT_FALSE(poses.addPose(std::string("pick"), placementAt(9, 9, 9)));
  EXPECT_FALSE(poses.updatePose(std::string("place"), placementAt(9, 9, 9)));
  EXPECT_EQ(poses.poseMap().size(), 1u);
  EXPECT_EQ(*poses.poseMap().find("pick"), placementAt(0.4, -0.3, 0.2));
  EXPECT_TRUE(poses.updatePose(std::string("pick"), placementAt(0.5, -0.3, 0.2)));
  EXPECT_EQ(*poses.poseMap().find("pick"), placementAt(0.5, -0.3, 0.2));
  EXPECT_TRUE(poses.addPose(std::string("place"), placementAt(0.5, 0.3, 0.2)));
  EXPECT_TRUE(roundTrips(poses));

  const RkPoseSet before = poses;
  poses.deletePose(std::string("home"));
  EXPECT_EQ(poses, before);
  RkPoseSet renamed = poses;
  renamed.setName("cell 2");
  EXPECT_NE(renamed, poses);
  poses.deletePose(std::string("pick"));
  EXPECT_EQ(poses.poseMap().size(), 1u);
  EXPECT_EQ(poses.poseMap().find("pick"), nullptr);
}
