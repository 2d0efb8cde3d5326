// A parametric frame over 100 values of a frame whose one offset moves a constant goal by the published
// value: manager update per cycle while a value runs (budget 200 ns, no allocation), and per cycle with a
// step to the next value every 20 cycles, the restarts of the target frame included.
#include <benchmark/benchmark.h>

#include "manipulation/support/RkNestedFrameTestTasks.h"

namespace {

// The row's values are cycles long, at 1 kHz.
RkManipulationSequenceManager rowOfHundred(RkReal seconds) {
  RkParametricManipulationFrame row = parametricFrame(
      "row", frameWithOffset("slot", shiftedAlongY(placementAt(0.4, 0, 0.2), "slot y="), lasting(seconds)),
      "slot y=", {});
  RkXmlVectorType<RkXmlBasicType<RkReal>> values;
  for (int i = 0; i < 100; ++i) values.pushBack(0.01 * i);
  row.setParametricValues(values);
  RkManipulationSequence sequence;
  sequence.add(row);
  RkManipulationSequenceManager manager;
  manager.add("row", sequence);
  manager.setSequenceOrder(orderOf({"row"}));
  return manager;
}

void runRow(benchmark::State& bench, RkReal seconds) {
  const RkManipulationSequenceManager manager = rowOfHundred(seconds);
  RkManipulationSequenceManagerState state;
  manager.init(state);
  RkManipulationUpdateParams params;
  RkReal time = 0.0;
  manager.update(time, params, state);
  for (auto _ : bench) {
    time += 0.001;
    const RkManipulationStatus::Enum status = manager.update(time, params, state);
    if (status == RkManipulationStatus::Complete) manager.init(state);
    benchmark::DoNotOptimize(status);
  }
}

void BM_ManagerUpdateParametricFrameWithinValue(benchmark::State& bench) {
  runRow(bench, 1e9);
}
BENCHMARK(BM_ManagerUpdateParametricFrameWithinValue);

void BM_ManagerUpdateParametricFrameStepEvery20Cycles(benchmark::State& bench) {
  runRow(bench, 0.02);
}
BENCHMARK(BM_ManagerUpdateParametricFrameStepEvery20Cycles);

}  // namespace
