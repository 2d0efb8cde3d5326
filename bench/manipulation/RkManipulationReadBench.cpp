// Reading task files of 10, 1000 and 10,000 frames (each a tag, a constant goal placement and a time
// duration, as the library writes them) beside bare libxml2 SAX2 passes over the same bytes, in one run.
// Budgets: 1000 frames in 2.2 ms, 10,000 in 22 ms. The reads report their C++ allocations per frame; the
// destruction of what was read is not timed.
#include <benchmark/benchmark.h>

#include <map>
#include <string>

#include "../platform/RkBareSax2.h"
#include "manipulation/support/RkManipulationTestTasks.h"

namespace {

const std::string& taskDocument(int frames) {
  static std::map<int, std::string> documents;
  std::string& document = documents[frames];
  if (document.empty()) {
    RkManipulationSequenceManager manager;
    manager.add("long", timedSequence(frames, 0.5));
    manager.setSequenceOrder(orderOf({"long"}));
    RkXmlWriter::writeString(manager, document);
  }
  return document;
}

void BM_ReadTask(benchmark::State& bench) {
  const int frames = static_cast<int>(bench.range(0));
  const std::string& document = taskDocument(frames);
  long allocations = 0;
  for (auto _ : bench) {
    auto* manager = new RkManipulationSequenceManager;
    RkAllocationCounter::start();
    const RkBoolean read = RkXmlReader::readString(document, *manager);
    allocations += RkAllocationCounter::stop();
    benchmark::DoNotOptimize(manager);
    if (!read) {
      bench.SkipWithError("the task was refused");
      delete manager;
      break;
    }
    // Destroying the task is not reading it.
    bench.PauseTiming();
    delete manager;
    bench.ResumeTiming();
  }
  bench.SetBytesProcessed(static_cast<int64_t>(bench.iterations() * document.size()));
  bench.counters["allocs_per_frame"] =
      static_cast<double>(allocations) / static_cast<double>(bench.iterations()) / frames;
  bench.counters["document_kB"] = static_cast<double>(document.size()) / 1e3;
}
BENCHMARK(BM_ReadTask)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

// libxml2 alone over the whole buffer at once: the least any reader on it can cost.
void BM_BareSax2Pass(benchmark::State& bench) {
  const std::string& document = taskDocument(static_cast<int>(bench.range(0)));
  for (auto _ : bench) {
    if (RkBareSax2::pass(document) < 0) bench.SkipWithError("libxml2 refused the document");
  }
  bench.SetBytesProcessed(static_cast<int64_t>(bench.iterations() * document.size()));
}
BENCHMARK(BM_BareSax2Pass)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

// libxml2 alone through its push parser, in pieces of 16 KiB (as the reader feeds a sound document) or of
// 512 bytes (as a reader keeping just ahead of its walk would).
void BM_BareSax2PushPass(benchmark::State& bench) {
  const std::string& document = taskDocument(static_cast<int>(bench.range(0)));
  for (auto _ : bench) {
    if (RkBareSax2::pushPass(document, static_cast<std::size_t>(bench.range(1))) < 0) {
      bench.SkipWithError("libxml2 refused the document");
    }
  }
  bench.SetBytesProcessed(static_cast<int64_t>(bench.iterations() * document.size()));
}
BENCHMARK(BM_BareSax2PushPass)
    ->Args({10, 16384})
    ->Args({1000, 16384})
    ->Args({1000, 512})
    ->Args({10000, 16384})
    ->Unit(benchmark::kMicrosecond);

}  // namespace
