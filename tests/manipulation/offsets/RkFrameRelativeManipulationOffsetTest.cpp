// The frame-relative offset: its two compositions with the reference goal, which end effector of the
// reference frame it follows, every refusal with its exact line, and a retreat run through a sequence.
#include <gtest/gtest.h>

#include <string>
#include <typeinfo>

#include "control/RkPointEndEffector.h"
#include "foundation/RkPrint.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkFrameRelativeManipulationOffset.h"
#include "offsets/RkLinkRelativeManipulationOffsetState.h"
#include "sequencing/RkManipulationActionStateContainer.h"

namespace {

const RkCoordinateSystemTransformation kFirstGoal(RkVector(0.4, -0.1, 0.3),
                                                  RkOrientation::fromAngleAxis(2.0, RkVector(1, 0, 0)));
const RkCoordinateSystemTransformation kSecondGoal(RkVector(0.5, 0.2, 0.25),
                                                   RkOrientation::fromAngleAxis(0.7, RkVector(0, 1, 1)));
const RkCoordinateSystemTransformation kRelative(RkVector(0.01, 0.02, -0.1),
                                                 RkOrientation::fromAngleAxis(0.3, RkVector(0, 0, 1)));

RkEndEffectorSet setOnLinks(std::initializer_list<const char*> links) {
  RkEndEffectorSet set;
  for (const char* link : links) {
    RkPointEndEffector point;
    point.setLinkIdentifier(link);
    set.add(point);
  }
  return set;
}

RkFrameRelativeManipulationOffset retreat(bool objectFrame, RkU32 referenceFrame = 0) {
  RkFrameRelativeManipulationOffset offset;
  if (objectFrame) {
    offset.setObjectFrameAsManipulationFrame();
  } else {
    offset.setSystemFrameAsManipulationFrame();
  }
  offset.setRelativeOffset(kRelative);
  offset.setFrameIndex(referenceFrame);
  return offset;
}

// A sequence whose frame 0 ("grasp") has run: two end effectors, on tool0 and tool1 in set 0, sent to the
// two goals; set 1 puts both on tool1 and set 2 has one on "gripper". Frame 1 is where the offsets under
// test stand.
struct Scene {
  RkFakeControlSystem system{2};
  RkManipulationUpdateParams params;
  RkManipulationSequence sequence;
  RkManipulationSequenceState sequenceState;

  explicit Scene(RkU32 graspSet = 0,
                 RkStandardManipulationFrame grasp = standardFrame("grasp", {kFirstGoal, kSecondGoal},
                                                                   lasting(1))) {
    system.controller.sets.pushBack(setOnLinks({"tool1", "tool1"}));
    system.controller.sets.pushBack(setOnLinks({"gripper"}));
    params = system.params();
    grasp.setActiveEndEffectorSet(graspSet);
    sequence.add(grasp);
    sequence.add(standardFrame("retreat", {}, lasting(1)));
    RkManipulationFrameStateContainer graspState;
    grasp.init(0.0, params, sequence, sequenceState, 0, graspState);
    sequenceState.add(graspState);
    sequenceState.setCurrentFrameIndex(1);
  }
  // init of offset as end effector `endEffector` of frame `frame`, the goal it gave, and whether it worked.
  bool start(const RkFrameRelativeManipulationOffset& offset, RkU32 endEffector,
             RkCoordinateSystemTransformation& goal, RkU32 frame = 1) {
    RkManipulationOffsetStateContainer container;
    const bool started = offset.init(2.0, params, sequence, sequenceState, frame, endEffector, container);
    if (container.element()) goal = container.element()->goalOffsetTransformation().placement();
    return started;
  }
};

struct Refusal {
  const char* line;
  RkFrameRelativeManipulationOffset offset;
  RkU32 endEffector;
  RkU32 frame;
};

}  // namespace

