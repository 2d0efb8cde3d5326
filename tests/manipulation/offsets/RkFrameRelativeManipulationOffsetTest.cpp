// The frame-relative offset: its two compositions with the reference goal and their inverse, which end
// effector of the reference frame it follows, and every refusal with its exact line.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/RkPointEndEffector.h"
#include "foundation/RkPrint.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkFrameRelativeManipulationOffset.h"

namespace {

const RkCoordinateSystemTransformation kFirst(RkVector(0.4, -0.1, 0.3), RkOrientation(0, 1, 0, 0));
const RkCoordinateSystemTransformation kSecond(RkVector(0.5, 0.2, 0.25), RkOrientation(0.5, 0.5, 0.5, 0.5));
const RkCoordinateSystemTransformation kRelative(RkVector(0.01, 0.02, -0.1), RkOrientation(0, 0, 0, 1));

RkFrameRelativeManipulationOffset retreat(bool objectFrame, RkU32 referenceFrame = 0) {
  RkFrameRelativeManipulationOffset offset;
  objectFrame ? offset.setObjectFrameAsManipulationFrame() : offset.setSystemFrameAsManipulationFrame();
  offset.setRelativeOffset(kRelative);
  offset.setFrameIndex(referenceFrame);
  return offset;
}

// Frame 0 ("grasp", end-effector set graspSet) has run, sending the end effectors to its goals; frame 1 is
// where the offsets under test stand. Set 0 has end effectors on tool0 and tool1, set 1 two on tool1, set 2
// one on "gripper".
struct Scene {
  RkFakeControlSystem system{2};
  RkManipulationSequence sequence;
  RkManipulationSequenceState sequenceState;

  explicit Scene(RkU32 graspSet = 0, bool oneGoal = false) {
    for (auto links : {std::vector<const char*>{"tool1", "tool1"}, std::vector<const char*>{"gripper"}}) {
      RkEndEffectorSet set;
      for (const char* link : links) {
        RkPointEndEffector point;
        point.setLinkIdentifier(link);
        set.add(point);
      }
      system.controller.sets.pushBack(set);
    }
    RkStandardManipulationFrame grasp = oneGoal ? standardFrame("grasp", {kFirst}, lasting(1))
                                                : standardFrame("grasp", {kFirst, kSecond}, lasting(1));
    grasp.setActiveEndEffectorSet(graspSet);
    sequence.add(grasp);
    sequence.add(standardFrame("retreat", {}, lasting(1)));
    sequence.add(standardFrame("later", {}, lasting(1)));
    RkManipulationFrameStateContainer graspState;
    grasp.init(0.0, system.params(), sequence, sequenceState, 0, graspState);
    sequenceState.add(graspState);
    sequenceState.setCurrentFrameIndex(1);
  }
  // Starts offset as end effector endEffector of frame `frame`; its goal, or nothing.
  const RkManipulationOffsetState* start(const RkFrameRelativeManipulationOffset& offset, RkU32 endEffector,
                                         RkU32 frame = 1) {
    return offset.init(2.0, system.params(), sequence, sequenceState, frame, endEffector, container)
               ? container.element()
               : nullptr;
  }
  RkManipulationOffsetStateContainer container;
};

}  // namespace

TEST(RkFrameRelativeManipulationOffset,
     object_frame_acts_after_the_reference_goal_and_system_frame_before_it) {
  Scene scene;
  // End effector 1 is on tool1: its reference is the grasp frame's second goal.
  ASSERT_TRUE(scene.start(retreat(true), 1));
  EXPECT_TRUE(
      scene.container.element()->goalOffsetTransformation().placement().approxEq(kSecond * kRelative, 1e-12));
  const RkManipulationOffsetState* state = scene.start(retreat(false), 1);
  ASSERT_TRUE(state);
  EXPECT_TRUE(state->goalOffsetTransformation().placement().approxEq(kRelative * kSecond, 1e-12));
  // The goal fixed at the start holds.
  EXPECT_EQ(retreat(false).update(3.0, scene.system.params(), scene.sequence, scene.sequenceState, 1, 1,
                                  *scene.container.element()),
            RkManipulationStatus::Complete);
  EXPECT_TRUE(state->goalOffsetTransformation().placement().approxEq(kRelative * kSecond, 1e-12));

  // Set from a placement in either setting, the offset then gives that placement.
  const RkCoordinateSystemTransformation wanted(RkVector(0.3, 0.3, 0.6), RkOrientation(0, 0, 1, 0));
  for (bool objectFrame : {true, false}) {
    RkFrameRelativeManipulationOffset offset = retreat(objectFrame);
    offset.setFromOffsetTransformationInSystemFrame(RkEndEffectorPlacement(wanted), scene.system.params(),
                                                    scene.sequence, scene.sequenceState, 1, 1,
                                                    *scene.container.element());
    const RkManipulationOffsetStateContainer end =
        offset.calculateEndState(scene.system.params(), scene.sequence, scene.sequenceState, 1, 1);
    ASSERT_TRUE(end.element());
    EXPECT_TRUE(end.element()->goalOffsetTransformation().placement().approxEq(wanted, 1e-12));
  }
  // In set 1 both grasp end effectors are on tool1: the lower index counts.
  Scene twoOnOneLink(1);
  ASSERT_TRUE(twoOnOneLink.start(retreat(true), 1));
  EXPECT_TRUE(twoOnOneLink.container.element()->goalOffsetTransformation().placement().approxEq(
      kFirst * kRelative, 1e-12));
}

