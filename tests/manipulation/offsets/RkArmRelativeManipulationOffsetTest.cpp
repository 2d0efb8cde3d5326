// The link-relative and object-relative offsets on a planar two-link arm standing on a turned, shifted base:
// their goals against frames worked out by hand as the arm moves, and their failure lines.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkLinkRelativeManipulationOffset.h"
#include "offsets/RkObjectRelativeManipulationOffset.h"

namespace {

RkCoordinateSystemTransformation turnZ(RkReal angle) {
  return RkCoordinateSystemTransformation(RkVector(),
                                          RkOrientation::fromAngleAxis(angle, RkVector::zVector()));
}

const RkCoordinateSystemTransformation kRelative(RkVector(0.05, -0.02, 0.1),
                                                 RkOrientation(0.5, 0.5, 0.5, 0.5));
const RkCoordinateSystemTransformation kMounting = placementAt(2, 0, 0.5) * turnZ(M_PI / 2);

// Revolute joints about z, links 1 and 0.5 long, each DH frame at the link's far end; mounted 0.5 up on a
// base at (2, 0, 0) turned a quarter about z.
struct PlanarArm : RkFakeControlSystem {
  RkManipulationSequence sequence;
  RkManipulationSequenceState sequenceState;
  RkManipulationOffsetStateContainer container;

  PlanarArm() {
    RkManipulatorLink shoulder, elbow;
    shoulder.setIdentifier("shoulder");
    shoulder.setDhOffset(placementAt(1, 0, 0));
    elbow.setIdentifier("elbow");
    elbow.setParentIndex(0);
    elbow.setFixedTransformation(placementAt(1, 0, 0));
    elbow.setDhOffset(placementAt(0.5, 0, 0));
    manipulatorList[0].addLink(shoulder);
    manipulatorList[0].addLink(elbow);
    manipulatorList[0].setBasePlacement(placementAt(0, 0, 0.5));
    positionStateList[0].setBasePlacement(placementAt(2, 0, 0) * turnZ(M_PI / 2));
    moveTo(0.3, -0.8);
  }
  void moveTo(RkReal q0, RkReal q1) {
    RkPositionState::RealVector q;
    q.pushBack(q0);
    q.pushBack(q1);
    positionStateList[0].setJointPositions(q);
  }
  // The link's primary or DH frame at joint positions q0, q1, by trigonometry.
  static RkCoordinateSystemTransformation frame(bool elbow, bool dh, RkReal q0, RkReal q1) {
    const RkReal reach0 = elbow || dh ? 1 : 0, reach1 = elbow && dh ? 0.5 : 0, angle = elbow ? q0 + q1 : q0;
    return kMounting *
           placementAt(reach0 * std::cos(q0) + reach1 * std::cos(q0 + q1),
                       reach0 * std::sin(q0) + reach1 * std::sin(q0 + q1), 0) *
           turnZ(angle);
  }
  // Starts offset (Complete when init succeeds) or updates it, as end effector 0 of frame 0.
  RkManipulationStatus::Enum run(const RkManipulationOffset& offset, bool start) {
    if (start)
      return offset.init(0.0, params(), sequence, sequenceState, 0, 0, container)
                 ? RkManipulationStatus::Complete
                 : RkManipulationStatus::Failure;
    return offset.update(1.0, params(), sequence, sequenceState, 0, 0, *container.element());
  }
  const RkCoordinateSystemTransformation& goal() const {
    return container.element()->goalOffsetTransformation().placement();
  }
};

RkLinkRelativeManipulationOffset onLink(const std::string& link, RkU32 frameType) {
  RkLinkRelativeManipulationOffset offset;
  offset.setObjectFrameAsManipulationFrame();
  offset.setRelativeOffset(kRelative);
  offset.setLinkIdentifier(link);
  offset.setLinkFrameType(frameType);
  return offset;
}

}  // namespace

