#include "xml/RkXmlReader.h"

#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/xmlreader.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <mutex>

#include "foundation/RkPrint.h"
#include "xml/RkXmlObject.h"

namespace {

xmlParserInputPtr denyExternalEntity(const char*, const char*, xmlParserCtxtPtr) {
  return nullptr;
}

void silentGenericError(void*, const char*, ...) {}

// Process-wide libxml2 set-up: initialised once, no entity ever loaded from outside.
void setUpLibxml() {
  static std::once_flag once;
  std::call_once(once, [] {
    xmlInitParser();
    xmlSetExternalEntityLoader(&denyExternalEntity);
  });
  // Error handlers are per thread in libxml2.
  thread_local bool threadReady = false;
  if (!threadReady) {
    xmlSetGenericErrorFunc(nullptr, &silentGenericError);
    threadReady = true;
  }
}

int lineAt(std::string_view text, std::size_t offset) {
  int line = 1;
  const char* begin = text.data();
  const char* end = begin + std::min(offset, text.size());
  while ((begin = static_cast<const char*>(std::memchr(begin, '\n', end - begin))) != nullptr) {
    ++line;
    ++begin;
  }
  return line;
}

// Finds what must be refused before libxml2 sees the bytes, since its reader parses ahead: a document
// type declaration (entities) and runs of text or markup beyond the cap. Returns the reason, or null.
const char* prescan(std::string_view text, std::size_t& offset) {
  std::size_t at = 0;
  if (text.substr(0, 3) == "\xEF\xBB\xBF") at = 3;
  while (at < text.size()) {
    const char c = text[at];
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
      ++at;
    } else if (text.compare(at, 2, "<?") == 0) {
      const std::size_t end = text.find("?>", at);
      if (end == std::string_view::npos) break;
      at = end + 2;
    } else if (text.compare(at, 4, "<!--") == 0) {
      const std::size_t end = text.find("-->", at);
      if (end == std::string_view::npos) break;
      at = end + 3;
    } else {
      if (text.compare(at, 9, "<!DOCTYPE") == 0) {
        offset = at;
        return "document type declarations are not accepted";
      }
      break;
    }
  }
  std::size_t previous = 0;
  const char* data = text.data();
  while (previous < text.size()) {
    const void* next = std::memchr(data + previous + 1, '<', text.size() - previous - 1);
    const std::size_t position = next ? static_cast<const char*>(next) - data : text.size();
    if (position - previous > RkXmlReader::kMaxTextBytes) {
      offset = previous;
      return "text or markup longer than 8 MiB";
    }
    previous = position;
  }
  return nullptr;
}

// The token text of a name: the namespace URI and the local name joined when the URI ends in '#' (the
// toolkit's form), "{uri}local" otherwise, so that no foreign name can spell a toolkit one.
std::string qualifiedName(const xmlChar* uri, const xmlChar* local) {
  std::string text = uri ? reinterpret_cast<const char*>(uri) : "";
  if (!text.empty() && text.back() != '#') text = "{" + text + "}";
  text += local ? reinterpret_cast<const char*>(local) : "";
  return text;
}

}  // namespace

RkXmlReader::RkXmlReader(std::string_view document, const std::string& name, ObjectFactory fallback)
    : m_reader(nullptr),
      m_fileName(name),
      m_fallback(fallback),
      m_kind(RkXmlNodeKind::EndOfDocument),
      m_depth(0),
      m_tagKnown(false),
      m_attributesKnown(false),
      m_dataMode(false),
      m_dataPosition(0),
      m_dataItemsTaken(0),
      m_failed(false),
      m_failedLine(0) {
  setUpLibxml();
  std::size_t offset = 0;
  if (document.empty()) {
    fail(1, "the document is empty");
  } else if (document.size() > kMaxDocumentBytes) {
    fail(1, "document larger than 64 MiB");
  } else if (const char* reason = prescan(document, offset)) {
    fail(lineAt(document, offset), reason);
  } else {
    const int options = XML_PARSE_NONET | XML_PARSE_BIG_LINES | XML_PARSE_NOWARNING;
    m_reader = xmlReaderForMemory(document.data(), static_cast<int>(document.size()), m_fileName.c_str(),
                                  nullptr, options);
    if (!m_reader) {
      fail(1, "the parser could not be created");
    } else {
      xmlTextReaderSetStructuredErrorHandler(m_reader, &RkXmlReader::structuredError, this);
    }
  }
}

