// Frames that end when the simulated UR5e has reached their placements: an approach from wherever the arm
// stands ends once the arm is there and the controller hears of it; a goal out of reach ends within the
// controller's give-up time, completing with soft failure and failing without it.
#include <gtest/gtest.h>

#include <string>

#include "events/RkManipulationPlacementAchievedTransitionEvent.h"
#include "foundation/RkPrint.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkActualPlacementManipulationOffset.h"
#include "offsets/RkInterpolatedManipulationOffset.h"
#include "simulation/RkSimulatedTaskRunner.h"

namespace {

// A standard frame of one offset, ended by event.
RkStandardManipulationFrame frame(const std::string& tag, const RkManipulationOffset& offset,
                                  const RkManipulationFrameTransitionEvent& event) {
  RkStandardManipulationFrame result = standardFrame(tag, {}, event);
  RkXmlVectorType<RkManipulationOffsetContainer> offsets(1);
  offsets[0].setElement(offset);
  result.setOffsetContainerVector(offsets);
  return result;
}

// An approach over one second to x, y, z with the tool pointing down, ended by the placement-achieved event.
RkStandardManipulationFrame approach(double x, double y, double z, bool softFailure = false,
                                     double tolerance = 0.001) {
  RkConstantManipulationOffset goal;
  goal.setOffset(
      RkEndEffectorPlacement(RkCoordinateSystemTransformation(RkVector(x, y, z), RkOrientation(0, 1, 0, 0))));
  RkInterpolatedManipulationOffset offset;
  RkManipulationOffsetContainer target;
  target.setElement(goal);
  offset.setTargetOffset(target);
  offset.setInterpolationTime(1.0);
  RkManipulationPlacementAchievedTransitionEvent event;
  event.setSoftFailure(softFailure);
  event.setTolerance(tolerance);
  return frame("approach", offset, event);
}

// Holds the arm where it stands for half a second.
RkStandardManipulationFrame hold() {
  return frame("hold", RkActualPlacementManipulationOffset(), lasting(0.5));
}

RkManipulationSequenceManager task(std::initializer_list<RkStandardManipulationFrame> frames) {
  RkManipulationSequence sequence;
  for (const RkStandardManipulationFrame& each : frames) sequence.add(each);
  RkManipulationSequenceManager manager;
  manager.add("reach", sequence);
  manager.setSequenceOrder(orderOf({"reach"}));
  return manager;
}

struct Outcome {
  RkManipulationStatus::Enum status;
  std::vector<double> ends;       // when each frame ended
  std::vector<double> positions;  // the arm's distance from its command then
  std::vector<Rk::Print::Capture::Line> lines;
};

// Runs the task on the UR5e, its controller removing the given fraction of the error per second.
Outcome runOnUr5e(const RkManipulationSequenceManager& manager, RkSimulatedTaskRunner& runner,
                  double gain = RkArmController::Settings().gain) {
  std::string error;
  EXPECT_TRUE(runner.loadRobot(RK_ROBOTS_DIR "/ur5e.urdf", "", error)) << error;
  RkArmController::Settings settings = runner.system().armController(0).settings();
  settings.gain = gain;
  EXPECT_TRUE(runner.system().armController(0).setSettings(settings, error)) << error;
  EXPECT_TRUE(runner.setMaxTime(30.0));
  Outcome outcome;
  runner.setTransitionCallback([&](const RkSimulatedTaskRunner& r) {
    if (!r.frameEnded()) return;
    double position = 0.0, angle = 0.0;
    r.placementError(position, angle);
    outcome.ends.push_back(r.time());
    outcome.positions.push_back(position);
  });
  Rk::Print::Capture capture;
  outcome.status = runner.run(manager);
  outcome.lines = capture.lines();
  return outcome;
}

const char* const kConvergenceFailed =
    "RkManipulationPlacementAchievedTransitionEvent::update convergence failed \n";

}  // namespace

TEST(RkPlacementAchievedOnTheArm, approaches_end_once_the_arm_is_there_whatever_it_did_before) {
  RkSimulatedTaskRunner runner;
  // The second approach follows a hold longer than the controller's stall window, and asks for 10 um of a
  // controller that closes in slowly enough to take more than that window from 0.1 mm to there.
  const Outcome outcome = runOnUr5e(
      task({approach(0.45, 0.15, 0.35), hold(), approach(0.3, 0.3, 0.45, false, 1e-5)}), runner, 10.0);
  ASSERT_EQ(outcome.status, RkManipulationStatus::Complete) << runner.failure();
  EXPECT_TRUE(outcome.lines.empty());
  ASSERT_EQ(outcome.ends.size(), 3u);
  // Each interpolation takes a second; the arm, lagging behind, arrives some time after.
  EXPECT_GE(outcome.ends[0], 1.0);
  EXPECT_LT(outcome.ends[0], 2.0);
  EXPECT_LE(outcome.positions[0], 0.001);
  EXPECT_LT(outcome.positions[1], 1e-6);  // held still
  EXPECT_GE(outcome.ends[2] - outcome.ends[1], 1.0);
  EXPECT_LT(outcome.ends[2] - outcome.ends[1], 3.0);
  EXPECT_LE(outcome.positions[2], 1e-5);
  EXPECT_EQ(runner.system().placementAchievedCount(0, 0), 2u);
}

TEST(RkPlacementAchievedOnTheArm,
     a_goal_out_of_reach_ends_in_bounded_time_completing_only_with_soft_failure) {
  for (bool softFailure : {true, false}) {
    RkSimulatedTaskRunner runner;
    const Outcome outcome =
        runOnUr5e(task({approach(3.5, 0.0, 0.3, softFailure), approach(0.45, 0.15, 0.35)}), runner);
    // The controller gives up soon after the goal stops moving, well before its 10 s time-out.
    ASSERT_GT(outcome.lines.size(), 0u);
    EXPECT_EQ(outcome.lines[0].level, 4);
    EXPECT_EQ(outcome.lines[0].text.rfind(kConvergenceFailed, 0), 0u) << outcome.lines[0].text;
    EXPECT_NE(outcome.lines[0].text.find("; tolerance = 0.001000). \n"), std::string::npos);
    if (softFailure) {
      // The arm stretched out, far short of the goal; the next approach is judged afresh and succeeds.
      EXPECT_EQ(outcome.status, RkManipulationStatus::Complete) << runner.failure();
      EXPECT_EQ(outcome.lines.size(), 1u);
      ASSERT_EQ(outcome.ends.size(), 2u);
      EXPECT_GT(outcome.ends[0], 1.0);
      EXPECT_LT(outcome.ends[0], 2.0);
      EXPECT_GT(outcome.positions[0], 2.0);
      EXPECT_LE(outcome.positions[1], 0.001);
      EXPECT_EQ(runner.system().placementAchievedCount(0, 0), 1u);
    } else {
      EXPECT_EQ(outcome.status, RkManipulationStatus::Failure);
      EXPECT_TRUE(outcome.ends.empty());
      EXPECT_GT(runner.time(), 1.0);
      EXPECT_LT(runner.time(), 2.0);
      EXPECT_EQ(runner.system().placementAchievedCount(0, 0), 0u);
    }
  }
}