TEST(RkFrameRelativeManipulationOffset,
     object_frame_acts_after_the_reference_goal_and_system_frame_before_it) {
  Scene scene;
  RkCoordinateSystemTransformation goal;
  // End effector 1 is on tool1, so its reference is the grasp frame's second goal.
  ASSERT_TRUE(scene.start(retreat(true), 1, goal));
  EXPECT_TRUE(goal.approxEq(kSecondGoal * kRelative, 1e-12));
  ASSERT_TRUE(scene.start(retreat(false), 1, goal));
  EXPECT_TRUE(goal.approxEq(kRelative * kSecondGoal, 1e-12));
  RkFrameRelativeManipulationOffset identity = retreat(false);
  identity.setRelativeOffset(RkCoordinateSystemTransformation());
  ASSERT_TRUE(scene.start(identity, 0, goal));
  EXPECT_TRUE(goal.approxEq(kFirstGoal, 1e-15));

  // The goal fixed at init holds: update is Complete at once and changes nothing, even if the reference
  // moved.
  RkFrameRelativeManipulationOffset offset = retreat(true);
  RkManipulationOffsetStateContainer container;
  ASSERT_TRUE(offset.init(2.0, scene.params, scene.sequence, scene.sequenceState, 1, 1, container));
  RkManipulationOffsetState& state = *container.element();
  const RkEndEffectorPlacement started = state.goalOffsetTransformation();
  scene.system.controller.activeSet = 1;
  EXPECT_EQ(offset.update(3.0, scene.params, scene.sequence, scene.sequenceState, 1, 1, state),
            RkManipulationStatus::Complete);
  EXPECT_EQ(state.goalOffsetTransformation(), started);
  EXPECT_EQ(&offset.currentOffsetTransformation(state), &state.currentOffsetTransformation());
  scene.system.controller.activeSet = 0;

  // Asked afresh, and set from a placement, in both settings: the offset then gives that placement.
  const RkCoordinateSystemTransformation wanted(RkVector(0.3, 0.3, 0.6), RkOrientation(0, 0, 1, 0));
  for (bool objectFrame : {true, false}) {
    RkFrameRelativeManipulationOffset turned = retreat(objectFrame);
    EXPECT_TRUE(turned
                    .calculateOffsetTransformationInSystemFrame(scene.params, scene.sequence,
                                                                scene.sequenceState, 1, 1, state)
                    .placement()
                    .approxEq(objectFrame ? kSecondGoal * kRelative : kRelative * kSecondGoal, 1e-12));
    turned.setFromOffsetTransformationInSystemFrame(RkEndEffectorPlacement(wanted), scene.params,
                                                    scene.sequence, scene.sequenceState, 1, 1, state);
    EXPECT_TRUE(turned
                    .calculateOffsetTransformationInSystemFrame(scene.params, scene.sequence,
                                                                scene.sequenceState, 1, 1, state)
                    .placement()
                    .approxEq(wanted, 1e-12));
    const RkManipulationOffsetStateContainer end =
        turned.calculateEndState(scene.params, scene.sequence, scene.sequenceState, 1, 1);
    ASSERT_NE(end.element(), nullptr);
    EXPECT_TRUE(end.element()->goalOffsetTransformation().placement().approxEq(wanted, 1e-12));
  }
  EXPECT_EQ(state.goalOffsetTransformation(), started);

  // A state of another kind is a programming error.
  RkLinkRelativeManipulationOffsetState stranger;
  EXPECT_THROW(offset.update(3.0, scene.params, scene.sequence, scene.sequenceState, 1, 1, stranger),
               std::bad_cast);
}

TEST(RkFrameRelativeManipulationOffset,
     follows_the_first_end_effector_on_the_same_link_in_the_reference_frame) {
  // In set 1 both grasp end effectors are on tool1: the one with the lower index counts.
  Scene scene(1);
  RkCoordinateSystemTransformation goal;
  ASSERT_TRUE(scene.start(retreat(true), 1, goal));
  EXPECT_TRUE(goal.approxEq(kFirstGoal * kRelative, 1e-12));
}