RkXmlReader::~RkXmlReader() {
  if (m_reader) xmlFreeTextReader(m_reader);
}

void RkXmlReader::structuredError(void* context, xmlErrorPtr error) {
  if (!error || error->level == XML_ERR_WARNING) return;
  std::string message = error->message ? error->message : "malformed document";
  while (!message.empty() && (message.back() == '\n' || message.back() == ' ')) message.pop_back();
  // Some libxml2 messages run over two lines; a refusal is reported on one.
  for (char& c : message) {
    if (c == '\n') c = ' ';
  }
  static_cast<RkXmlReader*>(context)->fail(error->line, message);
}

void RkXmlReader::fail(int line, const std::string& reason) {
  if (m_failed) return;
  m_failed = true;
  m_failedLine = line;
  m_failure = reason;
  m_kind = RkXmlNodeKind::Error;
}

RkXmlNodeKind RkXmlReader::advance() {
  m_tagKnown = false;
  m_attributesKnown = false;
  if (m_failed) return m_kind = RkXmlNodeKind::Error;
  if (!m_reader) return m_kind = RkXmlNodeKind::EndOfDocument;
  while (true) {
    const int result = xmlTextReaderRead(m_reader);
    if (m_failed) return m_kind = RkXmlNodeKind::Error;
    if (result < 0) {
      fail(lineNumber(), "malformed document");
      return m_kind = RkXmlNodeKind::Error;
    }
    if (result == 0) return m_kind = RkXmlNodeKind::EndOfDocument;
    m_depth = xmlTextReaderDepth(m_reader);
    switch (xmlTextReaderNodeType(m_reader)) {
      case XML_READER_TYPE_ELEMENT:
        if (m_depth > kMaxDepth) {
          fail(lineNumber(), "elements nested deeper than 128 levels");
          return m_kind = RkXmlNodeKind::Error;
        }
        return m_kind = xmlTextReaderIsEmptyElement(m_reader) ? RkXmlNodeKind::EmptyElement
                                                              : RkXmlNodeKind::StartElement;
      case XML_READER_TYPE_END_ELEMENT:
        return m_kind = RkXmlNodeKind::EndElement;
      case XML_READER_TYPE_TEXT:
      case XML_READER_TYPE_CDATA:
        return m_kind = RkXmlNodeKind::Text;
      case XML_READER_TYPE_DOCUMENT_TYPE:
      case XML_READER_TYPE_ENTITY_REFERENCE:
        fail(lineNumber(), "entities are not accepted");
        return m_kind = RkXmlNodeKind::Error;
      default:
        break;  // comments, processing instructions, white space
    }
  }
}

const RkToken& RkXmlReader::tag() {
  if (m_tagKnown) return m_tag;
  m_tagKnown = true;
  m_tag = RkToken();
  if (!m_reader || (m_kind != RkXmlNodeKind::StartElement && m_kind != RkXmlNodeKind::EmptyElement &&
                    m_kind != RkXmlNodeKind::EndElement)) {
    return m_tag;
  }
  // libxml2 interns names per document, so the pair of pointers identifies the name.
  const xmlChar* uri = xmlTextReaderConstNamespaceUri(m_reader);
  const xmlChar* local = xmlTextReaderConstLocalName(m_reader);
  char key[2 * sizeof(void*)];
  std::memcpy(key, &uri, sizeof(void*));
  std::memcpy(key + sizeof(void*), &local, sizeof(void*));
  const std::string_view keyView(key, sizeof key);
  auto found = m_tagCache.find(keyView);
  if (found != m_tagCache.end()) return m_tag = found->second;
  m_tag = RkToken(qualifiedName(uri, local));
  m_tagCacheKeys.emplace_back(keyView);
  m_tagCache.emplace(std::string_view(m_tagCacheKeys.back()), m_tag);
  return m_tag;
}

