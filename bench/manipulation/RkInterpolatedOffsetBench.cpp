// The control cycle of a frame that approaches: manager update of one frame holding six interpolated offsets
// over constant targets, against a fake arm of six end effectors (budget 1 us per cycle, no allocation).
// Both halves of the approach are measured: while it blends, and once it has arrived and tracks the targets.
#include <benchmark/benchmark.h>

#include "manipulation/support/RkAllocationCounter.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkInterpolatedManipulationOffset.h"

namespace {

// One frame whose six offsets approach six constant goals over interpolationTime, lasting far longer.
RkManipulationSequenceManager sixApproachesTask(RkReal interpolationTime) {
  RkXmlVectorType<RkManipulationOffsetContainer> offsets(6);
  for (RkU32 i = 0; i < offsets.size(); ++i) {
    RkConstantManipulationOffset goal;
    goal.setOffset(RkEndEffectorPlacement(RkCoordinateSystemTransformation(
        RkVector(0.3 + 0.1 * i, 0.1, 0.4), RkOrientation::fromAngleAxis(0.2 * i, RkVector::zVector()))));
    RkInterpolatedManipulationOffset approach;
    RkManipulationOffsetContainer target;
    target.setElement(goal);
    approach.setTargetOffset(target);
    approach.setInterpolationTime(interpolationTime);
    offsets[i].setElement(approach);
  }
  RkStandardManipulationFrame frame = standardFrame("approach", {}, lasting(1e9));
  frame.setOffsetContainerVector(offsets);
  RkManipulationSequence sequence;
  sequence.add(frame);
  RkManipulationSequenceManager manager;
  manager.add("approach", sequence);
  manager.setSequenceOrder(orderOf({"approach"}));
  return manager;
}

void updateSixInterpolatedOffsets(benchmark::State& bench, RkReal interpolationTime) {
  const RkManipulationSequenceManager manager = sixApproachesTask(interpolationTime);
  RkFakeControlSystem system(6);
  for (RkU32 i = 0; i < 6; ++i) system.controller.actual[i] = placementAt(0.1 * i, -0.2, 0.6);
  const RkManipulationUpdateParams params = system.params();
  RkManipulationSequenceManagerState state;
  manager.init(state);
  RkReal time = 0.0;
  manager.update(time, params, state);  // the frame starts
  long cycles = 0;
  RkAllocationCounter::start();
  for (auto _ : bench) {
    time += 1e-9;
    benchmark::DoNotOptimize(manager.update(time, params, state));
    ++cycles;
  }
  bench.counters["allocations_per_cycle"] = static_cast<double>(RkAllocationCounter::stop()) / cycles;
}

void BM_ManagerUpdateSixInterpolatedOffsetsBlending(benchmark::State& bench) {
  updateSixInterpolatedOffsets(bench, 1e6);
}
BENCHMARK(BM_ManagerUpdateSixInterpolatedOffsetsBlending);

void BM_ManagerUpdateSixInterpolatedOffsetsArrived(benchmark::State& bench) {
  updateSixInterpolatedOffsets(bench, 1e-12);
}
BENCHMARK(BM_ManagerUpdateSixInterpolatedOffsetsArrived);

}  // namespace
