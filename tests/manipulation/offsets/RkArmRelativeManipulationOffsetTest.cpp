// The link-relative and object-relative offsets on a planar two-link arm standing on a turned, shifted base:
// their goals against frames worked out by hand, following the arm cycle by cycle, and their failure lines.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <typeinfo>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkLinkRelativeManipulationOffset.h"
#include "offsets/RkObjectRelativeManipulationOffset.h"
#include "offsets/RkObjectRelativeManipulationOffsetState.h"
#include "sequencing/RkManipulationSequence.h"

namespace {

RkCoordinateSystemTransformation turnZ(RkReal angle) {
  return RkCoordinateSystemTransformation(RkVector(),
                                          RkOrientation::fromAngleAxis(angle, RkVector::zVector()));
}

const RkCoordinateSystemTransformation kRelative(RkVector(0.05, -0.02, 0.1),
                                                 RkOrientation::fromAngleAxis(0.4, RkVector(1, 1, 0)));

// Two revolute joints about z, links 1 and 0.5 long, each link's DH frame at its far end; mounted 0.5 up on a
// base that stands at (2, 0, 0) turned a quarter about z.
struct PlanarArm : RkFakeControlSystem {
  RkManipulationSequence sequence;
  RkManipulationSequenceState sequenceState;

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
    moveTo(0, 0);
  }
  void moveTo(RkReal shoulder, RkReal elbow) {
    RkPositionState::RealVector positions;
    positions.pushBack(shoulder);
    positions.pushBack(elbow);
    positionStateList[0].setJointPositions(positions);
  }
  // The manipulator's frame, and the frames of its links at joint positions q0, q1, worked out by hand.
  static RkCoordinateSystemTransformation mounting() { return placementAt(2, 0, 0.5) * turnZ(M_PI / 2); }
  static RkCoordinateSystemTransformation expected(const std::string& link, bool dh, RkReal q0, RkReal q1) {
    const RkReal c0 = std::cos(q0), s0 = std::sin(q0), c01 = std::cos(q0 + q1), s01 = std::sin(q0 + q1);
    if (link == "shoulder") return mounting() * placementAt(dh ? c0 : 0, dh ? s0 : 0, 0) * turnZ(q0);
    return mounting() * placementAt(c0 + (dh ? 0.5 * c01 : 0), s0 + (dh ? 0.5 * s01 : 0), 0) * turnZ(q0 + q1);
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

const RkCoordinateSystemTransformation& goalOf(const RkManipulationOffsetState& state) {
  return state.goalOffsetTransformation().placement();
}

}  // namespace

TEST(RkLinkRelativeManipulationOffset, goal_follows_the_chosen_frame_of_the_link_cycle_by_cycle) {
  PlanarArm arm;
  struct Case {
    const char* link;
    RkU32 frameType;
  };
  // Only 0 means the primary frame: 1 and any larger value mean the DH frame.
  for (const Case c :
       {Case{"shoulder", 0}, Case{"shoulder", 1}, Case{"elbow", 0}, Case{"elbow", 1}, Case{"elbow", 7}}) {
    SCOPED_TRACE(testing::Message() << c.link << " " << c.frameType);
    const RkLinkRelativeManipulationOffset offset = onLink(c.link, c.frameType);
    arm.moveTo(0.3, -0.8);
    RkManipulationOffsetStateContainer container;
    ASSERT_TRUE(offset.init(0.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, container));
    RkManipulationOffsetState& state = *container.element();
    EXPECT_TRUE(
        goalOf(state).approxEq(PlanarArm::expected(c.link, c.frameType != 0, 0.3, -0.8) * kRelative, 1e-12));
    for (RkReal t = 0.0; t < 1.0; t += 0.25) {
      arm.moveTo(1.2 * t, M_PI / 2 - t);
      EXPECT_EQ(offset.update(t, arm.params(), arm.sequence, arm.sequenceState, 0, 0, state),
                RkManipulationStatus::Complete);
      const RkCoordinateSystemTransformation link =
          PlanarArm::expected(c.link, c.frameType != 0, 1.2 * t, M_PI / 2 - t);
      EXPECT_TRUE(goalOf(state).approxEq(link * kRelative, 1e-12)) << t;
      EXPECT_EQ(&offset.currentOffsetTransformation(state), &state.currentOffsetTransformation());
    }
    // With system-frame axes only the link's origin counts.
    RkLinkRelativeManipulationOffset level = offset;
    level.setSystemFrameAsManipulationFrame();
    ASSERT_EQ(level.update(2.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, state),
              RkManipulationStatus::Complete);
    const RkCoordinateSystemTransformation link =
        PlanarArm::expected(c.link, c.frameType != 0, 1.2 * 0.75, M_PI / 2 - 0.75);
    EXPECT_TRUE(goalOf(state).approxEq(
        RkCoordinateSystemTransformation(link.translation(), RkOrientation()) * kRelative, 1e-12));
  }
  // With the object frame and no relative offset the goal is the link frame itself.
  RkLinkRelativeManipulationOffset bare = onLink("elbow", 1);
  bare.setRelativeOffset(RkCoordinateSystemTransformation());
  arm.moveTo(-0.4, 0.9);
  EXPECT_TRUE(bare.calculateOffsetTransformationInSystemFrame(arm.params(), arm.sequence, arm.sequenceState,
                                                              0, 0, RkObjectRelativeManipulationOffsetState())
                  .placement()
                  .approxEq(PlanarArm::expected("elbow", true, -0.4, 0.9), 1e-12));
}

TEST(RkLinkRelativeManipulationOffset,
     set_from_a_placement_and_end_state_give_that_placement_for_the_arm_as_it_stands) {
  PlanarArm arm;
  arm.moveTo(0.6, 0.2);
  const RkCoordinateSystemTransformation wanted(RkVector(1.5, 1.2, 0.8), RkOrientation(0, 1, 0, 0));
  RkLinkRelativeManipulationOffset offset = onLink("elbow", 0);
  offset.setManipulationFrameYAxis(RkVector(), RkRelativeManipulationOffset::UndefinedFrame);
  RkObjectRelativeManipulationOffsetState untouched;
  offset.setFromOffsetTransformationInSystemFrame(RkEndEffectorPlacement(wanted), arm.params(), arm.sequence,
                                                  arm.sequenceState, 0, 0, untouched);
  EXPECT_EQ(untouched, RkObjectRelativeManipulationOffsetState());
  EXPECT_TRUE(offset.relativeOffset().approxEq(
      PlanarArm::expected("elbow", false, 0.6, 0.2).inverse() * wanted, 1e-12));
  const RkManipulationOffsetStateContainer end =
      offset.calculateEndState(arm.params(), arm.sequence, arm.sequenceState, 0, 0);
  ASSERT_NE(end.element(), nullptr);
  EXPECT_TRUE(goalOf(*end.element()).approxEq(wanted, 1e-12));
  EXPECT_EQ(end.element()->token(), RkManipulation::RkLinkRelativeManipulationOffsetStateToken);

  // Without the link, nothing changes and there is no end state.
  Rk::Print::Capture capture;
  RkLinkRelativeManipulationOffset lost = onLink("wrist", 0);
  lost.setFromOffsetTransformationInSystemFrame(RkEndEffectorPlacement(wanted), arm.params(), arm.sequence,
                                                arm.sequenceState, 0, 0, untouched);
  EXPECT_EQ(lost, onLink("wrist", 0));
  EXPECT_EQ(lost.calculateEndState(arm.params(), arm.sequence, arm.sequenceState, 0, 0).element(), nullptr);
  EXPECT_EQ(lost.calculateOffsetTransformationInSystemFrame(arm.params(), arm.sequence, arm.sequenceState, 0,
                                                            0, untouched),
            RkEndEffectorPlacement());
}

TEST(RkLinkRelativeManipulationOffset, refuses_with_one_exact_line_each_time_and_keeps_the_last_goal) {
  PlanarArm arm;
  RkManipulationOffsetStateContainer container;
  const RkLinkRelativeManipulationOffset good = onLink("shoulder", 0);
  ASSERT_TRUE(good.init(0.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, container));
  RkManipulationOffsetState& state = *container.element();
  const RkEndEffectorPlacement last = state.goalOffsetTransformation();

  struct Case {
    RkLinkRelativeManipulationOffset offset;
    std::string line;
  };
  RkLinkRelativeManipulationOffset undefined = good;
  undefined.setManipulationFrameXAxisSourceFrame(RkRelativeManipulationOffset::UndefinedFrame);
  undefined.setManipulationFrameYAxisSourceFrame(RkRelativeManipulationOffset::UndefinedFrame);
  const Case cases[] = {
      {onLink("", 0), "RkLinkRelativeManipulationOffset::calculatePrimaryFrame link identifier is empty.\n"},
      {onLink("wrist", 1),
       "RkLinkRelativeManipulationOffset::calculatePrimaryFrame link identifier wrist cannot be "
       "found.\n"},
  };
  for (const Case& c : cases) {
    Rk::Print::Capture capture;
    for (int cycle = 0; cycle < 3; ++cycle) {
      EXPECT_EQ(c.offset.update(0.1 * cycle, arm.params(), arm.sequence, arm.sequenceState, 0, 0, state),
                RkManipulationStatus::Failure);
    }
    EXPECT_EQ(state.goalOffsetTransformation(), last);
    RkManipulationOffsetStateContainer fresh;
    EXPECT_FALSE(c.offset.init(0.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, fresh));
    ASSERT_EQ(capture.lines().size(), 4u);
    for (const auto& line : capture.lines()) {
      EXPECT_EQ(line.level, 4);
      EXPECT_EQ(line.text, c.line);
    }
  }

  Rk::Print::Capture capture;
  EXPECT_FALSE(undefined.init(0.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, container));
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].text,
            "RkLinkRelativeManipulationOffset::init manipulation frame is not valid (more than one axis is "
            "undefined).\n");
  ASSERT_NE(container.element(), nullptr);

  // No arm at the manipulator index, or a state that does not fit the arm: one line, Failure.
  capture.clear();
  RkManipulationUpdateParams elsewhere = arm.params();
  elsewhere.manipulatorIndex = 1;
  EXPECT_EQ(good.update(0.0, elsewhere, arm.sequence, arm.sequenceState, 0, 0, *container.element()),
            RkManipulationStatus::Failure);
  EXPECT_EQ(
      capture.lines().at(0).text,
      "RkLinkRelativeManipulationOffset::calculatePrimaryFrame no manipulator with a position state at index "
      "1 in the stated system.\n");
  arm.positionStateList[0].setJointPositions(RkPositionState::RealVector(1, 0.0));
  EXPECT_EQ(good.update(0.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, *container.element()),
            RkManipulationStatus::Failure);
  EXPECT_EQ(capture.lines().size(), 2u);

  RkObjectRelativeManipulationOffsetState stranger;
  EXPECT_THROW(good.update(0.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, stranger),
               std::bad_cast);
}

