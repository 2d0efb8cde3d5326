// Waypoints and waypoint sequences on the fake arm: the corner curve from the tool through the goal to as far
// beyond it, the approach aimed short of a corner, the waypoints that only stop, the pose-set override of one
// end effector's goal, the hand-over statuses, and the failures with their lines.
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <vector>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkAllocationCounter.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkPoseSet.h"
#include "support/RkRoundTrip.h"
#include "waypoints/RkBezierInterpolator.h"
#include "waypoints/RkWaypointSequence.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlTokens.h"

namespace {

RkCoordinateSystemTransformation at(RkReal x, RkReal y, RkReal z = 0.4,
                                    const RkOrientation& orientation = RkOrientation()) {
  return RkCoordinateSystemTransformation(RkVector(x, y, z), orientation);
}

// A waypoint whose goal for end effector `endEffector` is goal (earlier entries identities).
RkManipulationWaypoint waypoint(const RkCoordinateSystemTransformation& goal, RkReal zone,
                                RkU32 endEffector = 0) {
  RkManipulatorEndEffectorPlacement placement;
  placement.setOffsetInRelative(endEffector, goal);
  RkManipulationWaypoint result;
  result.setGoal(placement);
  result.setZoneRadius(zone);
  return result;
}

// A waypoint sequence run on a fake arm of two point end effectors, driving end effector 0.
struct WaypointRun {
  explicit WaypointRun(const std::vector<RkManipulationWaypoint>& waypoints) {
    for (const RkManipulationWaypoint& w : waypoints) sequence.add(w);
    params = arm.params();
  }
  RkBoolean init() { return sequence.init(state); }
  RkManipulationStatus::Enum at(RkReal time) { return sequence.update(time, params, *state.element()); }
  const RkCoordinateSystemTransformation& commanded(RkU32 endEffector = 0) const {
    return sequence.endEffectorPlacement(*state.element()).offsetTransformations()[endEffector];
  }
  RkU32 profiled() const { return sequence.profiledPositionEndEffectorIndices(*state.element()).size(); }
  void place(const RkCoordinateSystemTransformation& tool, const RkVector& velocity = RkVector()) {
    arm.controller.actual[0] = tool;
    arm.controller.linearVelocity[0] = velocity;
  }

  RkFakeControlSystem arm;
  RkWaypointSequence sequence;
  RkManipulationActionStateContainer state;
  RkManipulationUpdateParams params;
};

}  // namespace

