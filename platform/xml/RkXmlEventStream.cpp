#include "xml/RkXmlEventStream.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <cstring>

namespace {

// Bytes handed to the parser at a time: many while all goes well, few when parsing again exactly.
constexpr std::size_t kChunkBytes = 16u << 10;
constexpr std::size_t kExactChunkBytes = 512;

bool isBlank(unsigned char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// The length of the white space that begins text.
std::size_t blankPrefix(const unsigned char* text, std::size_t length) {
  std::size_t at = 0;
  // Eight bytes at a time while they are all spaces or line feeds, the usual indentation.
  constexpr std::uint64_t kSpaces = 0x2020202020202020u, kFeeds = 0x0A0A0A0A0A0A0A0Au;
  constexpr std::uint64_t kLow = 0x7F7F7F7F7F7F7F7Fu, kHigh = 0x8080808080808080u;
  // The high bit of each byte of word that is not zero (no carry crosses a byte).
  const auto nonZero = [](std::uint64_t word) { return (((word & kLow) + kLow) | word) & kHigh; };
  while (at + 8 <= length) {
    std::uint64_t word;
    std::memcpy(&word, text + at, 8);
    if ((nonZero(word ^ kSpaces) & nonZero(word ^ kFeeds)) != 0) break;
    at += 8;
  }
  while (at < length && isBlank(text[at])) ++at;
  return at;
}

}  // namespace

// Filled in place: a whole event built aside and copied in costs a stalled store.
inline RkXmlEventStream::Event& RkXmlEventStream::add(Kind kind, int line, std::size_t depth) {
  Event& event = m_events.emplace_back();
  event.kind = kind;
  event.line = line;
  event.depth = static_cast<std::uint16_t>(depth);
  return event;
}

// White space alone is never walked. Parsing exactly, it stays as one Skip event for the name cap (one
// for each run of them: only the first of a run can be the first node walked after a piece is parsed).
inline void RkXmlEventStream::closeText() {
  if (!m_textOpen) return;
  m_textOpen = false;
  Event& open = m_events.back();
  if (!open.blank) return;
  m_text.resize(open.begin);
  const std::size_t index = m_events.size() - 1;
  if (!m_exact || (index > m_next && m_events[index - 1].kind == Kind::Skip)) {
    m_events.pop_back();
  } else {
    open.kind = Kind::Skip;
    open.size = 0;
  }
}

inline void RkXmlEventStream::addSkip(int line) {
  const std::size_t count = m_events.size();
  if (m_exact && (count == m_next || m_events[count - 1].kind != Kind::Skip)) {
    add(Kind::Skip, line, m_openLines.size());
  }
}

// The parser's callbacks. The parser hands itself as the context; its _private names the stream. Entity
// contents are parsed in contexts of their own, whose nodes are not the document's and are not recorded.
struct RkXmlEventStream::Sax {
  static RkXmlEventStream* streamOf(void* context) {
    const xmlParserCtxtPtr parser = static_cast<xmlParserCtxtPtr>(context);
    RkXmlEventStream* stream = static_cast<RkXmlEventStream*>(parser->_private);
    return stream && stream->m_parser == parser && !stream->m_trouble && !stream->m_refused ? stream
                                                                                            : nullptr;
  }

  static void startElement(void* context, const xmlChar* local, const xmlChar*, const xmlChar* uri, int,
                           const xmlChar**, int attributeCount, int defaulted, const xmlChar** attributes) {
    RkXmlEventStream* stream = streamOf(context);
    if (!stream) return;
    const xmlParserCtxtPtr parser = stream->m_parser;
    stream->closeText();
    // The parser stands on "/>" after the attributes of an empty element.
    const xmlChar* after = parser->input->cur;
    const bool empty = after && after[0] == '/' && after[1] == '>';
    const int line = parser->input->line;
    const int count = attributeCount - defaulted;  // defaults come from a document type, which is refused
    Event& event = stream->add(empty ? Kind::Empty : Kind::Start, line, stream->m_openLines.size());
    event.uri = uri;
    event.local = local;
    event.begin = static_cast<std::uint32_t>(stream->m_attributes.size());
    event.size = static_cast<std::uint32_t>(count > 0 ? count : 0);
    for (int i = 0; i < count; ++i) {
      const xmlChar* const* attribute = attributes + 5 * i;
      const std::size_t begin = stream->m_text.size();
      appendValue(stream->m_text,
                  std::string_view(reinterpret_cast<const char*>(attribute[3]), attribute[4] - attribute[3]));
      Attribute& added = stream->m_attributes.emplace_back();
      added.uri = attribute[2];
      added.local = attribute[0];
      added.begin = static_cast<std::uint32_t>(begin);
      added.size = static_cast<std::uint32_t>(stream->m_text.size() - begin);
    }
    if (empty) {
      stream->m_endOfEmpty = true;
    } else {
      stream->m_openLines.push_back(line);
    }
    stream->m_rootSeen = true;
  }