TEST(RkObjectRelativeManipulationOffset, goal_follows_the_manipulator_frame_and_never_prints) {
  PlanarArm arm;
  Rk::Print::Capture capture;
  RkManipulationOffsetStateContainer container;
  const RkObjectRelativeManipulationOffset unset;
  EXPECT_FALSE(unset.init(0.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, container));
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_EQ(capture.lines()[0].text,
            "RkObjectRelativeManipulationOffset::init manipulation frame is not valid (more than one axis is "
            "undefined).\n");
  capture.clear();

  // Object frame: the goal is the manipulator's frame, then the relative offset; system frame: its origin.
  RkObjectRelativeManipulationOffset object, system;
  object.setObjectFrameAsManipulationFrame();
  system.setSystemFrameAsManipulationFrame();
  system.setRelativeOffset(kRelative);
  ASSERT_TRUE(object.init(0.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, container));
  RkManipulationOffsetState& state = *container.element();
  EXPECT_TRUE(goalOf(state).approxEq(PlanarArm::mounting(), 1e-12));
  object.setRelativeOffset(kRelative);
  // The base drives off; the joint positions do not matter, even too few of them.
  const RkCoordinateSystemTransformation driven = placementAt(-1, 3, 0.2) * turnZ(-0.7);
  arm.positionStateList[0].setBasePlacement(driven);
  arm.positionStateList[0].setJointPositions(RkPositionState::RealVector());
  EXPECT_EQ(object.update(1.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, state),
            RkManipulationStatus::Complete);
  const RkCoordinateSystemTransformation manipulatorFrame = driven * placementAt(0, 0, 0.5);
  EXPECT_TRUE(goalOf(state).approxEq(manipulatorFrame * kRelative, 1e-12));
  EXPECT_EQ(system.update(1.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, state),
            RkManipulationStatus::Complete);
  EXPECT_TRUE(goalOf(state).approxEq(
      RkCoordinateSystemTransformation(manipulatorFrame.translation(), RkOrientation()) * kRelative, 1e-12));
  EXPECT_TRUE(capture.lines().empty());

  // Set from a placement, then asked afresh and ahead of time, it gives that placement.
  const RkCoordinateSystemTransformation wanted(RkVector(0.2, 0.1, 0.9), RkOrientation(0.5, 0.5, 0.5, 0.5));
  object.setFromOffsetTransformationInSystemFrame(RkEndEffectorPlacement(wanted), arm.params(), arm.sequence,
                                                  arm.sequenceState, 0, 0, state);
  EXPECT_TRUE(object
                  .calculateOffsetTransformationInSystemFrame(arm.params(), arm.sequence, arm.sequenceState,
                                                              0, 0, state)
                  .placement()
                  .approxEq(wanted, 1e-12));
  const RkManipulationOffsetStateContainer end =
      object.calculateEndState(arm.params(), arm.sequence, arm.sequenceState, 0, 0);
  ASSERT_NE(end.element(), nullptr);
  EXPECT_TRUE(goalOf(*end.element()).approxEq(wanted, 1e-12));

  RkLinkRelativeManipulationOffsetState stranger;
  EXPECT_THROW(object.update(0.0, arm.params(), arm.sequence, arm.sequenceState, 0, 0, stranger),
               std::bad_cast);
}
