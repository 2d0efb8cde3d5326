// A 20 cm square traced by the simulated UR5e's tool in a horizontal plane through its home position, once
// stopping at every corner and once rounding the inner corners inside 2 cm zones.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>

#include "control/RkManipulatorController.h"
#include "simulation/RkSimulatedTaskRunner.h"
#include "waypoints/RkWaypointSequence.h"

namespace {

const RkReal kSide = 0.2;
const RkReal kZone = 0.02;

// What a run of the square showed at its three inner corners.
struct SquareRun {
  RkManipulationStatus::Enum status = RkManipulationStatus::InProgress;
  double seconds = 0.0;
  std::array<double, 3> closest{};      // the tool's least distance from each inner corner
  std::array<double, 3> lowestSpeed{};  // the tool's lowest speed within the zone radius of each
  RkU32 goalsReached = 0;
  RkU32 waypointsEnded = 0;  // transitions that ended a waypoint
};

// The square from the tool's home position: along +x, then +y, then back; the first waypoint is where the
// tool starts, the last closes the square there.
SquareRun runSquare(bool stopPoints) {
  RkSimulatedTaskRunner runner;
  std::string error;
  EXPECT_TRUE(runner.loadRobot(RK_ROBOTS_DIR "/ur5e.urdf", "", error)) << error;
  runner.setMaxTime(30.0);
  const RkCoordinateSystemTransformation home = runner.actual().offsetTransformations()[0];
  const std::array<RkVector, 5> corners = {home.translation(), home.translation() + RkVector(kSide, 0, 0),
                                           home.translation() + RkVector(kSide, kSide, 0),
                                           home.translation() + RkVector(0, kSide, 0), home.translation()};
  RkWaypointSequence square;
  for (const RkVector& corner : corners) {
    RkManipulatorEndEffectorPlacement goal;
    goal.setOffsetInRelative(0, RkCoordinateSystemTransformation(corner, home.orientation()));
    RkManipulationWaypoint waypoint;
    waypoint.setGoal(goal);
    waypoint.setStopPoint(stopPoints);
    waypoint.setZoneRadius(kZone);
    square.add(waypoint);
  }
  SquareRun result;
  result.closest.fill(std::numeric_limits<double>::infinity());
  result.lowestSpeed.fill(std::numeric_limits<double>::infinity());
  runner.setCycleCallback([&](const RkSimulatedTaskRunner& r) {
    const RkVector tool = r.actual().offsetTransformations()[0].translation();
    RkVector linear, angular;
    runner.system().manipulatorController(0)->endEffectorVelocity(0, linear, angular);
    for (int c = 0; c < 3; ++c) {
      const double distance = (tool - corners[c + 1]).norm();
      result.closest[c] = std::min(result.closest[c], distance);
      if (distance <= kZone) result.lowestSpeed[c] = std::min(result.lowestSpeed[c], linear.norm());
    }
  });
  runner.setTransitionCallback(
      [&](const RkSimulatedTaskRunner& r) { result.waypointsEnded += r.frameEnded(); });
  result.status = runner.run(square);
  result.seconds = runner.time();
  result.goalsReached = runner.system().goalReachedCount(0, 0);
  EXPECT_EQ(result.status, RkManipulationStatus::Complete) << runner.failure();
  std::printf("%s: %.3f s; per inner corner closest %.4f %.4f %.4f m, lowest speed %.4f %.4f %.4f m/s\n",
              stopPoints ? "stop points" : "2 cm zones", result.seconds, result.closest[0], result.closest[1],
              result.closest[2], result.lowestSpeed[0], result.lowestSpeed[1], result.lowestSpeed[2]);
  return result;
}

}  // namespace

TEST(RkWaypointSquare, zones_finish_sooner_never_stop_at_an_inner_corner_and_pass_each_within_its_zone) {
  const SquareRun stopping = runSquare(true);
  const SquareRun rounding = runSquare(false);
  EXPECT_EQ(stopping.goalsReached, 5u);
  EXPECT_EQ(rounding.goalsReached, 5u);
  EXPECT_EQ(stopping.waypointsEnded, 5u);
  EXPECT_EQ(rounding.waypointsEnded, 5u);
  EXPECT_LT(rounding.seconds, stopping.seconds);
  for (int c = 0; c < 3; ++c) {
    // Stopping, the tool comes to rest on the corner; rounding, it keeps a good share of its speed.
    EXPECT_LT(stopping.closest[c], 1e-5) << c;
    EXPECT_LT(stopping.lowestSpeed[c], 1e-3) << c;
    EXPECT_LE(rounding.closest[c], kZone) << c;
    EXPECT_GT(rounding.lowestSpeed[c], 0.1) << c;
  }
}
