// Whole runs: filled tasks and run states round-trip, a run checkpointed to XML mid-way resumes identically,
// one description serves two runs side by side, and steady-state cycles allocate nothing.
#include <gtest/gtest.h>

#include <vector>

#include "events/RkManipulationPlacementAchievedTransitionEvent.h"
#include "events/RkManipulationTimeDurationTransitionEventState.h"
#include "foundation/RkPrint.h"
#include "manipulation/support/RkAllocationCounter.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "manipulation/support/RkNestedFrameTestTasks.h"
#include "offsets/RkActualPlacementManipulationOffset.h"
#include "offsets/RkInterpolatedManipulationOffset.h"
#include "sequencing/RkManipulationActionContainer.h"
#include "support/RkRoundTrip.h"

namespace {

RkManipulationSequenceManager pickTask() {
  RkManipulationSequenceManager manager;
  manager.add("approach", timedSequence(3, 0.004, 0.3));
  manager.add("retreat", timedSequence(2, 0.003, 0.6));
  manager.setSequenceOrder(orderOf({"approach", "retreat", "approach"}));
  return manager;
}

// A row of three placements, a grasp held past its subsequence by its event, then a retreat.
RkManipulationSequenceManager nestedTask() {
  RkManipulationSequence palletise;
  palletise.add(parametricFrame(
      "row", frameWithOffset("place", shiftedAlongY(placementAt(0.4, 0, 0.2), "y"), lasting(0.004)), "y",
      {0.0, 0.1, 0.2}));
  RkSubsequenceManipulationFrame grasp = subsequenceFrame("grasp", timedSequence(3, 0.003));
  setEvent(grasp, lasting(0.012));
  palletise.add(grasp);
  palletise.add(standardFrame("retreat", {placementAt(0.3, 0, 0.4)}, lasting(0.003)));
  RkManipulationSequenceManager manager;
  manager.add("palletise", palletise);
  manager.setSequenceOrder(orderOf({"palletise"}));
  return manager;
}

struct Cycle {
  RkManipulationStatus::Enum status;
  RkManipulatorEndEffectorPlacement placement;
  bool operator==(const Cycle& other) const { return status == other.status && placement == other.placement; }
};

std::vector<Cycle> run(const RkManipulationSequenceManager& manager,
                       RkManipulationSequenceManagerState& state, int firstCycle, int lastCycle) {
  std::vector<Cycle> cycles;
  RkManipulationUpdateParams params;
  for (int cycle = firstCycle; cycle < lastCycle; ++cycle) {
    const RkManipulationStatus::Enum status = manager.update(0.001 * cycle, params, state);
    cycles.push_back({status, manager.endEffectorPlacement(state)});
    if (status == RkManipulationStatus::Complete || status == RkManipulationStatus::Failure) break;
  }
  return cycles;
}

// Settles for 3 ms, approaches a goal from wherever the arm stands over 10 ms and waits until the arm is
// there, then holds the arm where it is for 5 ms.
RkManipulationSequenceManager approachAndHoldTask() {
  RkConstantManipulationOffset goal;
  goal.setOffset(RkEndEffectorPlacement(
      RkCoordinateSystemTransformation(RkVector(0.4, 0.1, 0.3), RkOrientation(0, 1, 0, 0))));
  RkInterpolatedManipulationOffset approach;
  RkManipulationOffsetContainer target;
  target.setElement(goal);
  approach.setTargetOffset(target);
  approach.setInterpolationTime(0.01);
  RkXmlVectorType<RkManipulationOffsetContainer> offsets(1);
  offsets[0].setElement(approach);
  RkStandardManipulationFrame approaching =
      standardFrame("approach", {}, RkManipulationPlacementAchievedTransitionEvent());
  approaching.setOffsetContainerVector(offsets);
  offsets[0].setElement(RkActualPlacementManipulationOffset());
  RkStandardManipulationFrame holding = standardFrame("hold", {}, lasting(0.005));
  holding.setOffsetContainerVector(offsets);
  RkManipulationSequence sequence;
  sequence.add(standardFrame("settle", {placementAt(0.2, 0, 0.5)}, lasting(0.003)));
  sequence.add(approaching);
  sequence.add(holding);
  RkManipulationSequenceManager manager;
  manager.add("pick", sequence);
  manager.setSequenceOrder(orderOf({"pick"}));
  return manager;
}

// A fake arm of one end effector that closes half the distance to its command every cycle.
struct LaggingArm {
  LaggingArm() : system(1) {
    system.controller.actual[0] = placementAt(0.1, -0.2, 0.6);
    system.placements.pushBack(RkManipulatorEndEffectorPlacement());
    system.placements[0].setOffsetInRelative(0, system.controller.actual[0]);
  }
  void follow(const RkManipulatorEndEffectorPlacement& commanded) {
    if (commanded.offsetTransformations().size() == 0) return;
    RkCoordinateSystemTransformation& actual = system.controller.actual[0];
    actual =
        RkEndEffectorPlacement::interpolation(
            RkEndEffectorPlacement(actual), RkEndEffectorPlacement(commanded.offsetTransformations()[0]), 0.5)
            .placement();
    system.placements[0].setOffsetInRelative(0, actual);
  }
  RkFakeControlSystem system;
};

std::vector<Cycle> runOnArm(const RkManipulationSequenceManager& manager,
                            RkManipulationSequenceManagerState& state, LaggingArm& arm, int firstCycle,
                            int lastCycle) {
  std::vector<Cycle> cycles;
  const RkManipulationUpdateParams params = arm.system.params();
  for (int cycle = firstCycle; cycle < lastCycle; ++cycle) {
    const RkManipulationStatus::Enum status = manager.update(0.001 * cycle, params, state);
    cycles.push_back({status, manager.endEffectorPlacement(state)});
    arm.follow(cycles.back().placement);
    if (status == RkManipulationStatus::Complete || status == RkManipulationStatus::Failure) break;
  }
  return cycles;
}

// Checkpoints a run of manager after each of its cycles, hands the checkpoint to look, reads it back and
// runs on: the rest of the run must be the uninterrupted one's, cycle for cycle.
template <class Look>
void resumesAfterEveryCycle(const RkManipulationSequenceManager& manager, Look look) {
  RkManipulationSequenceManagerState uninterrupted;
  ASSERT_TRUE(manager.init(uninterrupted));
  const std::vector<Cycle> reference = run(manager, uninterrupted, 0, 100);
  ASSERT_EQ(reference.back().status, RkManipulationStatus::Complete);
  for (int stop = 1; stop < static_cast<int>(reference.size()); ++stop) {
    RkManipulationSequenceManagerState first;
    ASSERT_TRUE(manager.init(first));
    run(manager, first, 0, stop);
    look(first);
    std::string document;
    ASSERT_TRUE(RkXmlWriter::writeString(first, document));
    RkManipulationSequenceManagerState resumed;
    ASSERT_TRUE(RkXmlReader::readString(document, resumed)) << document;
    ASSERT_EQ(resumed, first) << "stopped at " << stop;
    const std::vector<Cycle> rest = run(manager, resumed, stop, 100);
    EXPECT_TRUE(std::equal(rest.begin(), rest.end(), reference.begin() + stop)) << "stopped at " << stop;
    EXPECT_EQ(rest.size(), reference.size() - stop);
  }
}

}  // namespace