TEST(RkFrameRelativeManipulationOffset, refuses_what_it_cannot_refer_to_with_one_exact_line) {
  const std::string prefix = "RkFrameRelativeManipulationOffset::calculatePrimaryFrame ";
  RkFrameRelativeManipulationOffset twoAxes = retreat(true);
  twoAxes.setManipulationFrameZAxisSourceFrame(RkRelativeManipulationOffset::UndefinedFrame);
  const Refusal refusals[] = {
      {"invalid frame index.", retreat(true, 1), 0, 1},
      {"invalid frame index.", retreat(true, 2), 0, 1},
      {"invalid reference frame index.", retreat(true, 1), 0, 2},
      {"RkFrameRelativeManipulationOffset::init manipulation frame is not valid (must use strict system "
       "frame or "
       "object frame).\n",
       twoAxes, 0, 1},
  };
  for (const Refusal& refusal : refusals) {
    SCOPED_TRACE(refusal.line);
    Scene scene;
    // Frame 2 exists in the sequence but has no state.
    scene.sequence.add(standardFrame("later", {}, lasting(1)));
    Rk::Print::Capture capture;
    RkCoordinateSystemTransformation goal;
    EXPECT_FALSE(scene.start(refusal.offset, refusal.endEffector, goal, refusal.frame));
    ASSERT_EQ(capture.lines().size(), 1u);
    EXPECT_EQ(capture.lines()[0].level, 4);
    const std::string line = refusal.line;
    EXPECT_EQ(capture.lines()[0].text, line.back() == '\n' ? line : prefix + line);
  }

  // Reference frames that do not hold what is needed.
  auto refused = [&](Scene& scene, RkU32 endEffector, const std::string& line) {
    Rk::Print::Capture capture;
    RkCoordinateSystemTransformation goal;
    EXPECT_FALSE(scene.start(retreat(true), endEffector, goal)) << line;
    ASSERT_EQ(capture.lines().size(), 1u) << line;
    EXPECT_EQ(capture.lines()[0].level, 4);
    EXPECT_EQ(capture.lines()[0].text, prefix + line);
    // Asked afresh it gives a default placement; set from a placement it stays as it was; no end state.
    RkFrameRelativeManipulationOffset offset = retreat(true);
    RkLinkRelativeManipulationOffsetState state;
    EXPECT_EQ(offset.calculateOffsetTransformationInSystemFrame(scene.params, scene.sequence,
                                                                scene.sequenceState, 1, endEffector, state),
              RkEndEffectorPlacement());
    offset.setFromOffsetTransformationInSystemFrame(RkEndEffectorPlacement(kFirstGoal), scene.params,
                                                    scene.sequence, scene.sequenceState, 1, endEffector,
                                                    state);
    EXPECT_EQ(offset, retreat(true));
    EXPECT_EQ(
        offset.calculateEndState(scene.params, scene.sequence, scene.sequenceState, 1, endEffector).element(),
        nullptr);
  };
  {
    Scene gripperOnly(2);
    refused(gripperOnly, 1, "unable to find matching link (tool1) in reference frame.");
  }
  {
    // The grasp frame has one offset for its two end effectors.
    Scene short_(0, standardFrame("grasp", {kFirstGoal}, lasting(1)));
    refused(short_, 1, "invalid manipulation offset container vector index.");
  }
  {
    Scene noStates;
    noStates.sequenceState.clear();
    noStates.sequenceState.setCurrentFrameIndex(1);
    refused(noStates, 0, "invalid reference frame index.");
  }
  {
    // The reference frame's offset, or its state, is missing.
    Scene scene;
    RkXmlVectorType<RkManipulationFrameContainer> frames = scene.sequence.manipulationFrameContainerVector();
    auto& grasp = dynamic_cast<RkStandardManipulationFrame&>(*frames[0].element());
    RkXmlVectorType<RkManipulationOffsetContainer> offsets;
    offsets.pushBack(RkManipulationOffsetContainer());
    offsets.pushBack(RkManipulationOffsetContainer());
    offsets[1].setElement(RkConstantManipulationOffset());
    grasp.setOffsetContainerVector(offsets);
    scene.sequence.setManipulationFrameContainerVector(frames);
    refused(scene, 0, "the reference manipulation offset is not available.");
    RkXmlVectorType<RkManipulationFrameStateContainer> states =
        scene.sequenceState.manipulationFrameStateContainerVector();
    auto& graspState = dynamic_cast<RkStandardManipulationFrameState&>(*states[0].element());
    RkXmlVectorType<RkManipulationOffsetStateContainer> offsetStates =
        graspState.offsetStateContainerVector();
    offsetStates[1] = RkManipulationOffsetStateContainer();
    graspState.setOffsetStateContainerVector(offsetStates);
    scene.sequenceState.setManipulationFrameStateContainerVector(states);
    refused(scene, 1, "the reference manipulation offset state is not available.");
  }
}

TEST(RkFrameRelativeManipulationOffset, retreat_in_a_sequence_is_held_by_its_event_and_known_ahead_of_time) {
  RkFakeControlSystem system(2);
  const RkManipulationUpdateParams params = system.params();
  RkManipulationSequence sequence;
  sequence.add(standardFrame("grasp", {kFirstGoal, kSecondGoal}, lasting(0.05)));
  RkStandardManipulationFrame retreatFrame = standardFrame("retreat", {}, lasting(0.1));
  RkXmlVectorType<RkManipulationOffsetContainer> offsets(2);
  offsets[0].setElement(retreat(true));
  offsets[1].setElement(retreat(false));
  retreatFrame.setOffsetContainerVector(offsets);
  sequence.add(retreatFrame);

  RkManipulationActionStateContainer container;
  ASSERT_TRUE(sequence.init(container));
  int retreatCycles = 0;
  RkManipulationStatus::Enum status = RkManipulationStatus::InProgress;
  RkReal time = 0.0;
  for (; time < 1.0 && status != RkManipulationStatus::Complete; time += 0.001) {
    status = sequence.update(time, params, *container.element());
    ASSERT_NE(status, RkManipulationStatus::Failure);
    const auto& state = dynamic_cast<const RkManipulationSequenceState&>(*container.element());
    if (state.currentFrameIndex() == 1) ++retreatCycles;
  }
  // The retreat lasts its 0.1 s, whatever its offsets say.
  EXPECT_NEAR(retreatCycles, 101, 2);
  const auto& placements = sequence.endEffectorPlacement(*container.element()).offsetTransformations();
  ASSERT_EQ(placements.size(), 2u);
  EXPECT_TRUE(placements[0].approxEq(kFirstGoal * kRelative, 1e-12));
  EXPECT_TRUE(placements[1].approxEq(kRelative * kSecondGoal, 1e-12));

  // The sequence's end state, computed without running it, holds the same goals.
  const RkManipulationSequenceState end = sequence.calculateEndState(params);
  const auto& retreatState = dynamic_cast<const RkStandardManipulationFrameState&>(
      *end.manipulationFrameStateContainerVector()[1].element());
  ASSERT_NE(retreatState.offsetState(1), nullptr);
  EXPECT_TRUE(retreatState.offsetState(0)->goalOffsetTransformation().placement().approxEq(
      kFirstGoal * kRelative, 1e-12));
  EXPECT_TRUE(retreatState.offsetState(1)->goalOffsetTransformation().placement().approxEq(
      kRelative * kSecondGoal, 1e-12));
}