TEST(RkManipulationWaypoint,
     corner_runs_from_the_tool_through_the_goal_to_as_far_beyond_it_towards_the_next_goal) {
  const RkOrientation tilted = RkOrientation::fromAngleAxis(0.4, RkVector::zVector());
  const RkOrientation turned = RkOrientation::fromAngleAxis(1.2, RkVector::zVector());
  WaypointRun run({waypoint(at(0.3, 0.0, 0.4, tilted), 0.05), waypoint(at(0.3, 0.2, 0.4, turned), 0.05)});
  run.arm.lookAhead = 0.01;
  ASSERT_TRUE(run.init());
  // 3 cm before the goal, inside its zone, at 0.5 m/s: the curve starts at once and is evaluated ahead.
  run.place(at(0.27, 0.0), RkVector(0.5, 0, 0));
  EXPECT_EQ(run.at(1.0), RkManipulationStatus::Transition);
  EXPECT_EQ(run.profiled(), 1u);
  RkBezierInterpolator expected;
  expected.setPoints(RkVector(0.27, 0, 0.4), RkVector(0.3, 0, 0.4), RkVector(0.3, 0.03, 0.4));
  expected.setSpeeds(0.5, 0.5);
  expected.setStartTime(1.0);
  // The exit orientation is a zone's share of the next leg's turn.
  expected.setOrientations(RkOrientation(), tilted, RkOrientation::interpolation(tilted, turned, 0.05 / 0.2));
  run.place(at(0.29, 0.0), RkVector(0.5, 0, 0));  // the curve no longer depends on the tool
  for (RkReal t : {1.0, 1.05, 1.1}) {
    if (t > 1.0) {
      EXPECT_EQ(run.at(t), RkManipulationStatus::InProgress) << t;
    }
    RkVector position, velocity;
    RkOrientation orientation;
    ASSERT_TRUE(expected.interpolate(t + 0.01, position, velocity) &&
                expected.interpolate(t + 0.01, orientation));
    EXPECT_TRUE(run.commanded().translation().approxEq(position, 1e-12)) << t;
    EXPECT_TRUE(run.commanded().orientation().approxEq(orientation, 1e-12)) << t;
  }
  // The curve lasts 2 * 3 cm / 0.5 m/s; past it the waypoint is done and the tool heads for the next goal.
  EXPECT_EQ(run.arm.controller.goalReachedCount[0], 0u);
  EXPECT_EQ(run.at(1.12), RkManipulationStatus::Transition);
  EXPECT_EQ(run.arm.controller.goalReachedCount[0], 1u);
  EXPECT_EQ(run.profiled(), 0u);
  EXPECT_TRUE(run.commanded().approxEq(at(0.3, 0.2, 0.4, turned), 0.0));
  // What a run changes takes no part in equality.
  EXPECT_TRUE(run.sequence.waypoints()[0] == waypoint(at(0.3, 0.0, 0.4, tilted), 0.05));
}

TEST(RkManipulationWaypoint,
     approach_aims_short_of_the_goal_once_and_the_curve_starts_when_the_tool_moves_in_the_zone) {
  // Straight on: no shift; a right angle: a quarter of the zone; right back: half of it.
  for (const auto& [nextX, nextY, expectedX] :
       {std::tuple(0.5, 0.0, 0.3), std::tuple(0.3, 0.2, 0.29), std::tuple(0.1, 0.0, 0.28)}) {
    const RkOrientation down(0, 1, 0, 0);
    WaypointRun run({waypoint(at(0.3, 0.0, 0.4, down), 0.04), waypoint(at(nextX, nextY), 0.04)});
    ASSERT_TRUE(run.init());
    run.place(at(0.0, 0.0), RkVector(0.5, 0, 0));
    EXPECT_EQ(run.at(0.0), RkManipulationStatus::Transition);
    EXPECT_TRUE(run.commanded().approxEq(at(expectedX, 0.0, 0.4, down), 1e-15)) << nextX << " " << nextY;
    // Once aimed, the goal stays where it was put, wherever the tool goes outside the zone.
    run.place(at(0.1, 0.1), RkVector(0.5, 0, 0));
    EXPECT_EQ(run.at(0.001), RkManipulationStatus::InProgress);
    EXPECT_TRUE(run.commanded().approxEq(at(expectedX, 0.0, 0.4, down), 1e-15));
    EXPECT_EQ(run.profiled(), 0u);
    // Inside the zone at rest no curve starts, for it would never advance; moving, it starts without
    // allocating.
    run.place(at(0.29, 0.0));
    EXPECT_EQ(run.at(0.002), RkManipulationStatus::InProgress);
    EXPECT_EQ(run.profiled(), 0u);
    run.place(at(0.29, 0.0), RkVector(0.5, 0, 0));
    RkAllocationCounter::start();
    const RkManipulationStatus::Enum status = run.at(0.003);
    EXPECT_EQ(RkAllocationCounter::stop(), 0);
    EXPECT_EQ(status, RkManipulationStatus::InProgress);
    EXPECT_EQ(run.profiled(), 1u);
  }
}

