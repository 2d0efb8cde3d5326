#pragma once
// Holds at most one object of a class family, of whichever concrete class, created from its tag when read:
//   <manipulationFrameContainer><standardManipulationFrame>...</standardManipulationFrame></...>
// The container owns its element: a copy clones it, a move takes it over.
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "foundation/RkPrint.h"
#include "xml/RkXmlBaseVariableCompoundType.h"
#include "xml/RkXmlObjectVisitor.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

namespace RkXmlDetail {
// Elements that keep a pointer to the container holding them are told where they stand.
template <class T, class = void>
struct HasSetContainer : std::false_type {};
template <class T>
struct HasSetContainer<T, std::void_t<decltype(std::declval<T&>().setContainer(
                              static_cast<const RkXmlBaseVariableCompoundType*>(nullptr)))>>
    : std::true_type {};
}  // namespace RkXmlDetail

template <class T>
class RkXmlVariableElementType : public RkXmlBaseVariableCompoundType {
 public:
  RkXmlVariableElementType() : m_pElement(nullptr) {}
  RkXmlVariableElementType(const RkXmlVariableElementType& other)
      : RkXmlBaseVariableCompoundType(other), m_pElement(nullptr) {
    if (other.m_pElement) adopt(other.m_pElement->clone());
  }
  RkXmlVariableElementType& operator=(const RkXmlVariableElementType& other) {
    if (this == &other) return *this;
    RkXmlBaseVariableCompoundType::operator=(other);
    delete m_pElement;
    m_pElement = nullptr;
    if (other.m_pElement) adopt(other.m_pElement->clone());
    return *this;
  }
  RkXmlVariableElementType(RkXmlVariableElementType&& other) noexcept
      : RkXmlBaseVariableCompoundType(std::move(other)), m_pElement(other.m_pElement) {
    other.m_pElement = nullptr;
    pointElementHere();
  }
  RkXmlVariableElementType& operator=(RkXmlVariableElementType&& other) noexcept {
    if (this == &other) return *this;
    RkXmlBaseVariableCompoundType::operator=(std::move(other));
    delete m_pElement;
    m_pElement = other.m_pElement;
    other.m_pElement = nullptr;
    pointElementHere();
    return *this;
  }
  ~RkXmlVariableElementType() override { delete m_pElement; }

  bool operator==(const RkXmlVariableElementType& other) const {
    if (!RkXmlBaseVariableCompoundType::operator==(other)) return false;
    if (m_pElement) return other.m_pElement && m_pElement->equality(other.m_pElement);
    return !other.m_pElement;
  }
  bool operator!=(const RkXmlVariableElementType& other) const { return !(*this == other); }

  void accept(RkXmlObjectVisitor* visitor) const override { visitor->visit(this); }
  RkBoolean read(RkXmlReader& reader) override { return RkXmlBaseVariableCompoundType::read(reader); }

  RkBoolean write(RkXmlWriter& writer) const override {
    const RkBoolean result = RkXmlBaseVariableCompoundType::write(writer);
    if (m_pElement) {
      writer.openElement(m_pElement->token());
      m_pElement->write(writer);
      writer.closeElement();
    }
    return result;
  }

  // The registered creator wins over the reader's fallback factory; an unknown tag empties the container.
  RkBoolean readValueFromToken(const RkToken& tag, RkXmlReader& reader) override {
    if (tag == RkXml::RkAddLibrariesToken) {
      libraryList().read(reader);
      processLibraries();
      return true;
    }
    delete m_pElement;
    m_pElement = nullptr;
    if (RkXmlObject* made = newObjectFromToken(tag)) adopt(made);
    if (!m_pElement && reader.fallbackFactory()) {
      if (RkXmlObject* made = reader.fallbackFactory()(tag)) adopt(made);
    }
    if (!m_pElement) {
      Rk::Print::writeFrom(
          __PRETTY_FUNCTION__, 4,
          "RkXmlVariableElementType::readValueFromToken() error:\n\t\"%s\" tag not registered.\n",
          tag.c_str());
      return false;
    }
    m_pElement->read(reader);
    return true;
  }

  const T* element() const { return m_pElement; }
  T* element() { return m_pElement; }
  // Stores a clone of element; the caller keeps element.
  void setElement(const T& element) {
    delete m_pElement;
    m_pElement = nullptr;
    adopt(element.clone());
  }
  // Replaces the element with a fresh default object of class U and hands it back typed.
  template <class U>
  U& setNewElement() {
    delete m_pElement;
    U* made = new U;
    m_pElement = made;
    pointElementHere();
    return *made;
  }

 private:
  // Takes ownership of object, keeping it only if it is a T.
  void adopt(RkXmlObject* object) {
    m_pElement = dynamic_cast<T*>(object);
    if (!m_pElement) {
      delete object;
      return;
    }
    pointElementHere();
  }
  void pointElementHere() {
    if constexpr (RkXmlDetail::HasSetContainer<T>::value) {
      if (m_pElement) m_pElement->setContainer(this);
    }
  }

  T* m_pElement;
};

template <class T>
void RkXmlObjectVisitor::visit(const RkXmlVariableElementType<T>* container) {
  m_currentObject = container;
  m_pathStrings.clear();
  m_pathStrings.push_back(typeid(const RkXmlVariableElementType<T>*).name());
  m_pathStrings.push_back(m_currentToken.text());
  if (!mayEnter()) return;
  if (!container->element()) {
    Rk::Print::write(4, "Visitor: RkXmlVariableElementType is non-RkXmlObject\n");
    return;
  }
  if (shouldDescend(container)) {
    m_currentToken = container->element()->token();
    container->element()->accept(this);
  }
  closeObject(container);
}
