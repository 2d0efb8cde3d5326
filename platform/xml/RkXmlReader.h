#pragma once
// A pull reader over libxml2's SAX2 push parser, hardened for untrusted files: no DTD, no entities, no
// network, and caps on size, depth, text, attributes, elements and memory. It walks the node events its
// front end (RkXmlEventStream) records. A read stands on an element's start tag and ends on its end tag.
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "foundation/RkTypes.h"
#include "xml/RkToken.h"
#include "xml/RkXmlEventStream.h"

class RkXmlObject;

enum class RkXmlNodeKind { StartElement, EmptyElement, EndElement, Text, EndOfDocument, Error };

class RkXmlReader {
 public:
  // Makes a new object for a tag that no creator knows, or returns null.
  typedef RkXmlObject* (*ObjectFactory)(const RkToken& tag);

  static constexpr std::size_t kMaxDocumentBytes = 64u << 20;
  static constexpr std::size_t kMaxTextBytes = 8u << 20;
  static constexpr int kMaxDepth = 128;
  static constexpr std::size_t kMaxAttributes = 256;    // of one element
  static constexpr std::size_t kMaxElements = 1000000;  // and list items, of one document
  static constexpr std::size_t kMaxNames = 10000;       // distinct names and short texts, of one document
  static constexpr std::size_t kMemoryFactor = 16;      // times the document's size...
  static constexpr std::size_t kMemoryAllowance = 1u << 20;  // ...and this much more
  static constexpr std::size_t kMaxReportLines = 200;        // of one read, the rest counted

  // Reads a whole document into object, whose token must name the root element. A document that is not
  // well-formed or breaks a cap prints one line naming the file, the line and the reason.
  static RkBoolean readFile(const std::string& path, RkXmlObject& object, ObjectFactory fallback = nullptr);
  static RkBoolean readString(std::string_view document, RkXmlObject& object,
                              const std::string& name = "(string)", ObjectFactory fallback = nullptr);
  // Reads a whole document into a new object that factory makes from the root tag (null on failure).
  static RkXmlObject* readFileAny(const std::string& path, ObjectFactory factory);

  ~RkXmlReader();
  RkXmlReader(const RkXmlReader&) = delete;
  RkXmlReader& operator=(const RkXmlReader&) = delete;

  RkXmlNodeKind nodeKind() const { return m_kind; }
  // Moves to the next element, end tag or text, skipping comments, instructions and white space.
  RkXmlNodeKind advance();
  // The tag of the current element (start, empty or end). A name no token has is not interned: its token
  // is this reader's own and lives as long as the reader.
  const RkToken& tag();
  int depth() const { return m_depth; }

  RkU32 attributeCount();
  const RkToken& attributeName(RkU32 index);
  const std::string& attributeValue(RkU32 index);

  // From a start tag, collects the element's text and leaves the reader on its end tag. A child element
  // inside is skipped and reported; the result is then false.
  RkBoolean readElementText(std::string& text);

  // Data mode: the items of a group element's text, one per basic value. Called on the group's start tag;
  // collects its text, leaves the reader on its end tag and returns false when it holds no text.
  RkBoolean enterDataMode();
  RkBoolean inDataMode() const { return m_dataMode; }
  RkBoolean moreData();
  // The next item, quotes included; empty when none is left. Items count toward the element cap.
  std::string_view nextDataItem();
  void leaveDataMode() { m_dataMode = false; }
  // How many items nextDataItem has handed out so far.
  std::size_t dataItemsTaken() const { return m_dataItemsTaken; }

  // Moves forward to the end of the element at depth (its end tag, or the empty element itself).
  void finishElement(int depth);

  // Counts bytes that the objects being read will hold. Once a document would make them hold more than
  // kMemoryFactor times its size (plus kMemoryAllowance), reading fails with one line and this returns false.
  RkBoolean charge(std::size_t bytes);

  // The file name as messages show it, control characters escaped.
  const std::string& fileName() const { return m_fileName; }
  int lineNumber() const;
  ObjectFactory fallbackFactory() const { return m_fallback; }
  void setFallbackFactory(ObjectFactory factory) { m_fallback = factory; }

  // Reports a problem with the content at the current line: one level-4 line naming file and line, with
  // control characters in it escaped.
  void contentError(const char* format, ...) __attribute__((format(printf, 2, 3)));
  // True once the document proved malformed or broke a cap; reading stops then.
  RkBoolean failed() const { return m_failed; }

  // While the messages held during a read are replayed, the file and line at which the one being printed
  // arose, so that a print sink can name them; an empty name and line 0 at any other time.
  static const std::string& replayFileName();
  static int replayLine();

 private:
  struct HeldLine {
    int level;
    const char* origin;
    std::string text;
    int sourceLine;  // the document's line when it was printed
  };
  struct PairHash {
    std::size_t operator()(const std::pair<const void*, const void*>& key) const {
      return std::hash<const void*>()(key.first) * 31 + std::hash<const void*>()(key.second);
    }
  };
  // Recently met names, by libxml2's pointers, in front of m_names.
  struct NameSlot {
    const void* uri;
    const void* local;
    RkToken token;
  };
  static constexpr unsigned kNameSlotBits = 8;

  RkXmlReader(std::string_view document, const std::string& name, ObjectFactory fallback);
  static RkBoolean readRoot(RkXmlReader& reader, RkXmlObject* object, ObjectFactory factory,
                            RkXmlObject** made);
  static RkBoolean readRootHeld(RkXmlReader& reader, RkXmlObject* object, ObjectFactory factory,
                                RkXmlObject** made);
  static void holdLine(int level, const char* origin, const char* text, void* context);
  void printFailure() const;
  void fail(int line, const std::string& reason);
  void collectAttributes();
  RkToken nameToken(const unsigned char* uri, const unsigned char* local);

  RkXmlEventStream m_events;
  const RkXmlEventStream::Event* m_event;  // the one the reader stands on
  std::string m_fileName;
  ObjectFactory m_fallback;
  RkXmlNodeKind m_kind;
  int m_depth;
  int m_line;  // 0 where the parser's line stands for it
  bool m_tagKnown;
  RkToken m_tag;
  bool m_attributesKnown;
  std::vector<RkToken> m_attributeNames;
  std::vector<std::string> m_attributeValues;
  // Names met so far, by libxml2's interned pointers; names no token has are held by m_localTokens.
  NameSlot m_nameSlots[1u << kNameSlotBits];
  std::unordered_map<std::pair<const void*, const void*>, RkToken, PairHash> m_names;
  RkToken::LocalTable m_localTokens;
  std::string m_nameText;
  bool m_dataMode;
  std::string m_data;
  std::size_t m_dataPosition;
  std::size_t m_dataItemsTaken;
  std::size_t m_elements;
  std::size_t m_memoryLimit;
  std::size_t m_memoryCharged;
  std::vector<HeldLine> m_heldLines;
  std::size_t m_droppedLines;
  int m_droppedLevel;
  bool m_failed;
  int m_failedLine;
  std::string m_failure;
};
