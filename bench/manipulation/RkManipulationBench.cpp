// The control cycle and task files: manager update over a 10-frame sequence (budget 100 ns, no allocation),
// reading a 1000-frame task (budget 1.7 ms, and at least half the speed of a bare xmlTextReader pass over the
// same bytes) and writing it (budget 100 MB/s); moving a 10-frame sequence of six offsets a frame, which
// steals rather than copies, against copying it.
#include <benchmark/benchmark.h>
#include <libxml/xmlreader.h>

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

void BM_ReadThousandFrameTask(benchmark::State& bench) {
  const std::string document = thousandFrameDocument();
  for (auto _ : bench) {
    RkManipulationSequenceManager manager;
    benchmark::DoNotOptimize(RkXmlReader::readString(document, manager));
  }
  bench.SetBytesProcessed(static_cast<int64_t>(bench.iterations() * document.size()));
}
BENCHMARK(BM_ReadThousandFrameTask)->Unit(benchmark::kMillisecond);

void BM_BareTextReaderThousandFrameTask(benchmark::State& bench) {
  const std::string document = thousandFrameDocument();
  for (auto _ : bench) {
    xmlTextReaderPtr reader = xmlReaderForMemory(document.data(), static_cast<int>(document.size()),
                                                 "bench.xml", nullptr, XML_PARSE_NONET);
    while (xmlTextReaderRead(reader) == 1) {
    }
    xmlFreeTextReader(reader);
  }
  bench.SetBytesProcessed(static_cast<int64_t>(bench.iterations() * document.size()));
}
BENCHMARK(BM_BareTextReaderThousandFrameTask)->Unit(benchmark::kMillisecond);

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