void RkXmlReader::collectAttributes() {
  if (m_attributesKnown) return;
  m_attributesKnown = true;
  m_attributeNames.clear();
  m_attributeValues.clear();
  if (!m_reader || (m_kind != RkXmlNodeKind::StartElement && m_kind != RkXmlNodeKind::EmptyElement)) return;
  if (xmlTextReaderHasAttributes(m_reader) != 1) return;
  while (xmlTextReaderMoveToNextAttribute(m_reader) == 1) {
    if (xmlTextReaderIsNamespaceDecl(m_reader) == 1) continue;
    const xmlChar* uri = xmlTextReaderConstNamespaceUri(m_reader);
    const xmlChar* local = xmlTextReaderConstLocalName(m_reader);
    const xmlChar* value = xmlTextReaderConstValue(m_reader);
    m_attributeNames.emplace_back(qualifiedName(uri, local));
    m_attributeValues.emplace_back(value ? reinterpret_cast<const char*>(value) : "");
  }
  xmlTextReaderMoveToElement(m_reader);
}

RkU32 RkXmlReader::attributeCount() {
  collectAttributes();
  return static_cast<RkU32>(m_attributeNames.size());
}

const RkToken& RkXmlReader::attributeName(RkU32 index) {
  collectAttributes();
  static const RkToken none;
  return index < m_attributeNames.size() ? m_attributeNames[index] : none;
}

const std::string& RkXmlReader::attributeValue(RkU32 index) {
  collectAttributes();
  static const std::string none;
  return index < m_attributeValues.size() ? m_attributeValues[index] : none;
}

RkBoolean RkXmlReader::readElementText(std::string& text) {
  text.clear();
  if (m_kind == RkXmlNodeKind::EmptyElement) return true;
  if (m_kind != RkXmlNodeKind::StartElement) return false;
  const int elementDepth = m_depth;
  RkBoolean clean = true;
  while (true) {
    const RkXmlNodeKind kind = advance();
    if (kind == RkXmlNodeKind::Text) {
      const xmlChar* value = xmlTextReaderConstValue(m_reader);
      if (value) text += reinterpret_cast<const char*>(value);
      // Pieces (text, CDATA sections, character references) are held to the same cap as one run.
      if (text.size() > kMaxTextBytes) {
        fail(lineNumber(), "text longer than 8 MiB");
        text.clear();
        return false;
      }
    } else if (kind == RkXmlNodeKind::StartElement || kind == RkXmlNodeKind::EmptyElement) {
      contentError("unexpected element \"%s\" inside a value", std::string(tag().localName()).c_str());
      clean = false;
      finishElement(m_depth);
    } else if (kind == RkXmlNodeKind::EndElement && m_depth == elementDepth) {
      return clean;
    } else {
      return false;
    }
  }
}

RkBoolean RkXmlReader::enterDataMode() {
  if (!readElementText(m_data)) return false;
  m_dataPosition = 0;
  m_dataMode = true;
  if (!moreData()) {
    m_dataMode = false;
    return false;
  }
  return true;
}

namespace {
bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}
}  // namespace

RkBoolean RkXmlReader::moreData() {
  if (!m_dataMode) return false;
  while (m_dataPosition < m_data.size() && isSpace(m_data[m_dataPosition])) ++m_dataPosition;
  return m_dataPosition < m_data.size();
}