TEST(RkManipulationRoundTrip, filled_tasks_and_run_states_read_back_equal_and_rewrite_identically) {
  const RkManipulationSequenceManager manager = pickTask();
  EXPECT_TRUE(roundTrips(manager));
  RkManipulationTimeDurationTransitionEventState eventState;
  eventState.setTriggerTime(12.5);
  EXPECT_TRUE(roundTrips(eventState));
  RkManipulationActionContainer action;
  action.setElement(timedSequence(1, 1.0));
  EXPECT_TRUE(roundTrips(action));

  RkManipulationSequenceManagerState state;
  ASSERT_TRUE(manager.init(state));
  run(manager, state, 0, 5);
  EXPECT_TRUE(roundTrips(state));
  RkManipulationUpdateParams params;
  EXPECT_TRUE(roundTrips(manager.calculateEndState(params)));
}

TEST(RkManipulationRun, a_state_checkpointed_mid_run_resumes_cycle_for_cycle) {
  resumesAfterEveryCycle(pickTask(), [](const RkManipulationSequenceManagerState&) {});
}

TEST(RkManipulationRun, a_state_checkpointed_inside_a_parametric_value_or_a_subsequence_resumes_exactly) {
  const RkManipulationSequenceManager manager = nestedTask();
  EXPECT_TRUE(roundTrips(manager));
  int inSecondValue = 0, insideSubsequence = 0;
  resumesAfterEveryCycle(manager, [&](const RkManipulationSequenceManagerState& checkpoint) {
    const auto& sequenceState = dynamic_cast<const RkManipulationSequenceState&>(
        *checkpoint.currentSequenceStateContainer().element());
    const RkManipulationFrameState* frameState = sequenceState.currentFrameState();
    if (const auto* row = dynamic_cast<const RkParametricManipulationFrameState*>(frameState)) {
      inSecondValue += row->parametricIndex() == 1;
    }
    if (const auto* grasp = dynamic_cast<const RkSubsequenceManipulationFrameState*>(frameState)) {
      const auto& inner = dynamic_cast<const RkManipulationSequenceState&>(*grasp->subsequenceState());
      insideSubsequence += inner.currentFrameIndex() == 1;
    }
  });
  EXPECT_GE(inSecondValue, 3);
  EXPECT_GE(insideSubsequence, 3);
}

