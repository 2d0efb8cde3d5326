#pragma once
// An ordered list of XML objects of one type, held by value. Written with a count attribute; compound
// elements each stand in an "element" child, basic values side by side in one "group":
//   <sequenceOrder count="2"><group>pick place</group></sequenceOrder>
#include <algorithm>
#include <ostream>
#include <typeinfo>
#include <utility>
#include <vector>

#include "foundation/RkINT2STRING.h"
#include "foundation/RkPrint.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlObject.h"
#include "xml/RkXmlObjectVisitor.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlSchema.h"
#include "xml/RkXmlText.h"
#include "xml/RkXmlTokens.h"
#include "xml/RkXmlWriter.h"

template <class T>
class RkXmlVectorType : public RkXmlConcreteClass<RkXmlVectorType<T>, RkXmlObject, RkXml::RkVectorTypeToken> {
 public:
  RkXmlVectorType() = default;
  explicit RkXmlVectorType(RkU32 count) : m_elements(count) {}
  RkXmlVectorType(RkU32 count, T value) : m_elements(count, value) {}
  RkXmlVectorType(const RkXmlVectorType&) = default;
  RkXmlVectorType& operator=(const RkXmlVectorType&) = default;
  RkXmlVectorType(RkXmlVectorType&&) noexcept = default;
  RkXmlVectorType& operator=(RkXmlVectorType&&) noexcept = default;