  // The parser hands a value whose '&' characters it wrote back as "&#38;", for a tree builder to parse
  // again; nothing else in it is a reference once document types are refused.
  static void appendValue(std::string& out, std::string_view value) {
    std::size_t at = 0;
    while (true) {
      const std::size_t ampersand = value.find('&', at);
      out.append(value, at, ampersand == std::string_view::npos ? std::string_view::npos : ampersand - at);
      if (ampersand == std::string_view::npos) return;
      out += '&';
      at = value.compare(ampersand, 5, "&#38;") == 0 ? ampersand + 5 : ampersand + 1;
    }
  }

  static void endElement(void* context, const xmlChar* local, const xmlChar*, const xmlChar* uri) {
    RkXmlEventStream* stream = streamOf(context);
    if (!stream) return;
    if (stream->m_endOfEmpty) {
      stream->m_endOfEmpty = false;
      return;
    }
    if (stream->m_openLines.empty()) return;
    stream->closeText();
    // An end tag reports the line of its start tag.
    Event& event = stream->add(Kind::End, stream->m_openLines.back(), stream->m_openLines.size() - 1);
    event.uri = uri;
    event.local = local;
    stream->m_openLines.pop_back();
  }

  // Adjacent pieces of character data, or of CDATA sections, make one text, as in a tree.
  static void text(RkXmlEventStream& stream, const xmlChar* characters, int length, Kind kind) {
    if (stream.m_openLines.empty() || length <= 0) return;
    const bool blank = blankPrefix(characters, length) == static_cast<std::size_t>(length);
    if (!stream.m_textOpen || stream.m_events.back().kind != kind) {
      stream.closeText();
      const xmlParserCtxtPtr parser = stream.m_parser;
      // White space up to a '<' is a whole text: whatever the '<' begins ends it. Nothing is kept.
      if (kind == Kind::Text && blank && characters[length] == '<') {
        internWhiteSpace(stream, characters, length);
        stream.addSkip(parser->input->line);
        return;
      }
      // Text reports the line it starts on, a CDATA section the line of the element it stands in.
      const int line = kind == Kind::Section ? stream.m_openLines.back() : parser->input->line;
      Event& event = stream.add(kind, line, stream.m_openLines.size());
      event.begin = static_cast<std::uint32_t>(stream.m_text.size());
      event.blank = kind == Kind::Text && blank;
      stream.m_textOpen = true;
      if (event.blank) internWhiteSpace(stream, characters, length);
    } else if (!blank) {
      stream.m_events.back().blank = false;
    }
    Event& open = stream.m_events.back();
    // Past the cap a text is only counted: the walk refuses it, and needs none of its bytes.
    const std::size_t kept = std::min<std::size_t>(open.size, stream.m_textCap + 1);
    const std::size_t room = stream.m_textCap + 1 - kept;
    stream.m_text.append(reinterpret_cast<const char*>(characters),
                         std::min<std::size_t>(room, static_cast<std::size_t>(length)));
    open.size = static_cast<std::uint32_t>(
        std::min<std::size_t>(std::size_t(open.size) + static_cast<std::size_t>(length), UINT32_MAX));
  }

  // A tree builder interns a text node of 16 to 59 blanks before a tag in the parser's dictionary; the
  // same count keeps the name cap counting what it always counted. The usual indentation, a line feed and
  // spaces, is counted by its length alone.
  static void internWhiteSpace(RkXmlEventStream& stream, const xmlChar* characters, int length) {
    if (length < 16 || length >= 60 || characters[length] != '<' || characters[length + 1] == '!') return;
    if (characters[0] == '\n' && allSpaces(characters + 1, length - 1)) {
      stream.m_indentations |= std::uint64_t(1) << length;
    } else {
      xmlDictLookup(stream.m_parser->dict, characters, length);
    }
  }

  static bool allSpaces(const xmlChar* text, int length) {
    int at = 0;
    for (; at + 8 <= length; at += 8) {
      std::uint64_t word;
      std::memcpy(&word, text + at, 8);
      if (word != 0x2020202020202020u) return false;
    }
    for (; at < length; ++at) {
      if (text[at] != ' ') return false;
    }
    return true;
  }

  static void characters(void* context, const xmlChar* characters, int length) {
    if (RkXmlEventStream* stream = streamOf(context)) text(*stream, characters, length, Kind::Text);
  }

  static void section(void* context, const xmlChar* characters, int length) {
    if (RkXmlEventStream* stream = streamOf(context)) text(*stream, characters, length, Kind::Section);
  }