TEST(RkLinkRelativeManipulationOffset, goal_follows_the_chosen_frame_of_the_link_as_the_arm_moves) {
  PlanarArm arm;
  // Only 0 means the primary frame: 1 and any larger value mean the DH frame.
  for (RkU32 frameType : {0u, 1u, 7u}) {
    for (bool elbow : {false, true}) {
      const RkLinkRelativeManipulationOffset offset = onLink(elbow ? "elbow" : "shoulder", frameType);
      arm.moveTo(0.3, -0.8);
      ASSERT_EQ(arm.run(offset, true), RkManipulationStatus::Complete);
      EXPECT_TRUE(arm.goal().approxEq(PlanarArm::frame(elbow, frameType, 0.3, -0.8) * kRelative, 1e-12));
      arm.moveTo(1.2, M_PI / 2);
      ASSERT_EQ(arm.run(offset, false), RkManipulationStatus::Complete);
      const RkCoordinateSystemTransformation link = PlanarArm::frame(elbow, frameType, 1.2, M_PI / 2);
      EXPECT_TRUE(arm.goal().approxEq(link * kRelative, 1e-12)) << elbow << frameType;
      // With system-frame axes only the link's origin counts.
      RkLinkRelativeManipulationOffset level = offset;
      level.setSystemFrameAsManipulationFrame();
      ASSERT_EQ(arm.run(level, false), RkManipulationStatus::Complete);
      EXPECT_TRUE(arm.goal().approxEq(
          RkCoordinateSystemTransformation(link.translation(), RkOrientation()) * kRelative, 1e-12));
    }
  }
}

TEST(RkLinkRelativeManipulationOffset, refuses_with_one_exact_line_each_cycle_and_keeps_the_last_goal) {
  PlanarArm arm;
  ASSERT_EQ(arm.run(onLink("shoulder", 0), true), RkManipulationStatus::Complete);
  const RkCoordinateSystemTransformation last = arm.goal();
  const std::string prefix = "RkLinkRelativeManipulationOffset::calculatePrimaryFrame ";
  for (const auto& [link, line] :
       {std::pair<std::string, std::string>{"", prefix + "link identifier is empty.\n"},
        {"wrist", prefix + "link identifier wrist cannot be found.\n"}}) {
    Rk::Print::Capture capture;
    EXPECT_EQ(arm.run(onLink(link, 1), false), RkManipulationStatus::Failure);
    EXPECT_EQ(arm.run(onLink(link, 1), false), RkManipulationStatus::Failure);
    EXPECT_EQ(arm.goal(), last);
    ASSERT_EQ(capture.lines().size(), 2u);
    EXPECT_EQ(capture.lines()[1].level, 4);
    EXPECT_EQ(capture.lines()[1].text, line);
  }
  Rk::Print::Capture capture;
  RkLinkRelativeManipulationOffset undefined = onLink("shoulder", 0);
  undefined.setManipulationFrameXAxisSourceFrame(RkRelativeManipulationOffset::UndefinedFrame);
  undefined.setManipulationFrameYAxisSourceFrame(RkRelativeManipulationOffset::UndefinedFrame);
  EXPECT_EQ(arm.run(undefined, true), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkLinkRelativeManipulationOffset::init manipulation frame is not valid (more than one axis is "
            "undefined).\n");
}

TEST(RkObjectRelativeManipulationOffset, goal_follows_the_manipulator_frame_and_never_prints) {
  PlanarArm arm;
  Rk::Print::Capture capture;
  EXPECT_EQ(arm.run(RkObjectRelativeManipulationOffset(), true), RkManipulationStatus::Failure);
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_EQ(capture.lines()[0].text,
            "RkObjectRelativeManipulationOffset::init manipulation frame is not valid (more than one axis is "
            "undefined).\n");
  capture.clear();

  RkObjectRelativeManipulationOffset object, system;
  object.setObjectFrameAsManipulationFrame();
  system.setSystemFrameAsManipulationFrame();
  ASSERT_EQ(arm.run(object, true), RkManipulationStatus::Complete);
  EXPECT_TRUE(arm.goal().approxEq(kMounting, 1e-12));
  // The base drives off; the joints do not matter, even too few of them.
  const RkCoordinateSystemTransformation driven = placementAt(-1, 3, 0.2) * turnZ(-0.7);
  arm.positionStateList[0].setBasePlacement(driven);
  arm.positionStateList[0].setJointPositions(RkPositionState::RealVector());
  object.setRelativeOffset(kRelative);
  ASSERT_EQ(arm.run(object, false), RkManipulationStatus::Complete);
  EXPECT_TRUE(arm.goal().approxEq(driven * placementAt(0, 0, 0.5) * kRelative, 1e-12));
  ASSERT_EQ(arm.run(system, false), RkManipulationStatus::Complete);
  EXPECT_TRUE(arm.goal().approxEq(placementAt(-1, 3, 0.7), 1e-12));
  EXPECT_TRUE(capture.lines().empty());

  // Without a manipulator at the index: one line, Failure.
  RkManipulationUpdateParams elsewhere = arm.params();
  elsewhere.manipulatorIndex = 1;
  EXPECT_EQ(object.update(0, elsewhere, arm.sequence, arm.sequenceState, 0, 0, *arm.container.element()),
            RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkObjectRelativeManipulationOffset::calculatePrimaryFrame no manipulator with a position state "
            "at index 1 "
            "in the stated system.\n");
}