TEST(RkFrameRelativeManipulationOffset, refuses_what_it_cannot_refer_to_with_one_exact_line) {
  const std::string prefix = "RkFrameRelativeManipulationOffset::calculatePrimaryFrame ";
  RkFrameRelativeManipulationOffset twoAxes = retreat(true);
  twoAxes.setManipulationFrameZAxisSourceFrame(RkRelativeManipulationOffset::UndefinedFrame);
  struct Case {
    std::string line;
    RkFrameRelativeManipulationOffset offset;
    RkU32 endEffector, frame, graspSet;
    bool oneGraspGoal;
  };
  const Case cases[] = {
      {prefix + "invalid frame index.", retreat(true, 1), 0, 1, 0, false},
      {prefix + "invalid frame index.", retreat(true, 2), 0, 1, 0, false},
      {prefix + "invalid reference frame index.", retreat(true, 1), 0, 2, 0, false},
      {prefix + "unable to find matching link (tool1) in reference frame.", retreat(true), 1, 1, 2, true},
      {prefix + "invalid manipulation offset container vector index.", retreat(true), 1, 1, 0, true},
      {"RkFrameRelativeManipulationOffset::init manipulation frame is not valid (must use strict system "
       "frame or "
       "object frame).\n",
       twoAxes, 0, 1, 0, true},
  };
  for (const Case& c : cases) {
    Scene scene(c.graspSet, c.oneGraspGoal);
    Rk::Print::Capture capture;
    EXPECT_FALSE(scene.start(c.offset, c.endEffector, c.frame)) << c.line;
    ASSERT_EQ(capture.lines().size(), 1u) << c.line;
    EXPECT_EQ(capture.lines()[0].level, 4);
    EXPECT_EQ(capture.lines()[0].text, c.line);
    // Without a primary frame: no end state, and a set from a placement changes nothing. (Validation
    // belongs to init alone.)
    if (c.line.back() == '\n') continue;
    RkFrameRelativeManipulationOffset offset = c.offset;
    const RkManipulationUpdateParams params = scene.system.params();
    EXPECT_FALSE(offset.calculateEndState(params, scene.sequence, scene.sequenceState, c.frame, c.endEffector)
                     .element());
    offset.setFromOffsetTransformationInSystemFrame(RkEndEffectorPlacement(kFirst), params, scene.sequence,
                                                    scene.sequenceState, c.frame, c.endEffector,
                                                    *scene.container.element());
    EXPECT_EQ(offset, c.offset);
  }

  // The reference frame's offset, then its state, missing.
  Scene scene;
  auto frames = scene.sequence.manipulationFrameContainerVector();
  RkXmlVectorType<RkManipulationOffsetContainer> offsets(2);
  offsets[1].setElement(RkConstantManipulationOffset());
  dynamic_cast<RkStandardManipulationFrame&>(*frames[0].element()).setOffsetContainerVector(offsets);
  scene.sequence.setManipulationFrameContainerVector(frames);
  auto states = scene.sequenceState.manipulationFrameStateContainerVector();
  auto& graspState = dynamic_cast<RkStandardManipulationFrameState&>(*states[0].element());
  auto offsetStates = graspState.offsetStateContainerVector();
  offsetStates[1] = RkManipulationOffsetStateContainer();
  graspState.setOffsetStateContainerVector(offsetStates);
  scene.sequenceState.setManipulationFrameStateContainerVector(states);
  Rk::Print::Capture capture;
  EXPECT_FALSE(scene.start(retreat(true), 0));
  EXPECT_FALSE(scene.start(retreat(true), 1));
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].text, prefix + "the reference manipulation offset is not available.");
  EXPECT_EQ(capture.lines()[1].text, prefix + "the reference manipulation offset state is not available.");
}