  // A comment or an instruction ends a text. Parsing exactly, it is a Skip event.
  static void skip(void* context) {
    RkXmlEventStream* stream = streamOf(context);
    if (!stream) return;
    stream->closeText();
    stream->addSkip(stream->m_parser->input->line);
  }

  static void comment(void* context, const xmlChar*) { skip(context); }

  static void instruction(void* context, const xmlChar*, const xmlChar*) { skip(context); }

  // While all goes well, a document type or an entity reference stops the parser: the document is parsed
  // again exactly, and the walk refuses it there.
  static void forbidden(RkXmlEventStream& stream, int line) {
    if (!stream.m_exact) {
      stream.m_trouble = true;
      xmlStopParser(stream.m_parser);
      return;
    }
    stream.closeText();
    stream.add(Kind::Forbidden, line, stream.m_openLines.size());
  }

  // An entity reference reports the line of the element it stands in.
  static void reference(void* context, const xmlChar*) {
    if (RkXmlEventStream* stream = streamOf(context)) {
      forbidden(*stream, stream->m_openLines.empty() ? 0 : stream->m_openLines.back());
    }
  }

  // A document type declaration reports the line the parser reached when it is walked.
  static void internalSubset(void* context, const xmlChar* name, const xmlChar* publicId,
                             const xmlChar* systemId) {
    RkXmlEventStream* stream = streamOf(context);
    if (!stream) return;
    if (stream->m_exact) xmlSAX2InternalSubset(context, name, publicId, systemId);
    forbidden(*stream, 0);
  }

  static void structuredError(void* context, xmlErrorPtr error) {
    const xmlParserCtxtPtr parser = static_cast<xmlParserCtxtPtr>(context);
    RkXmlEventStream* stream = parser ? static_cast<RkXmlEventStream*>(parser->_private) : nullptr;
    if (!stream || stream->m_refused || !error || error->level == XML_ERR_WARNING) return;
    if (!stream->m_exact) {
      stream->m_trouble = true;
      return;
    }
    std::string message = error->message ? error->message : "malformed document";
    while (!message.empty() && (message.back() == '\n' || message.back() == ' ')) message.pop_back();
    // Some libxml2 messages run over two lines; a refusal is reported on one.
    for (char& c : message) {
      if (c == '\n') c = ' ';
    }
    stream->refusal(error->line, message);
  }

