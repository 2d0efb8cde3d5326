// The standard frame: status folding over offsets and event, its failure lines and end-effector set choice.
#include <gtest/gtest.h>

#include "control/RkPointEndEffector.h"
#include "events/RkManipulationTimeDurationTransitionEventState.h"
#include "foundation/RkPrint.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkConstantManipulationOffsetState.h"
#include "offsets/RkManipulationOffsetKind.h"
#include "support/RkRoundTrip.h"

namespace {

const RkToken RkClockOffsetStateToken = RkXml::qualifiedToken("clockOffsetState");
const RkToken RkClockOffsetToken = RkXml::qualifiedToken("clockOffset");

// Records the time of its last update as its placement.
class RkClockOffsetState
    : public RkXmlConcreteClass<RkClockOffsetState, RkManipulationOffsetState, RkClockOffsetStateToken> {
 public:
  const RkEndEffectorPlacement& currentOffsetTransformation() const override { return m_placement; }
  const RkEndEffectorPlacement& goalOffsetTransformation() const override { return m_placement; }
  RkEndEffectorPlacement m_placement;
};

// Goes to (time, 0, 0) every cycle and fails from failAt on.
class RkClockOffset : public RkManipulationOffsetKind<RkClockOffset, RkClockOffsetState, RkClockOffsetToken> {
 public:
  explicit RkClockOffset(RkReal failAt = 1e9) : m_failAt(failAt) {}
  RkManipulationStatus::Enum updateState(RkReal time, const Context&, State& state) const {
    if (time >= m_failAt) return RkManipulationStatus::Failure;
    state.m_placement = RkEndEffectorPlacement(placementAt(time, 0, 0));
    return RkManipulationStatus::InProgress;
  }
  RkEndEffectorPlacement offsetInSystemFrame(const Context&, const State& state) const {
    return state.m_placement;
  }
  void setFromOffset(const RkEndEffectorPlacement&, const Context&, State&) {}
  const RkEndEffectorPlacement& currentOffset(const State& state) const { return state.m_placement; }
  const RkEndEffectorPlacement& goalOffset(const State& state) const { return state.m_placement; }

 private:
  RkReal m_failAt;
};

struct TaskRun {
  RkManipulationSequence sequence;
  RkManipulationSequenceState sequenceState;
  RkManipulationUpdateParams params;
};

}  // namespace

TEST(RkStandardManipulationFrame, folds_statuses_so_the_first_that_is_not_complete_wins) {
  TaskRun run;
  const RkStandardManipulationFrame frame =
      standardFrame("hold", {placementAt(0.1, 0, 0), placementAt(0.2, 0, 0)}, RkCountdownEvent(1));
  RkManipulationFrameStateContainer container;
  ASSERT_TRUE(frame.init(0.0, run.params, run.sequence, run.sequenceState, 0, container));
  auto& state = dynamic_cast<RkStandardManipulationFrameState&>(*container.element());
  EXPECT_EQ(state.goalEndEffectorPlacement().offsetTransformations().size(), 2u);
  EXPECT_EQ(frame.update(0.0, run.params, run.sequence, run.sequenceState, 0, state),
            RkManipulationStatus::InProgress);
  EXPECT_EQ(frame.update(0.1, run.params, run.sequence, run.sequenceState, 0, state),
            RkManipulationStatus::Complete);
  EXPECT_EQ(state.currentEndEffectorPlacement().offsetTransformations()[1], placementAt(0.2, 0, 0));
  EXPECT_EQ(frame.statusString(state, "ignored prefix "), "hold");

  // No offsets: empty placements, the event's status alone.
  const RkStandardManipulationFrame bare = standardFrame("bare", {}, RkCountdownEvent(0));
  ASSERT_TRUE(bare.init(0.0, run.params, run.sequence, run.sequenceState, 0, container));
  EXPECT_EQ(bare.update(0.0, run.params, run.sequence, run.sequenceState, 0, *container.element()),
            RkManipulationStatus::Complete);
  EXPECT_EQ(bare.currentEndEffectorPlacement(*container.element()).offsetTransformations().size(), 0u);

  // A time-duration event fires on the cycle whose time reaches the trigger time.
  const RkStandardManipulationFrame timed = standardFrame("timed", {placementAt(0, 0, 0)}, lasting(2.5));
  ASSERT_TRUE(timed.init(10.0, run.params, run.sequence, run.sequenceState, 0, container));
  EXPECT_EQ(timed.update(12.4, run.params, run.sequence, run.sequenceState, 0, *container.element()),
            RkManipulationStatus::InProgress);
  EXPECT_EQ(timed.update(12.5, run.params, run.sequence, run.sequenceState, 0, *container.element()),
            RkManipulationStatus::Complete);
}

