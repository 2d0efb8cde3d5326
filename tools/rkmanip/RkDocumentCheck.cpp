#include "tools/rkmanip/RkDocumentCheck.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "foundation/RkPrint.h"
#include "sequencing/RkPoseSet.h"
#include "tools/rkmanip/RkSourceComparison.h"
#include "tools/rkmanip/RkTaskChecks.h"
#include "tools/rkmanip/RkVocabulary.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlTokens.h"
#include "xml/RkXmlWriter.h"

namespace RkDocumentCheck {
namespace {

thread_local RkToken t_rootTag;

// The vocabulary's object for a root tag. A known name in another namespace gets the object of the
// vocabulary's namespace, so that the reader names the namespace that was expected.
RkXmlObject* documentObject(const RkToken& tag) {
  t_rootTag = tag;
  if (RkXmlObject* object = RkVocabulary::newDocumentObject(tag)) return object;
  return RkVocabulary::newDocumentObject(RkXml::qualifiedToken(std::string(tag.localName()).c_str()));
}

void discard(int, const char*, const char*, void*) {}

bool fileText(const std::string& path, std::string& text) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream content;
  if (!in || !(content << in.rdbuf()) || content.str().size() > RkXmlReader::kMaxDocumentBytes) return false;
  text = content.str();
  return true;
}

// Reads the document with every reader message collected; a document the reader reads but calls unsound
// is read once more into an object of the same class, which keeps what was read.
std::unique_ptr<RkXmlObject> readObject(const std::string& path, RkDiagnostics& out) {
  RkDiagnostics first;
  bool refused = false;
  t_rootTag = RkToken();
  std::unique_ptr<RkXmlObject> object;
  {
    RkDiagnostics::Capture capture(first, path);
    object.reset(RkXmlReader::readFileAny(path, &documentObject));
    refused = capture.refusal();
  }
  if (object || refused || t_rootTag.empty()) {
    out.add(first);
    return object;
  }
  object.reset(RkVocabulary::newDocumentObject(t_rootTag));
  if (!object) {
    out.add(first);
    return object;
  }
  RkDiagnostics::Capture capture(out, path);
  RkXmlReader::readFile(path, *object);
  return object;
}

// What was read writes, reads back and writes again to the same text.
bool roundTrips(const RkXmlObject& object, const std::string& written, const std::string& path) {
  const Rk::Print::ThreadSink quiet(&discard, nullptr);
  std::unique_ptr<RkXmlObject> again(object.newObject());
  std::string rewritten;
  return RkXmlReader::readString(written, *again, path) && RkXmlWriter::writeString(*again, rewritten) &&
         rewritten == written;
}

}  // namespace

std::unique_ptr<RkXmlObject> read(const std::string& path, const RobotSource& robot,
                                  const std::string& robotName, RkDiagnostics& out, const RkPoseSource& poses,
                                  const std::string& actionPath) {
  std::unique_ptr<RkXmlObject> object = readObject(path, out);
  if (!object) return object;
  std::string written, source, error;
  if (!RkXmlWriter::writeString(*object, written)) {
    out.error(path, 0, "what was read cannot be written back, so it cannot be checked; report this");
    return object;
  }
  if (!roundTrips(*object, written, path)) {
    out.error(
        path, 0,
        "what was read does not write, read back and write again to the same text, so a saved copy would "
        "differ; report this");
  }
  RkSourceComparison comparison;
  if (!fileText(path, source) || !comparison.compare(source, written, error)) {
    out.error(path, 0,
              (error.empty() ? "the file changed while it was read" : error) + ", so it cannot be checked");
    return object;
  }
  for (const RkSourceComparison::Difference& difference : comparison.differences()) {
    const bool told = std::any_of(
        difference.toldByReaderSaying.begin(), difference.toldByReaderSaying.end(),
        [&](const std::string& saying) { return out.hasLibraryMessageAt(path, difference.line, saying); });
    if (!told) out.error(path, difference.line, difference.text);
  }
  const RkSimulatedTaskRunner* arm = RkTaskChecks::needsRobot(*object) ? robot() : nullptr;
  RkTaskChecks(path, arm, robotName, out, poses, actionPath).check(*object, comparison.root());
  return object;
}

std::unique_ptr<RkPoseSet> readPoseSet(RkPoseSource& source, RkDiagnostics& out, std::string& problem) {
  if (source.path.empty()) return nullptr;
  std::unique_ptr<RkXmlObject> document = read(
      source.path, []() { return nullptr; }, "", out);
  if (!document) {
    problem = "cannot be read";
    return nullptr;
  }
  if (!dynamic_cast<RkPoseSet*>(document.get())) {
    problem = "holds a <" + std::string(document->token().localName()) +
              ">, which is not a pose set; --poses takes a poseSet document";
    return nullptr;
  }
  source.poses = static_cast<RkPoseSet*>(document.get());
  return std::unique_ptr<RkPoseSet>(static_cast<RkPoseSet*>(document.release()));
}

}  // namespace RkDocumentCheck
