#include "xml/RkXmlWriter.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <ostream>

#include "foundation/RkPrint.h"
#include "xml/RkXmlObject.h"

namespace {

const char kDeclaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

}  // namespace

void RkXmlWriter::appendEscaped(std::string& out, std::string_view text, bool attribute) {
  for (char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        attribute ? out += "&quot;" : out += c;
        break;
      case '\t':
        attribute ? out += "&#9;" : out += c;
        break;
      case '\n':
        attribute ? out += "&#10;" : out += c;
        break;
      case '\r':
        out += "&#13;";
        break;
      default:
        out += c;
    }
  }
}

RkXmlWriter::RkXmlWriter() : m_name("(string)"), m_stream(nullptr), m_streamFailed(false) {
  m_buffer += kDeclaration;
}

RkXmlWriter::RkXmlWriter(const std::string& name, std::ostream& stream)
    : m_name(name), m_stream(&stream), m_streamFailed(false) {
  m_buffer += kDeclaration;
}

RkXmlWriter::~RkXmlWriter() {
  flush();
}

void RkXmlWriter::newLine(std::size_t depth) {
  m_buffer += '\n';
  m_buffer.append(2 * depth, ' ');
}

void RkXmlWriter::closeStartTag(Open& element) {
  if (element.startTagOpen) {
    m_buffer += '>';
    element.startTagOpen = false;
  }
}

void RkXmlWriter::openElement(const RkToken& tag) {
  const std::string_view uri = tag.namespaceUri();
  bool declareNamespace = m_open.empty() ? !uri.empty() : false;
  if (!m_open.empty()) {
    Open& parent = m_open.back();
    closeStartTag(parent);
    parent.hasChildren = true;
    newLine(m_open.size());
    declareNamespace = uri != m_open.front().tag.namespaceUri();
  }
  m_buffer += '<';
  m_buffer.append(tag.localName());
  if (declareNamespace) {
    m_buffer += " xmlns=\"";
    appendEscaped(m_buffer, uri, true);
    m_buffer += '"';
  }
  m_open.push_back({tag, true, false, false});
}

void RkXmlWriter::attribute(const RkToken& name, std::string_view value) {
  if (m_open.empty() || !m_open.back().startTagOpen) return;
  m_buffer += ' ';
  m_buffer.append(name.localName());
  m_buffer += "=\"";
  appendEscaped(m_buffer, value, true);
  m_buffer += '"';
}

void RkXmlWriter::dataItem(std::string_view text) {
  if (m_open.empty()) return;
  Open& element = m_open.back();
  closeStartTag(element);
  if (element.hasData) m_buffer += ' ';
  element.hasData = true;
  appendEscaped(m_buffer, text, false);
}

void RkXmlWriter::closeElement() {
  if (m_open.empty()) return;
  Open& element = m_open.back();
  if (element.startTagOpen) {
    m_buffer += "/>";
  } else {
    if (element.hasChildren) newLine(m_open.size() - 1);
    m_buffer += "</";
    m_buffer.append(element.tag.localName());
    m_buffer += '>';
  }
  m_open.pop_back();
  if (m_open.empty()) m_buffer += '\n';
  flushIfLarge();
}

bool RkXmlWriter::good() const {
  return !m_streamFailed;
}

void RkXmlWriter::flushIfLarge() {
  if (m_stream && m_buffer.size() >= (1u << 16)) flush();
}

void RkXmlWriter::flush() {
  if (!m_stream || m_buffer.empty()) return;
  m_stream->write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
  m_stream->flush();
  if (!*m_stream) m_streamFailed = true;
  m_buffer.clear();
}

RkBoolean RkXmlWriter::writeString(const RkXmlObject& object, std::string& document) {
  RkXmlWriter writer;
  writer.openElement(object.token());
  const RkBoolean written = object.write(writer);
  writer.closeElement();
  document.swap(writer.m_buffer);
  return written;
}

RkBoolean RkXmlWriter::writeFile(const RkXmlObject& object, const std::string& path) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) {
    Rk::Print::write(4, "RkXmlWriter::writeFile error: %s: %s\n", path.c_str(), std::strerror(errno));
    return false;
  }
  RkBoolean written = false;
  {
    RkXmlWriter writer(path, file);
    writer.openElement(object.token());
    written = object.write(writer);
    writer.closeElement();
    writer.flush();
    if (!writer.good()) {
      Rk::Print::write(4, "RkXmlWriter::writeFile error: %s: the file could not be written\n", path.c_str());
      return false;
    }
  }
  return written;
}
