// The reference-pose offset: the pose looked up in the pose set when its frame starts and held, silent
// failures for a missing pose set or pose, and a state that is never read back.
#include <gtest/gtest.h>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkNestedFrameTestTasks.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

TEST(RkReferencePoseManipulationOffset, holds_the_pose_found_at_frame_start_until_the_frame_starts_again) {
  RkPoseSet poses;
  ASSERT_TRUE(poses.addPose(std::string("pick"), placementAt(0.4, -0.2, 0.1)));
  RkReferencePoseManipulationOffset atPick;
  atPick.setPoseName("pick");
  const RkStandardManipulationFrame frame = frameWithOffset("at pick", atPick, RkCountdownEvent(5));
  RkFrameRun run;
  run.params.poseSet = &poses;
  ASSERT_TRUE(run.init(frame));
  EXPECT_EQ(run.goal(), placementAt(0.4, -0.2, 0.1));
  ASSERT_TRUE(poses.updatePose(std::string("pick"), placementAt(0.5, 0, 0.1)));
  EXPECT_EQ(run.update(frame), RkManipulationStatus::InProgress);
  EXPECT_EQ(run.goal(), placementAt(0.4, -0.2, 0.1));
  ASSERT_TRUE(run.init(frame));
  EXPECT_EQ(run.goal(), placementAt(0.5, 0, 0.1));
}

TEST(RkReferencePoseManipulationOffset, a_missing_pose_set_or_pose_fails_init_without_a_line_of_its_own) {
  Rk::Print::Capture capture;
  RkReferencePoseManipulationOffset atPlace;
  atPlace.setPoseName("place");
  RkFrameRun run;
  RkManipulationOffsetStateContainer container;
  EXPECT_FALSE(atPlace.init(0.0, run.params, run.sequence, run.sequenceState, 0, 0, container));
  RkPoseSet poses;
  poses.addPose(std::string("pick"), placementAt(0, 0, 0));
  run.params.poseSet = &poses;
  EXPECT_FALSE(atPlace.init(0.0, run.params, run.sequence, run.sequenceState, 0, 0, container));
  EXPECT_EQ(capture.text(), "");
  // The frame says that its offset failed.
  EXPECT_FALSE(run.init(frameWithOffset("at place", atPlace, RkCountdownEvent(0))));
  EXPECT_EQ(capture.text(), "RkStandardManipulationFrame::init manipulation offset failed to initialize.\n");
}

TEST(RkReferencePoseManipulationOffset, its_state_writes_no_pose_and_is_not_read_back) {
  RkReferencePoseManipulationOffsetState state;
  state.setOffset(RkEndEffectorPlacement(placementAt(1, 2, 3)));
  std::string written;
  ASSERT_TRUE(RkXmlWriter::writeString(state, written));
  EXPECT_EQ(written.find("translation"), std::string::npos) << written;

  RkManipulationOffsetStateContainer container;
  container.setElement(state);
  ASSERT_TRUE(RkXmlWriter::writeString(container, written));
  Rk::Print::Capture capture;
  RkManipulationOffsetStateContainer read;
  RkXmlReader::readString(written, read);
  EXPECT_EQ(read.element(), nullptr);
  EXPECT_NE(
      capture.text().find(
          "\"http://rkmanipulation.org/namespace/ct#referencePoseManipulationOffset\" tag not registered"),
      std::string::npos)
      << capture.text();
}