TEST(RkManipulationRun, a_run_read_back_inside_a_reference_pose_frame_fails_and_restarts_at_a_frame_start) {
  RkPoseSet poses;
  poses.addPose(std::string("pick"), placementAt(0.4, 0, 0.1));
  RkReferencePoseManipulationOffset atPick;
  atPick.setPoseName("pick");
  RkManipulationSequence sequence;
  sequence.add(frameWithOffset("at pick", atPick, lasting(0.005)));
  sequence.add(frameWithOffset("again", atPick, lasting(0.005)));
  RkManipulationSequenceManager manager;
  manager.add("pick", sequence);
  manager.setSequenceOrder(orderOf({"pick"}));
  RkManipulationUpdateParams params;
  params.poseSet = &poses;
  RkManipulationSequenceManagerState state;
  ASSERT_TRUE(manager.init(state));
  for (int cycle = 0; cycle < 3; ++cycle) manager.update(0.001 * cycle, params, state);
  std::string document;
  ASSERT_TRUE(RkXmlWriter::writeString(state, document));
  Rk::Print::Capture capture;
  RkManipulationSequenceManagerState resumed;
  RkXmlReader::readString(document, resumed);
  EXPECT_EQ(manager.update(0.003, params, resumed), RkManipulationStatus::Failure);
  EXPECT_NE(capture.text().find("RkStandardManipulationFrame::update missing offset container element.\n"),
            std::string::npos);

  // Read back where the next frame is to start, the run goes on: init looks the pose up afresh.
  for (int cycle = 3; cycle < 6; ++cycle) manager.update(0.001 * cycle, params, state);
  auto& sequenceState =
      dynamic_cast<RkManipulationSequenceState&>(*state.currentSequenceStateContainer().element());
  ASSERT_TRUE(sequenceState.currentFrameIsComplete());
  ASSERT_TRUE(RkXmlWriter::writeString(state, document));
  RkXmlReader::readString(document, resumed);
  EXPECT_EQ(manager.update(0.006, params, resumed), RkManipulationStatus::Transition);
  EXPECT_EQ(manager.endEffectorPlacement(resumed).offsetTransformations()[0], placementAt(0.4, 0, 0.1));
}

