// The control cycle and task files: manager update over a 10-frame sequence (budget 100 ns, no allocation),
// the average cycle when a frame starts every 10 cycles with its allocations per frame started (budget 10),
// and writing a 1000-frame task (budget 100 MB/s); moving a 10-frame sequence of six offsets a frame, which
// steals rather than copies, against copying it. Reading tasks: RkManipulationReadBench.cpp.
#include <benchmark/benchmark.h>
#include <utility>

#include "manipulation/support/RkManipulationTestTasks.h"

namespace {

RkManipulationSequenceManager tenFrameTask() {
  RkManipulationSequenceManager manager;
  // Long frames, so that the measured cycles are steady-state ones.
  manager.add("ten", timedSequence(10, 1e9));
  manager.setSequenceOrder(orderOf({"ten"}));
  return manager;
}

std::string thousandFrameDocument() {
  RkManipulationSequenceManager manager;
  manager.add("long", timedSequence(1000, 0.5));
  manager.setSequenceOrder(orderOf({"long"}));
  std::string document;
  RkXmlWriter::writeString(manager, document);
  return document;
}

// Ten frames of six constant offsets and a time-duration event each.
RkManipulationSequence tenFramesOfSixOffsets() {
  RkManipulationSequence sequence;
  for (int i = 0; i < 10; ++i) {
    const RkReal x = 0.1 * i;
    sequence.add(standardFrame("frame " + std::to_string(i),
                               {placementAt(x, 0, 0), placementAt(x, 1, 0), placementAt(x, 0, 1),
                                placementAt(x, 1, 1), placementAt(x, -1, 0), placementAt(x, 0, -1)},
                               lasting(0.5 + i)));
  }
  return sequence;
}

// One move construction and one move assignment back per iteration.
void BM_MoveTenFrameSixOffsetSequence(benchmark::State& bench) {
  RkManipulationSequence sequence = tenFramesOfSixOffsets();
  for (auto _ : bench) {
    RkManipulationSequence moved(std::move(sequence));
    benchmark::DoNotOptimize(&moved);
    sequence = std::move(moved);
    benchmark::DoNotOptimize(&sequence);
  }
  bench.counters["sizeof_constant_offset"] = sizeof(RkConstantManipulationOffset);
}
BENCHMARK(BM_MoveTenFrameSixOffsetSequence);

// For contrast: one copy construction and one copy assignment per iteration.
void BM_CopyTenFrameSixOffsetSequence(benchmark::State& bench) {
  const RkManipulationSequence sequence = tenFramesOfSixOffsets();
  RkManipulationSequence assigned;
  for (auto _ : bench) {
    RkManipulationSequence copied(sequence);
    benchmark::DoNotOptimize(&copied);
    assigned = sequence;
    benchmark::DoNotOptimize(&assigned);
  }
}
BENCHMARK(BM_CopyTenFrameSixOffsetSequence);

void BM_ManagerUpdateTenFrameSequence(benchmark::State& bench) {
  const RkManipulationSequenceManager manager = tenFrameTask();
  RkManipulationSequenceManagerState state;
  manager.init(state);
  RkManipulationUpdateParams params;
  RkReal time = 0.0;
  manager.update(time, params, state);
  for (auto _ : bench) {
    time += 0.001;
    benchmark::DoNotOptimize(manager.update(time, params, state));
  }
}
BENCHMARK(BM_ManagerUpdateTenFrameSequence);

// Frames of 8.5 ms updated every millisecond: one ends on its ninth cycle, the next starts on the tenth.
// Reports the cycles and allocations per frame started, over the runs of the whole sequence that completed.
void BM_ManagerUpdateFrameStartEveryTenCycles(benchmark::State& bench) {
  constexpr int kFrames = 100;
  RkManipulationSequenceManager manager;
  manager.add("short", timedSequence(kFrames, 0.0085));
  manager.setSequenceOrder(orderOf({"short"}));
  RkManipulationSequenceManagerState state;
  RkManipulationUpdateParams params;
  manager.init(state);
  RkReal time = 0.0;
  long runAllocations = 0, runCycles = 0, allocations = 0, cycles = 0, frames = 0;
  for (auto _ : bench) {
    time += 0.001;
    ++runCycles;
    RkAllocationCounter::start();
    const RkManipulationStatus::Enum status = manager.update(time, params, state);
    runAllocations += RkAllocationCounter::stop();
    if (status == RkManipulationStatus::Failure) {
      bench.SkipWithError("the task failed");
      break;
    }
    if (status == RkManipulationStatus::Complete) {
      bench.PauseTiming();
      frames += kFrames;
      cycles += runCycles;
      allocations += runAllocations;
      runCycles = runAllocations = 0;
      manager.init(state);
      bench.ResumeTiming();
    }
  }
  bench.counters["cycles_per_frame"] = frames ? static_cast<double>(cycles) / frames : 0.0;
  bench.counters["allocs_per_frame_start"] = frames ? static_cast<double>(allocations) / frames : 0.0;
}
BENCHMARK(BM_ManagerUpdateFrameStartEveryTenCycles);

void BM_WriteThousandFrameTask(benchmark::State& bench) {
  RkManipulationSequenceManager manager;
  RkXmlReader::readString(thousandFrameDocument(), manager);
  std::size_t bytes = 0;
  for (auto _ : bench) {
    std::string document;
    RkXmlWriter::writeString(manager, document);
    bytes = document.size();
    benchmark::DoNotOptimize(document.data());
  }
  bench.SetBytesProcessed(static_cast<int64_t>(bench.iterations() * bytes));
}
BENCHMARK(BM_WriteThousandFrameTask)->Unit(benchmark::kMillisecond);

}  // namespace
