#pragma once
// The reader's front end: feeds a document to libxml2's SAX2 push parser as the walk needs more, and
// records the nodes it meets as compact events in buffers that are reused. Texts are gathered across the
// parser's pieces. A sound document is fed 16 KiB at a time. At the first sign of trouble (the parser
// refuses the document, a document type or entity, too many names) the document is parsed again from the
// start 512 bytes at a time, the events already walked are passed over, and problems are then reported as
// a reader that parses 512 bytes ahead of the walk meets them: a parser refusal before any node of the
// piece in which it arose, the name cap at the first node walked after it is broken.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class RkXmlEventStream {
 public:
  enum class Kind : std::uint8_t {
    Start,
    Empty,
    End,
    Text,       // character data and references to characters, not white space only
    Section,    // a CDATA section
    Forbidden,  // a document type declaration or an entity reference
    Refused,    // the parser refused the document, or it holds too many names: the text says why
    Stopped,    // the parser stopped without saying why
    Skip,       // white space, a comment or an instruction, kept only when parsing 512 bytes at a time
  };
  // Names are libxml2's interned texts, so a pointer pair identifies a name within a document.
  struct Event {
    const unsigned char* uri;    // of an element, null when it has no namespace
    const unsigned char* local;  // of an element
    std::uint32_t begin;         // text: its first byte; element: its first attribute
    std::uint32_t size;          // text: its length (bytes past the text cap are counted, not kept);
                                 // element: its attributes
    std::int32_t line;           // 0: none, the parser's line stands for it
    std::uint16_t depth;         // of an element: 0 for the root
    Kind kind;
    bool blank;  // text: white space only so far
  };
  struct Attribute {
    const unsigned char* uri;
    const unsigned char* local;
    std::uint32_t begin;  // of its value
    std::uint32_t size;
  };

  RkXmlEventStream();
  ~RkXmlEventStream();
  RkXmlEventStream(const RkXmlEventStream&) = delete;
  RkXmlEventStream& operator=(const RkXmlEventStream&) = delete;

  // Makes the parser for document, which must outlive the stream; false if it cannot be made.
  bool start(std::string_view document, const std::string& name, std::size_t textCap, std::size_t nameCap);
  // The next event (never Skip), or null at the end of the document. It stays valid until the next call.
  const Event* next() { return !m_exact && m_next < completeEvents() ? &m_events[m_next++] : fillAndNext(); }
  std::string_view text(const Event& event) const {
    return std::string_view(m_text).substr(event.begin, std::min<std::size_t>(event.size, m_textCap + 1));
  }
  const Attribute& attribute(const Event& element, std::uint32_t index) const {
    return m_attributes[element.begin + index];
  }
  std::string_view value(const Attribute& attribute) const {
    return std::string_view(m_text).substr(attribute.begin, attribute.size);
  }
  // Where the parser stands.
  int parserLine() const;

 private:
  struct Sax;

  std::size_t completeEvents() const { return m_events.size() - (m_textOpen ? 1 : 0); }
  const Event* fillAndNext();
  const Event* nextExactly();
  bool makeParser();
  void dropWalked();
  bool feed(std::size_t chunk);
  Event& add(Kind kind, int line, std::size_t depth);
  void closeText();
  // Parsing exactly, a node the walk skips; one stands for a run of them.
  void addSkip(int line);
  const Event* refusal(int line, std::string_view reason);
  bool replayExactly();
  // Distinct names and short runs of white space the parser met.
  std::size_t names() const;

  struct _xmlParserCtxt* m_parser;
  std::string_view m_document;
  std::string m_name;
  std::size_t m_textCap;
  std::size_t m_nameCap;
  std::size_t m_fed;             // bytes handed to the parser
  bool m_parserDone;             // the end of the document was handed over
  bool m_exact;                  // parsing 512 bytes at a time
  bool m_trouble;                // while parsing 16 KiB at a time: a reason to parse again exactly
  bool m_rootSeen;               // parsing exactly: the root element has started
  bool m_refused;                // parsing exactly: the parser refused the document; nothing more is recorded
  std::size_t m_walked;          // events the walk took before the last drop
  std::size_t m_passOver;        // parsing again: events the walk took already, still to pass over
  std::uint64_t m_indentations;  // bit n: a line feed and n - 1 spaces met before a tag
  // Events not yet dropped; the walk has taken those before m_next.
  std::vector<Event> m_events;
  std::vector<Attribute> m_attributes;
  std::string m_text;  // texts, attribute values and refusals of the events
  std::size_t m_next;
  bool m_textOpen;               // the last event is a text more characters may join
  bool m_endOfEmpty;             // the parser's end of an empty element is due; it is no event
  std::vector<int> m_openLines;  // the start lines of the open elements
};
