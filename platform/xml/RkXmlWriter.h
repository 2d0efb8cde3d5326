#pragma once
// Writes an indented XML document into a string or, piece by piece, to a stream. The first element
// declares the toolkit namespace as the default namespace.
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/RkTypes.h"
#include "xml/RkToken.h"

class RkXmlObject;

class RkXmlWriter {
 public:
  RkXmlWriter();
  // Streams to stream under the given name (for messages); flushed as it grows and when destroyed.
  RkXmlWriter(const std::string& name, std::ostream& stream);
  ~RkXmlWriter();
  RkXmlWriter(const RkXmlWriter&) = delete;
  RkXmlWriter& operator=(const RkXmlWriter&) = delete;

  void openElement(const RkToken& tag);
  // Only directly after openElement.
  void attribute(const RkToken& name, std::string_view value);
  // Character data; several items in one element are separated by a blank.
  void dataItem(std::string_view text);
  void closeElement();

  const std::string& name() const { return m_name; }
  // The document so far (string mode).
  const std::string& text() const { return m_buffer; }
  // False once the stream failed.
  bool good() const;
  // A buffer for formatting one value, reused to avoid allocation.
  std::string& scratch() { return m_scratch; }

  // Appends text escaped as character data, or as an attribute value in double quotes (which also keeps
  // tabs and line feeds, that attribute values would otherwise lose). The one escaping of the framework.
  static void appendEscaped(std::string& out, std::string_view text, bool attribute);

  // Writes object as a whole document, its root element named by its token.
  static RkBoolean writeString(const RkXmlObject& object, std::string& document);
  // As writeString, into a file; one line names the file and the problem on failure.
  static RkBoolean writeFile(const RkXmlObject& object, const std::string& path);

 private:
  struct Open {
    RkToken tag;
    bool startTagOpen;
    bool hasChildren;
    bool hasData;
  };
  void closeStartTag(Open& element);
  void newLine(std::size_t depth);
  void flushIfLarge();
  void flush();

  std::string m_name;
  std::ostream* m_stream;
  std::string m_buffer;
  std::string m_scratch;
  std::vector<Open> m_open;
  bool m_streamFailed;
};
