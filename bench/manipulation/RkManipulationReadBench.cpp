// Reading task files of 10, 1000 and 10,000 frames (each a tag, a constant goal placement and a time
// duration, as the library writes them) beside bare libxml2 SAX2 passes over the same bytes, in one run.
// Budgets: 1000 frames in 2.2 ms, 10,000 in 22 ms. The reads report their C++ allocations per frame.
#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <map>
#include <string>

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
    if (!read) bench.SkipWithError("the task was refused");
    benchmark::DoNotOptimize(manager);
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

void countElement(void* context, const xmlChar*, const xmlChar*, const xmlChar*, int, const xmlChar**, int,
                  int, const xmlChar**) {
  ++*static_cast<long*>(static_cast<xmlParserCtxtPtr>(context)->_private);
}
void ignoreText(void*, const xmlChar*, int) {}

// A SAX2 handler that builds nothing and counts elements.
xmlSAXHandler countingHandler() {
  xmlSAXHandler handler{};
  handler.initialized = XML_SAX2_MAGIC;
  handler.startElementNs = &countElement;
  handler.characters = &ignoreText;
  handler.ignorableWhitespace = &ignoreText;
  return handler;
}

// libxml2 alone over the whole buffer at once: the least any reader on it can cost.
void BM_BareSax2Pass(benchmark::State& bench) {
  const std::string& document = taskDocument(static_cast<int>(bench.range(0)));
  xmlSAXHandler handler = countingHandler();
  for (auto _ : bench) {
    long elements = 0;
    xmlParserCtxtPtr context = xmlCreateMemoryParserCtxt(document.data(), static_cast<int>(document.size()));
    xmlFree(context->sax);
    context->sax = &handler;
    context->_private = &elements;
    xmlCtxtUseOptions(context, XML_PARSE_NONET);
    xmlParseDocument(context);
    if (!context->wellFormed) bench.SkipWithError("libxml2 refused the document");
    context->sax = nullptr;
    xmlFreeParserCtxt(context);
    benchmark::DoNotOptimize(elements);
  }
  bench.SetBytesProcessed(static_cast<int64_t>(bench.iterations() * document.size()));
}
BENCHMARK(BM_BareSax2Pass)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

// libxml2 alone, fed in 512-byte chunks to its push parser, as a streaming reader feeds it.
void BM_BareSax2PushPass(benchmark::State& bench) {
  const std::string& document = taskDocument(static_cast<int>(bench.range(0)));
  xmlSAXHandler handler = countingHandler();
  for (auto _ : bench) {
    long elements = 0;
    xmlParserCtxtPtr context = xmlCreatePushParserCtxt(&handler, nullptr, document.data(), 4, nullptr);
    context->_private = &elements;
    xmlCtxtUseOptions(context, XML_PARSE_NONET);
    std::size_t at = 4;
    while (at < document.size()) {
      const std::size_t size = std::min<std::size_t>(512, document.size() - at);
      xmlParseChunk(context, document.data() + at, static_cast<int>(size), 0);
      at += size;
    }
    xmlParseChunk(context, nullptr, 0, 1);
    if (!context->wellFormed) bench.SkipWithError("libxml2 refused the document");
    xmlFreeParserCtxt(context);
    benchmark::DoNotOptimize(elements);
  }
  bench.SetBytesProcessed(static_cast<int64_t>(bench.iterations() * document.size()));
}
BENCHMARK(BM_BareSax2PushPass)->Arg(10)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
