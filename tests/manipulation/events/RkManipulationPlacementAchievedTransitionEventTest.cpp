// The placement-achieved event, run by a standard frame against the fake controller: which end effectors
// count and when they are reached, what the controller is told, how it gives up, and its exact lines.
#include <gtest/gtest.h>

#include <cmath>

#include "events/RkManipulationPlacementAchievedTransitionEvent.h"
#include "foundation/RkPrint.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"

namespace {

RkManipulationPlacementAchievedTransitionEvent achieved(RkReal tolerance,
                                                        std::initializer_list<RkU32> indices = {},
                                                        bool softFailure = false) {
  RkManipulationPlacementAchievedTransitionEvent event;
  event.setTolerance(tolerance);
  RkManipulationPlacementAchievedTransitionEvent::IndexVector testIndices;
  for (RkU32 index : indices) testIndices.pushBack(index);
  event.setTestIndices(testIndices);
  event.setSoftFailure(softFailure);
  return event;
}

// A standard frame with goals along x, run against a fake arm whose end effectors stand where the test says.
struct Bench {
  explicit Bench(std::initializer_list<RkReal> goalXs, RkU32 endEffectors = 0)
      : system(endEffectors ? endEffectors : static_cast<RkU32>(goalXs.size())) {
    for (RkReal x : goalXs) goals.push_back(placementAt(x, 0, 0));
    params = system.params();
  }
  // The actual placements the position-control system reports, by x.
  void standAt(std::initializer_list<RkReal> xs) {
    RkManipulatorEndEffectorPlacement placement;
    RkU32 i = 0;
    for (RkReal x : xs) placement.setOffsetInRelative(i++, placementAt(x, 0, 0));
    system.placements.clear();
    system.placements.pushBack(placement);
  }
  // Initialises a fresh frame with event and updates it once.
  RkManipulationStatus::Enum run(const RkManipulationFrameTransitionEvent& event) {
    RkStandardManipulationFrame frame = standardFrame("reach", {}, event);
    RkXmlVectorType<RkManipulationOffsetContainer> offsets;
    for (const RkCoordinateSystemTransformation& goal : goals) {
      RkConstantManipulationOffset offset;
      offset.setOffset(RkEndEffectorPlacement(goal));
      offsets.pushBack(RkManipulationOffsetContainer());
      offsets[offsets.size() - 1].setElement(offset);
    }
    frame.setOffsetContainerVector(offsets);
    RkManipulationFrameStateContainer state;
    if (!frame.init(0.0, params, sequence, sequenceState, 0, state)) return RkManipulationStatus::Failure;
    return frame.update(0.001, params, sequence, sequenceState, 0, *state.element());
  }

  std::vector<RkCoordinateSystemTransformation> goals;
  RkFakeControlSystem system;
  RkManipulationUpdateParams params;
  RkManipulationSequence sequence;
  RkManipulationSequenceState sequenceState;
};

const char* const kConvergenceFailed =
    "RkManipulationPlacementAchievedTransitionEvent::update convergence failed \n (max delta = 0.500000; "
    "tolerance = 0.250000). \n";

}  // namespace

TEST(RkManipulationPlacementAchievedTransitionEvent, a_delta_up_to_the_tolerance_is_reached_and_notified) {
  Bench bench({0.5, 0.25});
  bench.standAt({0.5, 0.75});  // deltas 0 and exactly 0.5
  EXPECT_EQ(bench.run(achieved(0.5)), RkManipulationStatus::Complete);
  EXPECT_EQ(bench.system.controller.placementAchievedCount[0], 1u);
  EXPECT_EQ(bench.system.controller.placementAchievedCount[1], 1u);

  EXPECT_EQ(bench.run(achieved(std::nextafter(0.5, 0.0))), RkManipulationStatus::InProgress);
  EXPECT_EQ(bench.system.controller.placementAchievedCount[1], 1u);

  // Only the listed end effectors count, and only they are told.
  EXPECT_EQ(bench.run(achieved(0.1, {0})), RkManipulationStatus::Complete);
  EXPECT_EQ(bench.system.controller.placementAchievedCount[0], 2u);
  EXPECT_EQ(bench.system.controller.placementAchievedCount[1], 1u);
}

