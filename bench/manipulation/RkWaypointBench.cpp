// One waypoint-sequence update per control cycle while a corner curve runs: the curve evaluated ahead of
// the cycle's time, position and orientation, and the commanded placement written in place.
#include <benchmark/benchmark.h>

#include "manipulation/support/RkFakeControlSystem.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "waypoints/RkWaypointSequence.h"

namespace {

// Two waypoints with 2 cm zones around a right-angle corner.
RkWaypointSequence corner() {
  RkWaypointSequence sequence;
  for (RkReal y : {0.0, 0.2}) {
    RkManipulatorEndEffectorPlacement goal;
    goal.setOffsetInRelative(
        0, RkCoordinateSystemTransformation(RkVector(0.3, y, 0.4), RkOrientation(0, 1, 0, 0)));
    RkManipulationWaypoint waypoint;
    waypoint.setGoal(goal);
    waypoint.setZoneRadius(0.02);
    sequence.add(waypoint);
  }
  return sequence;
}

void BM_WaypointSequenceUpdateOnCornerCurve(benchmark::State& bench) {
  const RkWaypointSequence sequence = corner();
  // The tool enters the zone so slowly that the curve outlasts any run of the benchmark.
  RkFakeControlSystem arm(1);
  arm.controller.actual[0] = RkCoordinateSystemTransformation(RkVector(0.28, 0.0, 0.4), RkOrientation());
  arm.controller.linearVelocity[0] = RkVector(1e-6, 0, 0);
  arm.lookAhead = 0.021;
  const RkManipulationUpdateParams params = arm.params();
  RkManipulationActionStateContainer state;
  sequence.init(state);
  RkReal time = 0.0;
  sequence.update(time, params, *state.element());
  for (auto _ : bench) {
    time += 0.001;
    benchmark::DoNotOptimize(sequence.update(time, params, *state.element()));
  }
  if (sequence.update(time, params, *state.element()) != RkManipulationStatus::InProgress ||
      sequence.profiledPositionEndEffectorIndices(*state.element()).size() != 1) {
    bench.SkipWithError("the corner curve did not run throughout");
  }
}
BENCHMARK(BM_WaypointSequenceUpdateOnCornerCurve);

}  // namespace