std::string_view RkXmlReader::nextDataItem() {
  if (!moreData()) return std::string_view();
  const std::size_t begin = m_dataPosition;
  std::size_t at = begin;
  if (m_data[at] == '"') {
    // A quoted item runs to the closing quote that is not escaped.
    ++at;
    while (at < m_data.size() && m_data[at] != '"') at += m_data[at] == '\\' ? 2 : 1;
    at = std::min(at + 1, m_data.size());
  }
  while (at < m_data.size() && !isSpace(m_data[at])) ++at;
  m_dataPosition = at;
  ++m_dataItemsTaken;
  return std::string_view(m_data).substr(begin, at - begin);
}

void RkXmlReader::finishElement(int elementDepth) {
  while (true) {
    if (m_kind == RkXmlNodeKind::Error || m_kind == RkXmlNodeKind::EndOfDocument) return;
    if (m_depth < elementDepth) return;
    if (m_depth == elementDepth &&
        (m_kind == RkXmlNodeKind::EndElement || m_kind == RkXmlNodeKind::EmptyElement)) {
      return;
    }
    advance();
  }
}

int RkXmlReader::lineNumber() const {
  if (!m_reader) return m_failedLine;
  xmlNodePtr node = xmlTextReaderCurrentNode(m_reader);
  const long line = node ? xmlGetLineNo(node) : -1;
  return line > 0 ? static_cast<int>(line) : xmlTextReaderGetParserLineNumber(m_reader);
}

void RkXmlReader::contentError(const char* format, ...) {
  if (m_failed) return;
  char reason[512];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(reason, sizeof reason, format, arguments);
  va_end(arguments);
  Rk::Print::write(4, "RkXmlReader::read error: %s:%d: %s\n", m_fileName.c_str(), lineNumber(), reason);
}

namespace {
// What a document prints while it is read, held back: a document that proves malformed later prints only
// its refusal, a sound one prints everything in order.
struct HeldLines {
  struct Line {
    int level;
    const char* origin;
    std::string text;
    int sourceLine;
  };
  const RkXmlReader* reader;
  std::vector<Line> lines;
  static void receive(int level, const char* origin, const char* text, void* context) {
    HeldLines* held = static_cast<HeldLines*>(context);
    held->lines.push_back({level, origin, text, held->reader->lineNumber()});
  }
};

// Where the message being replayed arose; see RkXmlReader::replayLine.
thread_local const std::string* t_replayFileName = nullptr;
thread_local int t_replayLine = 0;
}  // namespace

const std::string& RkXmlReader::replayFileName() {
  static const std::string none;
  return t_replayFileName ? *t_replayFileName : none;
}

int RkXmlReader::replayLine() {
  return t_replayLine;
}

RkBoolean RkXmlReader::readRoot(RkXmlReader& reader, RkXmlObject* object, ObjectFactory factory,
                                RkXmlObject** made) {
  HeldLines held{&reader, {}};
  const RkBoolean result = readRootHeld(reader, object, factory, made, &held);
  if (reader.failed()) {
    Rk::Print::write(4, "RkXmlReader::read error: %s:%d: %s\n", reader.m_fileName.c_str(),
                     reader.m_failedLine, reader.m_failure.c_str());
    return false;
  }
  const std::string* const outerFileName = t_replayFileName;
  const int outerLine = t_replayLine;
  t_replayFileName = &reader.m_fileName;
  for (const HeldLines::Line& line : held.lines) {
    t_replayLine = line.sourceLine;
    Rk::Print::writeFrom(line.origin, line.level, "%s", line.text.c_str());
  }
  t_replayFileName = outerFileName;
  t_replayLine = outerLine;
  return result;
}

