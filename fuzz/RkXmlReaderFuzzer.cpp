// Reads arbitrary bytes as a holder document. A document that reads must write, read back and compare
// equal; anything else aborts. Sanitizers catch memory and undefined-behaviour faults on the way.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "foundation/RkPrint.h"
#include "platform/xml/RkXmlTestObjects.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  Rk::Print::setVerbosity(-1);
  // A document may name plug-in libraries; none is ever loaded here.
  unsetenv("RK_PLUGIN_PATH");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  RkTestHolder holder;
  if (!RkXmlReader::readString(input, holder, "fuzz.xml")) return 0;

  std::string written;
  if (!RkXmlWriter::writeString(holder, written)) {
    std::fprintf(stderr, "a holder that was read could not be written\n");
    std::abort();
  }
  RkTestHolder again;
  if (!RkXmlReader::readString(written, again, "rewritten.xml")) {
    std::fprintf(stderr, "the written holder does not read back:\n%s\n", written.c_str());
    std::abort();
  }
  if (!(again == holder) || !again.equality(&holder)) {
    std::string rewritten;
    RkXmlWriter::writeString(again, rewritten);
    std::fprintf(stderr, "the holder read back differs:\n%s\n--- read back as:\n%s\n", written.c_str(),
                 rewritten.c_str());
    std::abort();
  }
  return 0;
}