TEST(RkStandardManipulationFrame, missing_parts_fail_with_exact_lines) {
  Rk::Print::Capture capture;
  TaskRun run;
  RkStandardManipulationFrame frame = standardFrame("f", {placementAt(0, 0, 0)}, RkCountdownEvent(0));
  RkXmlVectorType<RkManipulationOffsetContainer> withHole =
      frame.offsetContainerVector(RkStandardManipulationFrameState());
  withHole.pushBack(RkManipulationOffsetContainer());
  RkStandardManipulationFrame holed = frame;
  holed.setOffsetContainerVector(withHole);
  RkManipulationFrameStateContainer container;
  EXPECT_FALSE(holed.init(0.0, run.params, run.sequence, run.sequenceState, 0, container));
  EXPECT_EQ(holed.calculateEndState(run.params, run.sequence, run.sequenceState, 0).element(), nullptr);

  RkStandardManipulationFrame noEvent = frame;
  noEvent.setTransitionEventContainer(RkManipulationFrameTransitionEventContainer());
  EXPECT_FALSE(noEvent.init(0.0, run.params, run.sequence, run.sequenceState, 0, container));
  EXPECT_EQ(noEvent.calculateEndState(run.params, run.sequence, run.sequenceState, 0).element(), nullptr);
  ASSERT_TRUE(frame.init(0.0, run.params, run.sequence, run.sequenceState, 0, container));
  EXPECT_EQ(noEvent.update(0.0, run.params, run.sequence, run.sequenceState, 0, *container.element()),
            RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkStandardManipulationFrame::init missing offset container element.\n"
            "RkStandardManipulationFrame::calculateEndState missing offset container element.\n"
            "RkStandardManipulationFrame::init missing transition event.\n"
            "RkStandardManipulationFrame::calculateEndState missing transition event.\n"
            "RkStandardManipulationFrame::update missing transition event.\n");

  capture.clear();
  auto& state = dynamic_cast<RkStandardManipulationFrameState&>(*container.element());
  EXPECT_FALSE(state.replaceManipulationOffsetState(1, RkConstantManipulationOffsetState()));
  EXPECT_FALSE(frame.replaceManipulationOffset(run.params, run.sequence, run.sequenceState, 0, 3,
                                               RkConstantManipulationOffset(), *state.offsetState(0),
                                               *state.offsetState(0)));
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].level, 5);
  EXPECT_EQ(capture.lines()[0].text,
            "RkStandardManipulationFrameState::replaceManipulationOffsetState invalid offset index 1.\n");
  EXPECT_EQ(capture.lines()[1].level, 5);
  EXPECT_EQ(capture.lines()[1].text,
            "RkStandardManipulationFrame::replaceManipulationOffset invalid offset index 3.\n");
}

TEST(RkStandardManipulationFrame, failing_offset_leaves_the_previous_cycles_placements) {
  Rk::Print::Capture capture;
  TaskRun run;
  RkStandardManipulationFrame frame = standardFrame("f", {}, RkCountdownEvent(5));
  RkXmlVectorType<RkManipulationOffsetContainer> offsets;
  for (RkReal failAt : {1e9, 1.0}) {
    RkManipulationOffsetContainer container;
    container.setElement(RkClockOffset(failAt));
    offsets.pushBack(container);
  }
  frame.setOffsetContainerVector(offsets);
  RkManipulationFrameStateContainer container;
  ASSERT_TRUE(frame.init(0.0, run.params, run.sequence, run.sequenceState, 0, container));
  auto& state = dynamic_cast<RkStandardManipulationFrameState&>(*container.element());
  ASSERT_EQ(frame.update(0.5, run.params, run.sequence, run.sequenceState, 0, state),
            RkManipulationStatus::InProgress);
  const RkStandardManipulationFrameState before = state;
  EXPECT_EQ(state.goalEndEffectorPlacement().offsetTransformations()[0], placementAt(0.5, 0, 0));

  // Offset 0 updates to 1.0, offset 1 fails: its state moved on, the placements did not.
  EXPECT_EQ(frame.update(1.0, run.params, run.sequence, run.sequenceState, 0, state),
            RkManipulationStatus::Failure);
  EXPECT_EQ(state.currentEndEffectorPlacement(), before.currentEndEffectorPlacement());
  EXPECT_EQ(state.goalEndEffectorPlacement(), before.goalEndEffectorPlacement());
  EXPECT_EQ(state.transitionEventStateContainer(), before.transitionEventStateContainer());
  EXPECT_EQ(dynamic_cast<const RkClockOffsetState&>(*state.offsetState(0)).m_placement.placement(),
            placementAt(1.0, 0, 0));
  EXPECT_EQ(capture.text(), "RkStandardManipulationFrame::update manipulation offset failed to update.\n");
}