  // libxml2's own SAX2 handling for the rest: the document node and entity look-ups behave as they do for
  // a tree builder.
  static const xmlSAXHandler& handler() {
    static const xmlSAXHandler instance = [] {
      xmlSAXHandler made;
      std::memset(&made, 0, sizeof made);
      xmlSAXVersion(&made, 2);
      made.startElementNs = &startElement;
      made.endElementNs = &endElement;
      made.characters = &characters;
      made.ignorableWhitespace = &characters;
      made.cdataBlock = &section;
      made.comment = &comment;
      made.processingInstruction = &instruction;
      made.reference = &reference;
      made.internalSubset = &internalSubset;
      made.serror = &structuredError;
      made.warning = nullptr;
      made.error = nullptr;
      made.fatalError = nullptr;
      return made;
    }();
    return instance;
  }
};

RkXmlEventStream::RkXmlEventStream()
    : m_parser(nullptr),
      m_textCap(0),
      m_nameCap(0),
      m_fed(0),
      m_parserDone(false),
      m_exact(false),
      m_trouble(false),
      m_rootSeen(false),
      m_refused(false),
      m_walked(0),
      m_passOver(0),
      m_indentations(0),
      m_next(0),
      m_textOpen(false),
      m_endOfEmpty(false) {}

RkXmlEventStream::~RkXmlEventStream() {
  if (!m_parser) return;
  if (m_parser->myDoc) xmlFreeDoc(m_parser->myDoc);
  xmlFreeParserCtxt(m_parser);
}

bool RkXmlEventStream::start(std::string_view document, const std::string& name, std::size_t textCap,
                             std::size_t nameCap) {
  m_document = document;
  m_name = name;
  m_textCap = textCap;
  m_nameCap = nameCap;
  // Room for the events of one piece at once: a node takes some 16 bytes of a document or more.
  const std::size_t piece = std::min(document.size(), kChunkBytes);
  m_events.reserve(piece / 16 + 8);
  m_text.reserve(piece);
  m_openLines.reserve(32);
  return makeParser();
}

bool RkXmlEventStream::makeParser() {
  // The first four bytes tell the parser the encoding.
  m_fed = m_document.size() >= 4 ? 4 : 0;
  xmlSAXHandler handler = Sax::handler();
  m_parser = xmlCreatePushParserCtxt(&handler, nullptr, m_fed ? m_document.data() : nullptr,
                                     static_cast<int>(m_fed), m_name.c_str());
  if (!m_parser) return false;
  m_parser->_private = this;
  m_parser->linenumbers = 1;
  xmlCtxtUseOptions(m_parser,
                    XML_PARSE_NONET | XML_PARSE_BIG_LINES | XML_PARSE_NOWARNING | XML_PARSE_COMPACT);
  return true;
}

std::size_t RkXmlEventStream::names() const {
  std::size_t indentations = 0;
  for (std::uint64_t bits = m_indentations; bits; bits &= bits - 1) ++indentations;
  return static_cast<std::size_t>(xmlDictSize(m_parser->dict)) + indentations;
}

int RkXmlEventStream::parserLine() const {
  return m_parser && m_parser->input ? m_parser->input->line : 0;
}

void RkXmlEventStream::dropWalked() {
  m_walked += m_next;
  // An open text, which the walk has not taken, moves to the front.
  if (m_textOpen) {
    Event open = m_events.back();
    m_text.erase(0, open.begin);
    open.begin = 0;
    m_events.assign(1, open);
  } else {
    m_events.clear();
    m_text.clear();
  }
  m_attributes.clear();
  m_next = 0;
}

bool RkXmlEventStream::feed(std::size_t chunk) {
  int result = 0;
  if (m_fed < m_document.size()) {
    const std::size_t size = std::min(chunk, m_document.size() - m_fed);
    result = xmlParseChunk(m_parser, m_document.data() + m_fed, static_cast<int>(size), 0);
    m_fed += size;
  } else if (!m_parserDone) {
    result = xmlParseChunk(m_parser, nullptr, 0, 1);
    m_parserDone = true;
    closeText();
  } else {
    return false;
  }
  const bool stopped = result != 0 || !m_parser->wellFormed;
  if (!m_exact) {
    // libxml2 interns names as it meets them, ever slower as they grow in number.
    if (stopped || names() > m_nameCap) m_trouble = true;
  } else if (stopped && !m_refused) {
    // Refused where the walk stands, before anything parsed since.
    m_events.resize(m_next);
    m_textOpen = false;
    add(Kind::Stopped, 0, 0);
    m_refused = true;
  }
  return true;
}

const RkXmlEventStream::Event* RkXmlEventStream::refusal(int line, std::string_view reason) {
  // Nothing parsed since the walk took its last event is walked.
  m_events.resize(m_next);
  m_textOpen = false;
  Event& event = add(Kind::Refused, line, 0);
  event.begin = static_cast<std::uint32_t>(m_text.size());
  event.size = static_cast<std::uint32_t>(reason.size());
  m_text.append(reason);
  m_refused = true;
  return &event;
}

bool RkXmlEventStream::replayExactly() {
  m_passOver = m_walked + m_next;
  if (m_parser->myDoc) xmlFreeDoc(m_parser->myDoc);
  xmlFreeParserCtxt(m_parser);
  m_parser = nullptr;
  m_events.clear();
  m_attributes.clear();
  m_text.clear();
  m_openLines.clear();
  m_indentations = 0;
  m_next = 0;
  m_textOpen = m_endOfEmpty = m_parserDone = m_trouble = m_rootSeen = m_refused = false;
  m_exact = true;
  return makeParser();
}

const RkXmlEventStream::Event* RkXmlEventStream::fillAndNext() {
  if (!m_parser) return nullptr;
  if (m_exact) return nextExactly();
  dropWalked();
  while (completeEvents() == 0 && !m_trouble && feed(kChunkBytes)) {
  }
  if (m_trouble) return replayExactly() ? nextExactly() : refusal(1, "the parser could not be created");
  return m_next < completeEvents() ? &m_events[m_next++] : nullptr;
}

const RkXmlEventStream::Event* RkXmlEventStream::nextExactly() {
  while (m_parser) {
    if (m_next >= completeEvents()) {
      if (m_refused) return nullptr;
      dropWalked();
      // The walk starts once the root has started, so that what stands before it is whole.
      while (!m_refused && (completeEvents() == 0 || (!m_rootSeen && !m_parserDone)) &&
             feed(kExactChunkBytes)) {
      }
      if (m_next >= completeEvents()) return nullptr;
    }
    const Event& event = m_events[m_next++];
    if (event.kind == Kind::Refused || event.kind == Kind::Stopped) return &event;
    if (m_passOver > 0) {
      if (event.kind != Kind::Skip) --m_passOver;
      continue;
    }
    // Every node walked checks the name cap as the dictionary stands.
    if (names() > m_nameCap) {
      return refusal(event.line > 0 ? event.line : parserLine(),
                     "more than " + std::to_string(m_nameCap) + " distinct names");
    }
    if (event.kind != Kind::Skip) return &event;
  }
  return nullptr;
}