TEST(RkManipulationRun, one_description_runs_in_two_states_side_by_side) {
  const RkManipulationSequenceManager manager = pickTask();
  RkManipulationSequenceManagerState early, late;
  ASSERT_TRUE(manager.init(early));
  ASSERT_TRUE(manager.init(late));
  const std::vector<Cycle> alone = run(manager, early, 0, 100);
  ASSERT_TRUE(manager.init(early));
  RkManipulationUpdateParams params;
  std::vector<Cycle> interleavedEarly, interleavedLate;
  // The second run starts three cycles later and shares the description the whole time.
  for (int cycle = 0; cycle < 100; ++cycle) {
    if (interleavedEarly.empty() || interleavedEarly.back().status != RkManipulationStatus::Complete) {
      interleavedEarly.push_back(
          {manager.update(0.001 * cycle, params, early), manager.endEffectorPlacement(early)});
    }
    if (cycle >= 3 &&
        (interleavedLate.empty() || interleavedLate.back().status != RkManipulationStatus::Complete)) {
      interleavedLate.push_back(
          {manager.update(0.001 * (cycle - 3), params, late), manager.endEffectorPlacement(late)});
    }
  }
  EXPECT_EQ(interleavedEarly, alone);
  EXPECT_EQ(interleavedLate, alone);
}

TEST(RkManipulationRun, steady_state_cycles_allocate_nothing) {
  RkManipulationSequenceManager manager;
  manager.add("ten", timedSequence(10, 0.02));
  manager.setSequenceOrder(orderOf({"ten"}));
  RkManipulationSequenceManagerState state;
  ASSERT_TRUE(manager.init(state));
  const RkSteadyCycles steady = runCountingAllocations(manager, state, 1000);
  // The counter itself sees allocations, so a zero below means something.
  RkAllocationCounter::start();
  const std::string probe(100, 'x');
  EXPECT_GT(RkAllocationCounter::stop(), 0);
  EXPECT_GT(steady.cycles, 150);
  EXPECT_EQ(steady.allocations, 0);
}

TEST(RkManipulationRun, a_state_checkpointed_mid_approach_resumes_cycle_for_cycle_to_the_bit) {
  const RkManipulationSequenceManager manager = approachAndHoldTask();
  RkManipulationSequenceManagerState uninterrupted;
  ASSERT_TRUE(manager.init(uninterrupted));
  LaggingArm referenceArm;
  const std::vector<Cycle> reference = runOnArm(manager, uninterrupted, referenceArm, 0, 200);
  ASSERT_EQ(reference.back().status, RkManipulationStatus::Complete);
  // The approach interpolates for 10 cycles, then the event waits some more for the lagging arm.
  std::vector<int> transitions;
  for (std::size_t cycle = 0; cycle < reference.size(); ++cycle) {
    if (reference[cycle].status == RkManipulationStatus::Transition) transitions.push_back(cycle);
  }
  // Settle starts and ends, approach starts, then interpolates for 10 cycles and waits for the lagging arm.
  ASSERT_EQ(transitions.size(), 5u);
  const int approachStart = transitions[2], approachEnd = transitions[3];
  ASSERT_GT(approachEnd - approachStart, 12);

  // Mid-interpolation, with the event waiting after it, and while holding.
  for (int stop : {approachStart + 4, approachStart + 9, approachEnd - 1, approachEnd + 3}) {
    LaggingArm arm;
    RkManipulationSequenceManagerState first;
    ASSERT_TRUE(manager.init(first));
    runOnArm(manager, first, arm, 0, stop);
    std::string document;
    ASSERT_TRUE(RkXmlWriter::writeString(first, document));
    RkManipulationSequenceManagerState resumed;
    ASSERT_TRUE(RkXmlReader::readString(document, resumed)) << document;
    const std::vector<Cycle> rest = runOnArm(manager, resumed, arm, stop, 200);
    EXPECT_TRUE(std::equal(rest.begin(), rest.end(), reference.begin() + stop)) << "stopped at " << stop;
    EXPECT_EQ(rest.size(), reference.size() - stop);
  }
}