RkBoolean RkXmlReader::readRootHeld(RkXmlReader& reader, RkXmlObject* object, ObjectFactory factory,
                                    RkXmlObject** made, void* heldLines) {
  const Rk::Print::ThreadSink hold(&HeldLines::receive, heldLines);
  RkBoolean result = false;
  const RkXmlNodeKind kind = reader.advance();
  if (kind == RkXmlNodeKind::StartElement || kind == RkXmlNodeKind::EmptyElement) {
    const RkToken& root = reader.tag();
    if (!object && factory) object = *made = factory(root);
    if (!object) {
      reader.fail(reader.lineNumber(), "unknown root element \"" + root.text() + "\"");
    } else if (root != object->token()) {
      std::string reason = "root element is \"" + std::string(root.localName()) + "\"";
      if (root.localName() == object->token().localName()) {
        reason += " in namespace \"" + std::string(root.namespaceUri()) + "\", expected namespace \"" +
                  std::string(object->token().namespaceUri()) + "\"";
      } else {
        reason += ", expected \"" + std::string(object->token().localName()) + "\"";
      }
      reader.fail(reader.lineNumber(), reason);
    } else {
      result = object->read(reader);
      reader.finishElement(0);
      // Draining the rest finds errors after the root, such as trailing garbage.
      while (reader.advance() != RkXmlNodeKind::EndOfDocument && !reader.failed()) {
      }
    }
  } else if (!reader.failed()) {
    reader.fail(reader.lineNumber(), "the document holds no element");
  }
  if (reader.failed()) {
    Rk::Print::write(4, "RkXmlReader::read error: %s:%d: %s\n", reader.m_fileName.c_str(),
                     reader.m_failedLine, reader.m_failure.c_str());
    return false;
  }
  return result;
}

RkBoolean RkXmlReader::readString(std::string_view document, RkXmlObject& object, const std::string& name,
                                  ObjectFactory fallback) {
  RkXmlReader reader(document, name, fallback);
  return readRoot(reader, &object, nullptr, nullptr);
}

namespace {
// A file mapped read-only: the prescan and the parser read the page cache directly, so refusing a huge
// file costs a scan, not a copy.
class MappedFile {
 public:
  explicit MappedFile(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
      m_reason = std::strerror(errno);
      return;
    }
    struct stat status;
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
      m_reason = "not a regular file";
    } else if (static_cast<std::size_t>(status.st_size) > RkXmlReader::kMaxDocumentBytes) {
      m_reason = "document larger than 64 MiB";
    } else if (status.st_size > 0) {
      void* mapped =
          mmap(nullptr, static_cast<std::size_t>(status.st_size), PROT_READ, MAP_PRIVATE, descriptor, 0);
      if (mapped == MAP_FAILED) {
        m_reason = std::strerror(errno);
      } else {
        m_data = static_cast<const char*>(mapped);
        m_size = static_cast<std::size_t>(status.st_size);
      }
    }
    ::close(descriptor);
    m_ok = m_reason.empty();
  }
  ~MappedFile() {
    if (m_data) munmap(const_cast<char*>(m_data), m_size);
  }
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  bool ok() const { return m_ok; }
  const std::string& reason() const { return m_reason; }
  std::string_view content() const { return m_data ? std::string_view(m_data, m_size) : std::string_view(); }

 private:
  const char* m_data = nullptr;
  std::size_t m_size = 0;
  bool m_ok = false;
  std::string m_reason;
};
}  // namespace

RkBoolean RkXmlReader::readFile(const std::string& path, RkXmlObject& object, ObjectFactory fallback) {
  const MappedFile file(path);
  if (!file.ok()) {
    Rk::Print::write(4, "RkXmlReader::read error: %s:0: %s\n", path.c_str(), file.reason().c_str());
    return false;
  }
  RkXmlReader reader(file.content(), path, fallback);
  return readRoot(reader, &object, nullptr, nullptr);
}

RkXmlObject* RkXmlReader::readFileAny(const std::string& path, ObjectFactory factory) {
  const MappedFile file(path);
  if (!file.ok()) {
    Rk::Print::write(4, "RkXmlReader::read error: %s:0: %s\n", path.c_str(), file.reason().c_str());
    return nullptr;
  }
  RkXmlObject* made = nullptr;
  RkBoolean ok = false;
  {
    RkXmlReader reader(file.content(), path, nullptr);
    ok = readRoot(reader, nullptr, factory, &made);
  }
  if (!ok) {
    delete made;
    return nullptr;
  }
  return made;
}
