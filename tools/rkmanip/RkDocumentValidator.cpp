#include "tools/rkmanip/RkDocumentValidator.h"

#include <memory>

#include "foundation/RkPrint.h"
#include "tools/rkmanip/RkVocabulary.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

namespace RkDocumentValidator {
namespace {

// Counts and shows every warning or error line printed while a document is read.
struct ProblemSink {
  std::ostream& out;
  int problems = 0;
  static void receive(int level, const char*, const char* text, void* context) {
    auto* sink = static_cast<ProblemSink*>(context);
    if (level > 4) return;
    ++sink->problems;
    sink->out << text;
    const std::string line(text);
    if (line.empty() || line.back() != '\n') sink->out << '\n';
  }
};

}  // namespace

int validate(const std::string& path, std::ostream& out) {
  ProblemSink sink{out};
  const int verbosity = Rk::Print::verbosity();
  Rk::Print::setSink(&ProblemSink::receive, &sink);
  Rk::Print::setVerbosity(4);
  std::unique_ptr<RkXmlObject> object(RkXmlReader::readFileAny(path, &RkVocabulary::newDocumentObject));
  int status = 0;
  if (!object) {
    status = 2;
  } else {
    std::string written;
    std::unique_ptr<RkXmlObject> reread(object->newObject());
    if (!RkXmlWriter::writeString(*object, written) ||
        !RkXmlReader::readString(written, *reread, path + " (rewritten)") ||
        !reread->equality(object.get())) {
      out << path << ": what was read does not write and read back to the same object\n";
      ++sink.problems;
    }
    status = sink.problems ? 1 : 0;
  }
  Rk::Print::setSink(nullptr, nullptr);
  Rk::Print::setVerbosity(verbosity);
  if (status == 0) {
    out << path << ": valid " << object->token().localName() << ", round trip exact\n";
  } else if (status == 1) {
    out << path << ": " << sink.problems << (sink.problems == 1 ? " problem\n" : " problems\n");
  }
  return status;
}

}  // namespace RkDocumentValidator