TEST(RkManipulationPlacementAchievedTransitionEvent,
     indices_past_the_goals_are_ignored_and_missing_actuals_count_1000) {
  Bench bench({0.5, 0.25});
  bench.standAt({0.5, 9.0});
  EXPECT_EQ(bench.run(achieved(0.1, {0, 2, 7})), RkManipulationStatus::Complete);
  EXPECT_EQ(bench.run(achieved(0.1, {5, 9})), RkManipulationStatus::Complete);
  EXPECT_EQ(bench.system.controller.placementAchievedCount[1], 0u);

  // End effector 1 has no actual placement: 1000 away, reached only by a tolerance of 1000.
  bench.standAt({0.5});
  EXPECT_EQ(bench.run(achieved(999.5)), RkManipulationStatus::InProgress);
  EXPECT_EQ(bench.run(achieved(1000.0)), RkManipulationStatus::Complete);
  // Nor has any end effector when the controller index finds no placements.
  bench.system.placements.clear();
  EXPECT_EQ(bench.run(achieved(999.5, {0})), RkManipulationStatus::InProgress);

  // A frame of no end effectors has reached its placements at once.
  Bench empty({});
  EXPECT_EQ(empty.run(achieved(0.1)), RkManipulationStatus::Complete);
}

TEST(RkManipulationPlacementAchievedTransitionEvent,
     gives_up_when_an_unreached_end_effector_may_not_converge) {
  Bench bench({0.5, 0.25});
  bench.standAt({1.0, 0.25});                     // end effector 0 is 0.5 off, end effector 1 is there
  bench.system.controller.converging[1] = false;  // a reached end effector's word does not matter
  Rk::Print::Capture capture;
  EXPECT_EQ(bench.run(achieved(0.25)), RkManipulationStatus::InProgress);
  EXPECT_TRUE(capture.lines().empty());

  bench.system.controller.converging[0] = false;
  EXPECT_EQ(bench.run(achieved(0.25)), RkManipulationStatus::Failure);
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_EQ(capture.lines()[0].text, kConvergenceFailed);
  EXPECT_EQ(capture.lines()[1].text,
            "RkStandardManipulationFrame::update transition event failed to update.\n");

  // Soft failure: the same line, and the frame completes.
  capture.clear();
  EXPECT_EQ(bench.run(achieved(0.25, {}, true)), RkManipulationStatus::Complete);
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0].text, kConvergenceFailed);
  EXPECT_EQ(bench.system.controller.placementAchievedCount[0], 0u);
}

TEST(RkManipulationPlacementAchievedTransitionEvent,
     refuses_bad_tolerances_mismatched_sets_and_a_missing_controller) {
  Bench bench({0.5});
  bench.standAt({0.5});
  Rk::Print::Capture capture;
  for (RkReal tolerance : {0.0, -1.0, std::nan("")}) {
    capture.clear();
    EXPECT_EQ(bench.run(achieved(tolerance)), RkManipulationStatus::Failure);
    ASSERT_EQ(capture.lines().size(), 2u) << tolerance;
    EXPECT_EQ(capture.lines()[0].level, 4);
    EXPECT_EQ(capture.lines()[0].text,
              "RkManipulationPlacementAchievedTransitionEvent::init tolerance must be positive.\n");
  }

  // One goal for a set of two fails at once, soft failure or not.
  Bench mismatched({0.5}, 2);
  mismatched.standAt({0.5, 0.5});
  capture.clear();
  EXPECT_EQ(mismatched.run(achieved(0.1, {}, true)), RkManipulationStatus::Failure);
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_EQ(capture.lines()[0].text,
            "RkManipulationPlacementAchievedTransitionEvent::update size mismatch for placements and end "
            "effector set (1 != 2).\n");

  Bench noController({}, 0);
  noController.params.controllerIndex = 3;
  capture.clear();
  EXPECT_EQ(noController.run(achieved(0.1)), RkManipulationStatus::Failure);
  ASSERT_EQ(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].text,
            "RkManipulationPlacementAchievedTransitionEvent::update missing manipulator controller 3.\n");
}