  bool operator==(const RkXmlVectorType& other) const {
    if (!RkXmlObject::operator==(other) || m_elements.size() != other.m_elements.size()) return false;
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
      if (!(m_elements[i] == other.m_elements[i])) return false;
    }
    return true;
  }
  bool operator!=(const RkXmlVectorType& other) const { return !(*this == other); }

  // No bounds check: an index at or beyond size() is the caller's fault.
  T& operator[](RkU32 index) { return m_elements[index]; }
  const T& operator[](RkU32 index) const { return m_elements[index]; }

  static RkXmlVectorType nullObject() { return RkXmlVectorType(); }
  void accept(RkXmlObjectVisitor* visitor) const override { visitor->visit(this); }

  virtual void pushBack(const T& value) { m_elements.push_back(value); }
  virtual void pushBack(T&& value) { m_elements.push_back(std::move(value)); }

  virtual RkBoolean erase(RkU32 index) {
    if (index >= size()) {
      Rk::Print::writeFrom(__PRETTY_FUNCTION__, 4,
                           "RkXmlVectorType<ElementType>::erase(): index (%u) exceeds vector size (%u).\n",
                           index, size());
      return false;
    }
    m_elements.erase(m_elements.begin() + index);
    return true;
  }

  // Removes the elements from first up to, not including, last.
  virtual RkBoolean erase(RkU32 first, RkU32 last) {
    if (last > size()) {
      Rk::Print::writeFrom(__PRETTY_FUNCTION__, 4, "index (%u) exceeds vector size ( %u).\n", last, size());
      return false;
    }
    if (last < first) {
      Rk::Print::writeFrom(__PRETTY_FUNCTION__, 4, "first (%u) is bigger than last (%u).\n", first, last);
      return false;
    }
    m_elements.erase(m_elements.begin() + first, m_elements.begin() + last);
    return true;
  }

  virtual const std::vector<T>& vectorContainer() const { return m_elements; }
  virtual std::vector<T>& vectorContainer() { return m_elements; }
  virtual void reserve(RkU32 count) { m_elements.reserve(count); }
  virtual void resize(RkU32 count) { m_elements.resize(count); }
  // Grows to count elements; never shrinks.
  virtual void resizeToAtLeast(RkU32 count) {
    if (count > size()) m_elements.resize(count);
  }
  virtual void clear() { m_elements.clear(); }
  virtual void assign(RkU32 count, const T& value) { m_elements.assign(count, value); }
  virtual RkU32 size() const { return static_cast<RkU32>(m_elements.size()); }

  // Makes the element at k the first, moving the first k elements, in order, to the end.
  virtual RkBoolean leftRotate(RkU32 k) {
    if (k >= size()) return false;
    std::rotate(m_elements.begin(), m_elements.begin() + k, m_elements.end());
    return true;
  }

  // Streaming write of a long list: the header opens the list's element and hands the caller a writer,
  // which the footer closes and deletes. The count written is the size at header time.
  virtual RkBoolean writeHeaderToStream(std::ostream& stream, RkXmlWriter*& writerOut,
                                        const std::string& name, const RkToken& tag) const {
    if (stream.bad() || stream.fail()) return false;
    writerOut = new RkXmlWriter(name, stream);
    writerOut->openElement(tag);
    RkXmlObject::write(*writerOut);
    writeCount(*writerOut);
    if (T().isBasicType()) writerOut->openElement(RkXml::RkGroupToken);
    return true;
  }
  virtual RkBoolean writeBodyToStream(RkXmlWriter* writer) const {
    if (!writer) return false;
    for (const T& element : m_elements) writeElement(*writer, element);
    return true;
  }
  virtual RkBoolean appendElementToStream(RkXmlWriter* writer, const T& value) const {
    if (!writer) return false;
    writeElement(*writer, value);
    return true;
  }
  virtual RkBoolean writeFooterToStream(RkXmlWriter*& writerOut) const {
    if (!writerOut) return false;
    if (T().isBasicType()) writerOut->closeElement();
    writerOut->closeElement();
    delete writerOut;
    writerOut = nullptr;
    return true;
  }

  virtual void append(const RkXmlVectorType& other) {
    m_elements.insert(m_elements.end(), other.m_elements.begin(), other.m_elements.end());
  }

  RkBoolean write(RkXmlWriter& writer) const override {
    RkBoolean result = RkXmlObject::write(writer);
    writeCount(writer);
    bool groupOpen = false;
    for (const T& element : m_elements) {
      if (element.isBasicType() && !groupOpen) {
        writer.openElement(RkXml::RkGroupToken);
        groupOpen = true;
      }
      result = writeElement(writer, element) && result;
    }
    if (groupOpen) writer.closeElement();
    return result;
  }

  // Lenient: a count that differs from the elements read is reported at level 3 and the elements are kept.
  RkBoolean read(RkXmlReader& reader) override {
    const RkBoolean result = RkXmlObject::read(reader);
    if (!result) return result;
    m_elements.clear();
    long expected = 0;
    for (RkU32 i = 0, count = reader.attributeCount(); i < count; ++i) {
      if (reader.attributeName(i) == RkXml::RkCountToken) {
        expected = RkXmlText::leadingLong(reader.attributeValue(i));
        // The count is only a hint; a forged one must not reserve gigabytes.
        const std::size_t hinted = static_cast<std::size_t>(std::clamp(expected, 0L, 4096L));
        if (hinted > 0 && reader.charge(hinted * sizeof(T))) m_elements.reserve(hinted);
      }
    }
    if (reader.nodeKind() == RkXmlNodeKind::EmptyElement) return result;
    const int childDepth = reader.depth() + 1;
    RkXmlNodeKind kind = reader.advance();
    while (kind == RkXmlNodeKind::StartElement || kind == RkXmlNodeKind::EmptyElement) {
      if (reader.tag() == RkXml::RkGroupToken) {
        if (kind == RkXmlNodeKind::StartElement && reader.enterDataMode()) {
          while (reader.moreData() && makeRoom(reader)) {
            const std::size_t taken = reader.dataItemsTaken();
            m_elements.emplace_back();
            m_elements.back().read(reader);
            // An element that takes no item (not a basic type) must not stall the loop.
            if (reader.dataItemsTaken() == taken) reader.nextDataItem();
          }
          reader.leaveDataMode();
        } else if (!reader.failed()) {
          Rk::Print::write(4, "RkXmlVectorType Error: XML parser should be in data mode\n");
        }
      } else if (makeRoom(reader)) {
        m_elements.emplace_back();
        m_elements.back().read(reader);
      }
      reader.finishElement(childDepth);
      kind = reader.advance();
    }
    if (!reader.failed() && expected != static_cast<long>(m_elements.size())) {
      Rk::Print::write(
          3, "RkXmlVectorType Error: array size not equal to attribute value -- %ld, actual -- %u\n",
          expected, size());
      Rk::Print::write(3, "Filename: %s, Line count: %d\n", reader.fileName().c_str(), reader.lineNumber());
    }
    return result;
  }

  void writeSchema(RkXmlSchema& schema) const override {
    RkXmlObject::writeSchema(schema);
    const T prototype;
    if (prototype.isBasicType()) {
      schema.openElement(RkXml::RkGroupToken, RkXmlOccurrence::Optional,
                         "the values of the list, separated by blanks");
      schema.textContent("xs:string");
    } else {
      schema.openElement(RkXml::RkElementToken, RkXmlOccurrence::Many, "one item of the list");
      prototype.writeSchema(schema);
    }
    schema.closeElement();
    schema.attribute(RkXml::RkCountToken, "xs:unsignedInt", "how many items the list holds");
  }

 private:
  // Room for one more element, its growth counted against the reader's memory cap.
  bool makeRoom(RkXmlReader& reader) {
    if (m_elements.size() < m_elements.capacity()) return true;
    return reader.charge(std::max<std::size_t>(1, 2 * m_elements.capacity()) * sizeof(T));
  }
  void writeCount(RkXmlWriter& writer) const {
    std::string& text = writer.scratch();
    text.clear();
    RkXmlText::format(size(), text);
    writer.attribute(RkXml::RkCountToken, text);
  }
  static RkBoolean writeElement(RkXmlWriter& writer, const T& element) {
    if (element.isBasicType()) return element.write(writer);
    writer.openElement(RkXml::RkElementToken);
    const RkBoolean result = element.write(writer);
    writer.closeElement();
    return result;
  }

  std::vector<T> m_elements;
};

template <class T>
void RkXmlObjectVisitor::visit(const RkXmlVectorType<T>* vector) {
  m_currentObject = vector;
  m_pathStrings.clear();
  m_pathStrings.push_back(typeid(const RkXmlVectorType<T>*).name());
  m_pathStrings.push_back(m_currentToken.text() + " (" + RkINT2STRING(vector->size()) + ")");
  if (mayEnter() && shouldDescend(vector) && vector->size() > 0) {
    for (RkU32 i = 0; i < vector->size(); ++i) {
      m_currentToken = RkXml::RkElementToken;
      (*vector)[i].accept(this);
    }
  }
  closeObject(vector);
}