TEST(RkManipulationWaypoint, stop_points_zero_zones_and_the_last_waypoint_complete_only_below_1e_5) {
  RkManipulationWaypoint stop = waypoint(at(0.3, 0.0), 0.05);
  stop.setStopPoint(true);
  const RkManipulationWaypoint next = waypoint(at(0.3, 0.2), 0.05);
  const std::vector<std::vector<RkManipulationWaypoint>> cases = {
      {stop, next}, {waypoint(at(0.3, 0.0), 0.0), next}, {waypoint(at(0.3, 0.0), 0.05)}};
  for (const std::vector<RkManipulationWaypoint>& waypoints : cases) {
    WaypointRun run(waypoints);
    ASSERT_TRUE(run.init());
    // Inside the zone and moving, yet no curve: the goal itself is commanded until it is reached.
    run.place(at(0.3 - 2e-5, 0.0), RkVector(0.5, 0, 0));
    EXPECT_EQ(run.at(0.0), RkManipulationStatus::Transition);
    EXPECT_EQ(run.at(0.001), RkManipulationStatus::InProgress);
    EXPECT_EQ(run.profiled(), 0u);
    EXPECT_TRUE(run.commanded().approxEq(at(0.3, 0.0), 0.0));
    run.place(at(0.3 - 0.9e-5, 0.0));
    const bool last = waypoints.size() == 1;
    EXPECT_EQ(run.at(0.002), last ? RkManipulationStatus::Complete : RkManipulationStatus::Transition);
    EXPECT_EQ(run.arm.controller.goalReachedCount[0], 1u);
  }
}

TEST(RkManipulationWaypoint, pose_of_the_label_replaces_the_goal_of_the_sequences_end_effector_only) {
  RkManipulationWaypoint first = waypoint(at(0.3, 0.0), 0.05, 1);
  RkManipulatorEndEffectorPlacement both = first.goal();
  both.setOffsetInRelative(0, at(0.1, 0.1));
  first.setGoal(both);
  first.setLabel(std::string("corner"));
  RkManipulationWaypoint second = waypoint(at(0.3, 0.2), 0.05, 1);
  second.setLabel(std::string("exit"));
  RkPoseSet poses;
  poses.addPose(std::string("corner"), at(0.5, 0.0));
  poses.addPose(std::string("exit"), at(0.5, 0.3));
  WaypointRun run({first, second});
  run.sequence.setEndEffectorIndex(1);
  run.params.poseSet = &poses;
  ASSERT_TRUE(run.init());
  run.arm.controller.actual[1] = at(0.2, 0.0);
  run.at(0.0);
  EXPECT_TRUE(run.commanded(0).approxEq(at(0.1, 0.1), 0.0));
  // Aimed short of the pose, not of the desired placement, for the corner towards the next waypoint's pose.
  // A right-angle turn: a quarter of the zone.
  EXPECT_TRUE(run.commanded(1).translation().approxEq(RkVector(0.5 - 0.0125, 0.0, 0.4), 1e-15));
  // Inside the corner pose's zone the curve ends at the next waypoint's pose.
  run.arm.controller.actual[1] = at(0.48, 0.0);
  run.arm.controller.linearVelocity[1] = RkVector(1, 0, 0);
  EXPECT_EQ(run.at(0.001), RkManipulationStatus::InProgress);
  EXPECT_EQ(run.at(1.0), RkManipulationStatus::Transition);
  EXPECT_TRUE(run.commanded(1).approxEq(at(0.5, 0.3), 0.0));
}

