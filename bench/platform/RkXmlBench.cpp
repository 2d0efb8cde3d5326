// Throughput of the XML framework on a large holder document (at least 10 MB), against bare libxml2
// text-reader and SAX2 passes over the same bytes, and the time taken to refuse each hostile document.
#include <benchmark/benchmark.h>
#include <libxml/xmlreader.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "RkBareSax2.h"
#include "foundation/RkPrint.h"
#include "platform/xml/RkXmlTestObjects.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

namespace {

const std::string kNamespace = "http://rkmanipulation.org/namespace/ct#";
const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
const std::string kRootOpen = "<testHolder xmlns=\"" + kNamespace + "\">";
const std::string kRootClose = "</testHolder>\n";

// About 1.3 kB a sample entry.
constexpr RkU32 kLargeEntries = 9000;

const RkTestHolder& largeHolder() {
  static const RkTestHolder holder = RkTestHolder::sample(kLargeEntries);
  return holder;
}

const std::string& largeDocument() {
  static const std::string document = [] {
    std::string written;
    RkXmlWriter::writeString(largeHolder(), written);
    return written;
  }();
  return document;
}

// The refused documents print a line each time; benchmarks keep quiet.
struct Quiet {
  Quiet() { Rk::Print::setVerbosity(-1); }
};

void readHolder(benchmark::State& state, const std::string& document, bool expected) {
  static Quiet quiet;
  for (auto _ : state) {
    RkTestHolder holder;
    const RkBoolean read = RkXmlReader::readString(document, holder, "bench.xml");
    if (read != expected)
      state.SkipWithError(expected ? "the document was refused" : "the document was read");
    benchmark::DoNotOptimize(holder);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(document.size()));
  state.counters["document_MB"] = static_cast<double>(document.size()) / 1e6;
}

void BM_ReadLargeHolder(benchmark::State& state) {
  readHolder(state, largeDocument(), true);
}

void BM_WriteLargeHolder(benchmark::State& state) {
  const RkTestHolder& holder = largeHolder();
  std::size_t bytes = 0;
  for (auto _ : state) {
    std::string document;
    RkXmlWriter::writeString(holder, document);
    bytes = document.size();
    benchmark::DoNotOptimize(document);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
  state.counters["document_MB"] = static_cast<double>(bytes) / 1e6;
}

// libxml2 alone: every node of the same bytes visited, nothing built.
void BM_BareTextReaderPass(benchmark::State& state) {
  const std::string& document = largeDocument();
  for (auto _ : state) {
    xmlTextReaderPtr reader = xmlReaderForMemory(document.data(), static_cast<int>(document.size()),
                                                 "bench.xml", nullptr, XML_PARSE_NONET | XML_PARSE_BIG_LINES);
    int nodes = 0;
    int result = 0;
    while ((result = xmlTextReaderRead(reader)) == 1) ++nodes;
    xmlFreeTextReader(reader);
    if (result != 0) state.SkipWithError("libxml2 refused the document");
    benchmark::DoNotOptimize(nodes);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(document.size()));
}

// libxml2's SAX2 parser over the whole buffer, building nothing.
void BM_BareSax2Pass(benchmark::State& state) {
  const std::string& document = largeDocument();
  for (auto _ : state) {
    if (RkBareSax2::pass(document) < 0) state.SkipWithError("libxml2 refused the document");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(document.size()));
}

std::string billionLaughs() {
  std::string document = kDeclaration + "<!DOCTYPE testHolder [\n  <!ENTITY lol0 \"lol\">\n";
  for (int level = 1; level <= 9; ++level) {
    document += "  <!ENTITY lol" + std::to_string(level) + " \"";
    for (int k = 0; k < 10; ++k) document += "&lol" + std::to_string(level - 1) + ";";
    document += "\">\n";
  }
  return document + "]>\n" + kRootOpen + "<title>&lol9;</title>" + kRootClose;
}

std::string hugeTextNode() {
  return kDeclaration + kRootOpen + "\n<title>" + std::string(60u << 20, 'x') + "</title>" + kRootClose;
}

std::string deeplyNested() {
  std::string document = kDeclaration + kRootOpen + "\n";
  for (int i = 0; i < 5000; ++i) document += "<a>\n";
  for (int i = 0; i < 5000; ++i) document += "</a>";
  return document + kRootClose;
}

std::string truncated(const std::string& document) {
  return document.substr(0, document.size() / 2);
}

void BM_RefuseBillionLaughs(benchmark::State& state) {
  static const std::string document = billionLaughs();
  readHolder(state, document, false);
}

void BM_RefuseHugeTextNode(benchmark::State& state) {
  static const std::string document = hugeTextNode();
  readHolder(state, document, false);
}

// The same 60 MB document in a temporary file, removed at exit.
struct HugeFile {
  HugeFile() {
    std::string directory = (std::filesystem::temp_directory_path() / "rkXmlBenchXXXXXX").string();
    if (!mkdtemp(directory.data())) return;
    path = directory + "/huge.xml";
    const std::string document = hugeTextNode();
    std::ofstream(path, std::ios::binary) << document;
    size = document.size();
  }
  ~HugeFile() {
    std::error_code ignored;
    if (!path.empty()) std::filesystem::remove_all(std::filesystem::path(path).parent_path(), ignored);
  }
  std::string path;
  std::size_t size = 0;
};

// readFile loads the whole file before refusing it.
void BM_RefuseHugeTextNodeFile(benchmark::State& state) {
  static Quiet quiet;
  static const HugeFile file;
  for (auto _ : state) {
    RkTestHolder holder;
    if (RkXmlReader::readFile(file.path, holder)) state.SkipWithError("the document was read");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(file.size));
}

void BM_RefuseDeeplyNested(benchmark::State& state) {
  static const std::string document = deeplyNested();
  readHolder(state, document, false);
}

// A small written holder cut in half, as the tests use.
void BM_RefuseTruncated(benchmark::State& state) {
  static const std::string document = [] {
    std::string written;
    RkXmlWriter::writeString(RkTestHolder::sample(2), written);
    return truncated(written);
  }();
  readHolder(state, document, false);
}

// The large document cut in half: the parser finds the cut only at the end, so this costs about as much
// as reading the half that is there.
void BM_RefuseTruncatedLarge(benchmark::State& state) {
  static const std::string document = truncated(largeDocument());
  readHolder(state, document, false);
}

}  // namespace

BENCHMARK(BM_ReadLargeHolder)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteLargeHolder)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareTextReaderPass)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BareSax2Pass)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefuseBillionLaughs)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RefuseHugeTextNode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefuseHugeTextNodeFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefuseDeeplyNested)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RefuseTruncated)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_RefuseTruncatedLarge)->Unit(benchmark::kMillisecond);
