#include "xml/RkXmlReader.h"

#include <fcntl.h>
#include <libxml/parser.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
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

// How many attributes the start tag at text[at] has, counted up to end: its quoted values before its '>'.
std::size_t attributesOf(std::string_view text, std::size_t at, std::size_t end) {
  std::size_t count = 0;
  while (at < end && text[at] != '>') {
    if (text[at] == '"' || text[at] == '\'') {
      const std::size_t close = text.find(text[at], at + 1);
      ++count;
      at = close == std::string_view::npos ? end : close + 1;
    } else {
      ++at;
    }
  }
  return count;
}

// Finds what must be refused before libxml2 sees the bytes, since it parses ahead of the walk: a document
// type declaration (entities), runs of text or markup beyond the cap, and start tags with more attributes
// than the cap (libxml2's duplicate-attribute check is quadratic). Returns the reason, or an empty text.
std::string prescan(std::string_view text, std::size_t& offset) {
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
  static const std::pair<std::string_view, std::string_view> kOpaque[] = {
      {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
  const char* data = text.data();
  const std::size_t size = text.size();
  constexpr std::size_t npos = std::string_view::npos;
  // Comments, CDATA sections and instructions met up to opaqueFrom; a '<' before opaqueUntil opens none.
  std::size_t opaqueFrom = 0, opaqueUntil = 0;
  const auto findOpaque = [&](std::size_t limit) {
    while (opaqueFrom < limit) {
      const void* found = std::memchr(data + opaqueFrom, '<', limit - opaqueFrom);
      if (!found) break;
      const std::size_t at = static_cast<const char*>(found) - data;
      opaqueFrom = at + 1;
      if (at < opaqueUntil || at + 1 >= size || (text[at + 1] != '!' && text[at + 1] != '?')) continue;
      for (const auto& [open, close] : kOpaque) {
        if (text.compare(at, open.size(), open) != 0) continue;
        const std::size_t end = text.find(close, at + open.size());
        opaqueUntil = end == npos ? size : end + close.size();
        opaqueFrom = std::max(opaqueFrom, opaqueUntil);
        break;
      }
    }
    opaqueFrom = std::max(opaqueFrom, limit);
  };
  // Each '<' starts a run that ends at the next; a tag cannot hold a '<', so it lies in one run. Only a run
  // longer than four bytes per attribute can hold too many, or pass the text cap, and such a run holds a
  // whole block of 512 bytes without '<': the blocks are searched rather than every '<'.
  constexpr std::size_t kBlock = 512;
  std::size_t lastOpen = npos;  // the last '<' before the block searched
  for (std::size_t block = 0; block < size; block += kBlock) {
    const std::size_t length = std::min(kBlock, size - block);
    if (const void* last = memrchr(data + block, '<', length)) {
      lastOpen = static_cast<const char*>(last) - data;
      continue;
    }
    const std::size_t start = lastOpen == npos ? 0 : lastOpen;
    const void* next = std::memchr(data + block + length, '<', size - block - length);
    const std::size_t end = next ? static_cast<const char*>(next) - data : size;
    if (end - start > RkXmlReader::kMaxTextBytes) {
      offset = start;
      return "text or markup longer than 8 MiB";
    }
    findOpaque(start);
    if (text[start] == '<' && start >= opaqueUntil && start + 1 < size) {
      const char first = text[start + 1];
      if (first != '!' && first != '?' && first != '/' && end - start > 4 * RkXmlReader::kMaxAttributes &&
          attributesOf(text, start, end) > RkXmlReader::kMaxAttributes) {
        offset = start;
        return "more than " + std::to_string(RkXmlReader::kMaxAttributes) + " attributes on one element";
      }
    }
    if (end == size) break;
    // On from the block that holds the '<' ending the run.
    block = end / kBlock * kBlock - kBlock;
  }
  return {};
}

// The token text of a name: the namespace URI and the local name joined when the URI ends in '#' (the
// toolkit's form), "{uri}local" otherwise, so that no foreign name can spell a toolkit one.
void qualifiedName(const xmlChar* uri, const xmlChar* local, std::string& text) {
  text = uri ? reinterpret_cast<const char*>(uri) : "";
  if (!text.empty() && text.back() != '#') text = "{" + text + "}";
  text += local ? reinterpret_cast<const char*>(local) : "";
}

}  // namespace

RkXmlReader::RkXmlReader(std::string_view document, const std::string& name, ObjectFactory fallback)
    : m_event(nullptr),
      m_fileName(Rk::Print::escaped(name)),
      m_fallback(fallback),
      m_kind(RkXmlNodeKind::EndOfDocument),
      m_depth(0),
      m_line(0),
      m_tagKnown(false),
      m_attributesKnown(false),
      m_nameSlots(),
      m_dataMode(false),
      m_dataPosition(0),
      m_dataItemsTaken(0),
      m_elements(0),
      m_memoryLimit(kMemoryFactor * document.size() + kMemoryAllowance),
      m_memoryCharged(0),
      m_droppedLines(0),
      m_droppedLevel(0),
      m_failed(false),
      m_failedLine(0) {
  setUpLibxml();
  std::size_t offset = 0;
  if (document.empty()) {
    fail(1, "the document is empty");
  } else if (document.size() > kMaxDocumentBytes) {
    fail(1, "document larger than 64 MiB");
  } else if (const std::string reason = prescan(document, offset); !reason.empty()) {
    fail(lineAt(document, offset), reason);
  } else if (!m_events.start(document, name, kMaxTextBytes, kMaxNames)) {
    fail(1, "the parser could not be created");
  }
}

RkXmlReader::~RkXmlReader() = default;

void RkXmlReader::fail(int line, const std::string& reason) {
  if (m_failed) return;
  m_failed = true;
  m_failedLine = line;
  m_failure = Rk::Print::escaped(reason);
  m_kind = RkXmlNodeKind::Error;
}

RkBoolean RkXmlReader::charge(std::size_t bytes) {
  if (m_failed) return false;
  m_memoryCharged += bytes;
  if (m_memoryCharged <= m_memoryLimit) return true;
  fail(lineNumber(),
       "the document would take more than " + std::to_string(kMemoryFactor) + " times its size in memory");
  return false;
}

RkXmlNodeKind RkXmlReader::advance() {
  m_tagKnown = false;
  m_attributesKnown = false;
  if (m_failed) return m_kind = RkXmlNodeKind::Error;
  const RkXmlEventStream::Event* event = m_events.next();
  m_event = event;
  if (!event) {
    m_line = 0;
    return m_kind = RkXmlNodeKind::EndOfDocument;
  }
  using Kind = RkXmlEventStream::Kind;
  if (event->kind == Kind::Refused) {
    fail(event->line, std::string(m_events.text(*event)));
    return m_kind = RkXmlNodeKind::Error;
  }
  if (event->kind == Kind::Stopped) {
    // Where the walk stands.
    fail(lineNumber(), "malformed document");
    return m_kind = RkXmlNodeKind::Error;
  }
  m_line = event->line;
  m_depth = event->depth;
  switch (event->kind) {
    case Kind::Start:
    case Kind::Empty:
      // The root stands at depth 0, so depth kMaxDepth is one level too deep.
      if (m_depth >= kMaxDepth) {
        fail(lineNumber(), "elements nested deeper than " + std::to_string(kMaxDepth) + " levels");
        return m_kind = RkXmlNodeKind::Error;
      }
      if (++m_elements > kMaxElements) {
        fail(lineNumber(), "more than " + std::to_string(kMaxElements) + " elements and list items");
        return m_kind = RkXmlNodeKind::Error;
      }
      return m_kind = event->kind == Kind::Empty ? RkXmlNodeKind::EmptyElement : RkXmlNodeKind::StartElement;
    case Kind::End:
      return m_kind = RkXmlNodeKind::EndElement;
    case Kind::Text:
    case Kind::Section:
      return m_kind = RkXmlNodeKind::Text;
    default:  // a document type or an entity reference; the stream hands out no Skip
      fail(lineNumber(), "entities are not accepted");
      return m_kind = RkXmlNodeKind::Error;
  }
}

RkToken RkXmlReader::nameToken(const xmlChar* uri, const xmlChar* local) {
  // libxml2 interns names per document, so the pair of pointers identifies the name.
  const std::uint64_t mixed = reinterpret_cast<std::uintptr_t>(local) * 0x9E3779B97F4A7C15u;
  NameSlot& slot = m_nameSlots[mixed >> (64 - kNameSlotBits)];
  if (slot.local == local && slot.uri == uri && local) return slot.token;
  const std::pair<const void*, const void*> key(uri, local);
  auto found = m_names.find(key);
  if (found == m_names.end()) {
    qualifiedName(uri, local, m_nameText);
    const std::size_t before = m_localTokens.bytes();
    const RkToken token = m_localTokens.token(m_nameText);
    charge(m_localTokens.bytes() - before + 6 * sizeof(void*));
    found = m_names.emplace(key, token).first;
  }
  slot = {uri, local, found->second};
  return found->second;
}

const RkToken& RkXmlReader::tag() {
  if (m_tagKnown) return m_tag;
  m_tagKnown = true;
  m_tag = RkToken();
  if (m_kind != RkXmlNodeKind::StartElement && m_kind != RkXmlNodeKind::EmptyElement &&
      m_kind != RkXmlNodeKind::EndElement) {
    return m_tag;
  }
  return m_tag = nameToken(m_event->uri, m_event->local);
}

void RkXmlReader::collectAttributes() {
  if (m_attributesKnown) return;
  m_attributesKnown = true;
  m_attributeNames.clear();
  if (m_kind != RkXmlNodeKind::StartElement && m_kind != RkXmlNodeKind::EmptyElement) return;
  const std::uint32_t count = m_event->size;
  if (m_attributeValues.size() < count) m_attributeValues.resize(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    const RkXmlEventStream::Attribute& attribute = m_events.attribute(*m_event, i);
    m_attributeNames.push_back(nameToken(attribute.uri, attribute.local));
    m_attributeValues[i].assign(m_events.value(attribute));
  }
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
  return index < m_attributeNames.size() ? m_attributeValues[index] : none;
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
      // Pieces (text, CDATA sections, character references) are held to the same cap as one run.
      if (text.size() + m_event->size > kMaxTextBytes) {
        fail(lineNumber(), "text longer than 8 MiB");
        text.clear();
        return false;
      }
      text.append(m_events.text(*m_event));
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
  if (!m_dataMode || m_failed) return false;
  while (m_dataPosition < m_data.size() && isSpace(m_data[m_dataPosition])) ++m_dataPosition;
  return m_dataPosition < m_data.size();
}

std::string_view RkXmlReader::nextDataItem() {
  if (!moreData()) return std::string_view();
  if (++m_elements > kMaxElements) {
    fail(lineNumber(), "more than " + std::to_string(kMaxElements) + " elements and list items");
    return std::string_view();
  }
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
  if (m_line > 0) return m_line;
  const int line = m_events.parserLine();
  return line > 0 ? line : m_failedLine;
}

void RkXmlReader::contentError(const char* format, ...) {
  if (m_failed) return;
  // Past the cap a line is only counted, so that millions of them cost no formatting.
  if (m_heldLines.size() >= kMaxReportLines) {
    holdLine(4, nullptr, nullptr, this);
    return;
  }
  char reason[512];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(reason, sizeof reason, format, arguments);
  va_end(arguments);
  Rk::Print::write(4, "RkXmlReader::read error: %s:%d: %s\n", m_fileName.c_str(), lineNumber(),
                   Rk::Print::escaped(reason).c_str());
}

namespace {
// Where the message being replayed arose; see RkXmlReader::replayLine.
thread_local const std::string* t_replayFileName = nullptr;
thread_local int t_replayLine = 0;
}  // namespace

// What a document prints while it is read is held back: a document that proves malformed later prints only
// its refusal, a sound one prints the first lines in order and counts the rest.
void RkXmlReader::holdLine(int level, const char* origin, const char* text, void* context) {
  RkXmlReader& reader = *static_cast<RkXmlReader*>(context);
  if (text && reader.m_heldLines.size() < kMaxReportLines) {
    reader.m_heldLines.push_back({level, origin, text, reader.lineNumber()});
  } else {
    reader.m_droppedLevel = reader.m_droppedLines++ == 0 ? level : std::min(level, reader.m_droppedLevel);
  }
}

void RkXmlReader::printFailure() const {
  Rk::Print::write(4, "RkXmlReader::read error: %s:%d: %s\n", m_fileName.c_str(), m_failedLine,
                   m_failure.c_str());
}

const std::string& RkXmlReader::replayFileName() {
  static const std::string none;
  return t_replayFileName ? *t_replayFileName : none;
}

int RkXmlReader::replayLine() {
  return t_replayLine;
}

RkBoolean RkXmlReader::readRoot(RkXmlReader& reader, RkXmlObject* object, ObjectFactory factory,
                                RkXmlObject** made) {
  const RkBoolean result = readRootHeld(reader, object, factory, made);
  if (reader.failed()) {
    reader.printFailure();
    return false;
  }
  const std::string* const outerFileName = t_replayFileName;
  const int outerLine = t_replayLine;
  t_replayFileName = &reader.m_fileName;
  for (const HeldLine& line : reader.m_heldLines) {
    t_replayLine = line.sourceLine;
    Rk::Print::writeFrom(line.origin, line.level, "%s", line.text.c_str());
  }
  t_replayFileName = outerFileName;
  t_replayLine = outerLine;
  if (reader.m_droppedLines > 0) {
    Rk::Print::write(reader.m_droppedLevel, "RkXmlReader::read: %s: %zu more report lines not shown\n",
                     reader.m_fileName.c_str(), reader.m_droppedLines);
  }
  return result;
}

RkBoolean RkXmlReader::readRootHeld(RkXmlReader& reader, RkXmlObject* object, ObjectFactory factory,
                                    RkXmlObject** made) {
  const Rk::Print::ThreadSink hold(&RkXmlReader::holdLine, &reader);
  const RkXmlNodeKind kind = reader.advance();
  if (kind != RkXmlNodeKind::StartElement && kind != RkXmlNodeKind::EmptyElement) {
    reader.fail(reader.lineNumber(), "the document holds no element");
    return false;
  }
  const RkToken& root = reader.tag();
  if (!object && factory) object = *made = factory(root);
  if (!object) {
    reader.fail(reader.lineNumber(), "unknown root element \"" + root.text() + "\"");
    return false;
  }
  if (root != object->token()) {
    std::string reason = "root element is \"" + std::string(root.localName()) + "\"";
    if (root.localName() == object->token().localName()) {
      reason += " in namespace \"" + std::string(root.namespaceUri()) + "\", expected namespace \"" +
                std::string(object->token().namespaceUri()) + "\"";
    } else {
      reason += ", expected \"" + std::string(object->token().localName()) + "\"";
    }
    reader.fail(reader.lineNumber(), reason);
    return false;
  }
  const RkBoolean result = object->read(reader);
  reader.finishElement(0);
  // Draining the rest finds errors after the root, such as trailing garbage.
  while (reader.advance() != RkXmlNodeKind::EndOfDocument && !reader.failed()) {
  }
  return result && !reader.failed();
}

RkBoolean RkXmlReader::readString(std::string_view document, RkXmlObject& object, const std::string& name,
                                  ObjectFactory fallback) {
  RkXmlReader reader(document, name, fallback);
  return readRoot(reader, &object, nullptr, nullptr);
}

namespace {

bool sameContent(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

// A file's bytes, read whole into a buffer that is not cleared first.
struct FileBytes {
  std::unique_ptr<char[]> data;
  std::size_t size = 0;
  std::string_view view() const { return std::string_view(data.get(), size); }
};

// Reads a regular file whole into memory; returns why it could not, or an empty text. Anything that is not
// a regular file is refused before it is opened for reading (opening a FIFO would wait for a writer), and a
// file that changes while it is read is refused rather than parsed half old and half new.
std::string readWhole(const std::string& path, FileBytes& content) {
  struct stat named;
  if (stat(path.c_str(), &named) != 0) return std::strerror(errno);
  if (!S_ISREG(named.st_mode)) return "not a regular file";
  if (static_cast<std::size_t>(named.st_size) > RkXmlReader::kMaxDocumentBytes) {
    return "document larger than 64 MiB";
  }
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) return std::strerror(errno);
  struct stat opened, after;
  std::string reason;
  if (fstat(descriptor, &opened) != 0 || !S_ISREG(opened.st_mode)) {
    reason = "not a regular file";
  } else if (static_cast<std::size_t>(opened.st_size) > RkXmlReader::kMaxDocumentBytes) {
    reason = "document larger than 64 MiB";
  } else {
    // One byte more than the size, to see a file that grows.
    const std::size_t capacity = static_cast<std::size_t>(opened.st_size) + 1;
    content.data.reset(new char[capacity]);
    while (content.size < capacity) {
      const ssize_t got = read(descriptor, content.data.get() + content.size, capacity - content.size);
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) {
        reason = std::strerror(errno);
        break;
      }
      if (got == 0) break;
      content.size += static_cast<std::size_t>(got);
    }
    if (reason.empty() &&
        (content.size + 1 != capacity || fstat(descriptor, &after) != 0 || !sameContent(opened, after) ||
         opened.st_ino != named.st_ino || opened.st_dev != named.st_dev)) {
      reason = "the file changed while it was read";
    }
  }
  ::close(descriptor);
  return reason;
}

}  // namespace

RkBoolean RkXmlReader::readFile(const std::string& path, RkXmlObject& object, ObjectFactory fallback) {
  FileBytes content;
  const std::string reason = readWhole(path, content);
  if (!reason.empty()) {
    Rk::Print::write(4, "RkXmlReader::read error: %s:0: %s\n", Rk::Print::escaped(path).c_str(),
                     reason.c_str());
    return false;
  }
  RkXmlReader reader(content.view(), path, fallback);
  return readRoot(reader, &object, nullptr, nullptr);
}

RkXmlObject* RkXmlReader::readFileAny(const std::string& path, ObjectFactory factory) {
  FileBytes content;
  const std::string reason = readWhole(path, content);
  if (!reason.empty()) {
    Rk::Print::write(4, "RkXmlReader::read error: %s:0: %s\n", Rk::Print::escaped(path).c_str(),
                     reason.c_str());
    return nullptr;
  }
  RkXmlObject* made = nullptr;
  RkBoolean ok = false;
  {
    RkXmlReader reader(content.view(), path, nullptr);
    ok = readRoot(reader, nullptr, factory, &made);
  }
  if (!ok) {
    delete made;
    return nullptr;
  }
  return made;
}