TEST(RkWaypointSequence, hands_over_waypoint_by_waypoint_with_the_list_statuses) {
  WaypointRun run({waypoint(at(0.3, 0.0), 0.0), waypoint(at(0.4, 0.0), 0.0)});
  ASSERT_TRUE(run.init());
  run.place(at(0.0, 0.0));
  EXPECT_EQ(run.at(0.0), RkManipulationStatus::Transition);  // waypoint 0 started
  EXPECT_EQ(run.at(0.1), RkManipulationStatus::InProgress);
  run.place(at(0.3, 0.0));
  EXPECT_EQ(run.at(0.2), RkManipulationStatus::Transition);  // waypoint 0 reached, another follows
  EXPECT_EQ(run.at(0.3), RkManipulationStatus::Transition);  // waypoint 1 started
  EXPECT_TRUE(run.commanded().approxEq(at(0.4, 0.0), 0.0));
  run.place(at(0.4, 0.0));
  EXPECT_EQ(run.at(0.4), RkManipulationStatus::Complete);
  // A last waypoint reached as it starts completes the sequence in that very call.
  run.sequence.deleteWaypoint(0);
  ASSERT_TRUE(run.init());
  EXPECT_EQ(run.at(0.5), RkManipulationStatus::Complete);
}

TEST(RkWaypointSequence, failures_print_their_lines_and_a_failed_waypoint_is_not_started_again) {
  Rk::Print::Capture capture;
  WaypointRun stuck({waypoint(at(0.3, 0.0), 0.0)});
  ASSERT_TRUE(stuck.init());
  stuck.arm.controller.converging[0] = false;
  EXPECT_EQ(stuck.at(0.0), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkManipulationWaypoint::update convergence failed.\n"
            "RkWaypointSequence::update unable to update waypoint 0.\n");
  // Waypoint 1 names no goal for end effector 0, so waypoint 0 cannot aim at it, and is not started again.
  WaypointRun run({waypoint(at(0.3, 0.0), 0.0), RkManipulationWaypoint()});
  ASSERT_TRUE(run.init());
  capture.clear();
  EXPECT_EQ(run.at(0.0), RkManipulationStatus::Failure);
  EXPECT_EQ(run.at(0.1), RkManipulationStatus::Failure);
  EXPECT_EQ(capture.text(),
            "RkManipulationWaypoint::init - waypoint 1 has no desired placement for end-effector 0.\n"
            "RkWaypointSequence::update unable to initialize waypoint 0.\n"
            "RkManipulationWaypoint::update end-effector 0 has no actual placement or goal; init first.\n"
            "RkWaypointSequence::update unable to update waypoint 0.\n");
  run.sequence.setEndEffectorIndex(2);
  ASSERT_TRUE(run.init());
  capture.clear();
  EXPECT_EQ(run.at(0.0), RkManipulationStatus::Failure);
  ASSERT_FALSE(capture.lines().empty());
  EXPECT_EQ(capture.lines()[0].text, "RkManipulationWaypoint::init - invalid end-effector index.\n");
}

TEST(RkWaypointSequence, end_effector_set_state_and_waypoint_defaults) {
  RkFakeControlSystem arm;
  arm.controller.sets.pushBack(RkFakeController(3).sets[0]);
  arm.controller.activeSet = 1;
  RkWaypointSequence sequence;
  RkWaypointSequenceState state;
  sequence.setEndEffectorSetIndex(RkWaypointSequence::kControllerActiveSet);
  EXPECT_EQ(sequence.endEffectorSet(arm.params(), state).size(), 3u);
  sequence.setEndEffectorSetIndex(2);
  EXPECT_EQ(sequence.endEffectorSet(arm.params(), state).size(), 0u);
  // The state is reached by no document, so it is read back here.
  state.setCurrentWaypointIndex(2);
  state.setCurrentWaypointIsComplete(true);
  EXPECT_TRUE(roundTrips(state));
  RkManipulationWaypoint read;
  ASSERT_TRUE(RkXmlReader::readString(
      "<manipulationWaypoint xmlns=\"" + std::string(RkXml::RkNamespaceUri) + "\"/>", read));
  EXPECT_EQ(read.zoneRadius(), 0.1);
  EXPECT_EQ(read.extendedZoneRadius(), 0.2);
  EXPECT_FALSE(read.stopPoint());
  EXPECT_TRUE(dynamic_cast<const RkBezierInterpolator*>(read.interpolatorContainer().element()));
}