TEST(RkStandardManipulationFrame, replacing_an_offset_keeps_the_goal_where_the_old_one_stood) {
  TaskRun run;
  RkStandardManipulationFrame frame = standardFrame("f", {placementAt(0.4, 0, 0.2)}, RkCountdownEvent(0));
  RkManipulationFrameStateContainer container;
  ASSERT_TRUE(frame.init(0.0, run.params, run.sequence, run.sequenceState, 0, container));
  auto& state = dynamic_cast<RkStandardManipulationFrameState&>(*container.element());
  RkConstantManipulationOffsetState fresh;
  ASSERT_TRUE(frame.replaceManipulationOffset(run.params, run.sequence, run.sequenceState, 0, 0,
                                              RkConstantManipulationOffset(), *state.offsetState(0), fresh));
  const auto* replaced =
      dynamic_cast<const RkConstantManipulationOffset*>(frame.offsetContainerVector(state)[0].element());
  ASSERT_NE(replaced, nullptr);
  EXPECT_EQ(replaced->offset().placement(), placementAt(0.4, 0, 0.2));
}

TEST(RkStandardManipulationFrame, end_effector_set_follows_the_index_or_the_controller_and_never_fails) {
  // Two sets of one end effector each, the second active.
  RkFakeControlSystem system(1);
  RkEndEffectorSet second;
  RkPointEndEffector point;
  point.setLinkIdentifier("tool1");
  second.add(point);
  system.controller.sets.pushBack(second);
  system.controller.activeSet = 1;
  TaskRun run;
  run.params.positionControlSystem = &system;
  RkStandardManipulationFrame frame = standardFrame("f", {}, RkCountdownEvent(0));
  const RkStandardManipulationFrameState state;
  frame.setActiveEndEffectorSet(0);
  EXPECT_EQ(frame.endEffectorSet(run.params, state).endEffector(0)->linkIdentifier(), "tool0");
  frame.setActiveEndEffectorSet(RkStandardManipulationFrame::kControllerActiveSet);
  EXPECT_EQ(frame.endEffectorSet(run.params, state).endEffector(0)->linkIdentifier(), "tool1");
  frame.setActiveEndEffectorSet(2);
  EXPECT_EQ(&frame.endEffectorSet(run.params, state), &RkEndEffectorSet::nullObject());
  run.params.controllerIndex = 5;
  frame.setActiveEndEffectorSet(0);
  EXPECT_EQ(&frame.endEffectorSet(run.params, state), &RkEndEffectorSet::nullObject());
  run.params.positionControlSystem = nullptr;
  EXPECT_EQ(&frame.endEffectorSet(run.params, state), &RkEndEffectorSet::nullObject());
}

TEST(RkStandardManipulationFrame, starting_builds_each_state_where_it_stays_with_four_allocations) {
  TaskRun run;
  run.sequence.add(standardFrame(
      "three", {placementAt(0.1, 0, 0), placementAt(0.2, 0, 0), placementAt(0.3, 0, 0)}, lasting(2.0)));
  const RkManipulationFrame& frame = *run.sequence.manipulationFrameContainerVector()[0].element();
  RkManipulationFrameStateContainer container;
  RkAllocationCounter::start();
  const RkBoolean started = frame.init(1.5, run.params, run.sequence, run.sequenceState, 0, container);
  // The frame's state, its offsets' containers and the two placement lists; the constant offsets' empty
  // states and the event's one number stand in their containers.
  EXPECT_EQ(RkAllocationCounter::stop(), 4);
  ASSERT_TRUE(started);
  const auto& state = dynamic_cast<const RkStandardManipulationFrameState&>(*container.element());
  ASSERT_EQ(state.offsetStateContainerVector().size(), 3u);
  const RkReal xs[] = {0.1, 0.2, 0.3};
  for (RkU32 i = 0; i < 3; ++i) {
    const auto& offsetState = state.offsetStateContainerVector()[i];
    EXPECT_NE(dynamic_cast<const RkConstantManipulationOffsetState*>(offsetState.element()), nullptr);
    EXPECT_EQ(offsetState.element()->container(), &offsetState);
    EXPECT_EQ(state.goalEndEffectorPlacement().offsetTransformations()[i], placementAt(xs[i], 0, 0));
  }
  EXPECT_EQ(state.currentEndEffectorPlacement(), state.goalEndEffectorPlacement());
  const auto* event = dynamic_cast<const RkManipulationTimeDurationTransitionEventState*>(
      state.transitionEventStateContainer().element());
  ASSERT_NE(event, nullptr);
  EXPECT_DOUBLE_EQ(event->triggerTime(), 3.5);
  EXPECT_EQ(event->container(), &state.transitionEventStateContainer());

  // Copies and moves carry states held in place as their own class, each pointing at its new container.
  RkManipulationFrameStateContainer copy(container);
  EXPECT_EQ(copy, container);
  RkManipulationFrameStateContainer moved(std::move(copy));
  EXPECT_EQ(moved, container);
  const auto& movedState = dynamic_cast<const RkStandardManipulationFrameState&>(*moved.element());
  EXPECT_EQ(movedState.transitionEventStateContainer().element()->container(),
            &movedState.transitionEventStateContainer());
  EXPECT_TRUE(roundTrips(state));
}
