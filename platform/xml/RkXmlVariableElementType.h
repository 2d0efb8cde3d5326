#pragma once
// Holds at most one object of a class family, of whichever concrete class, created from its tag when read:
//   <manipulationFrameContainer><standardManipulationFrame>...</standardManipulationFrame></...>
// The container owns its element: a copy clones it, a move takes it over. A container with InlineBytes of
// room keeps an element made by setNewElement that fits there in place, without allocating.
#include <cstddef>
#include <new>
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

// The room a container keeps for an element held in place, and how to copy or move that element as its
// own class; none when InlineBytes is 0.
template <class T, std::size_t InlineBytes>
struct ElementRoom {
  struct Operations {
    T* (*copy)(const T& from, void* to);
    T* (*move)(T& from, void* to);
  };
  template <class U>
  static constexpr bool fits = sizeof(U) <= InlineBytes &&
                               alignof(U) <= alignof(void*) && std::is_nothrow_move_constructible<U>::value;
  template <class U>
  static T* copyAs(const T& from, void* to) {
    return new (to) U(static_cast<const U&>(from));
  }
  template <class U>
  static T* moveAs(T& from, void* to) {
    return new (to) U(std::move(static_cast<U&>(from)));
  }
  template <class U>
  static constexpr Operations operationsOf{&copyAs<U>, &moveAs<U>};

  alignas(void*) unsigned char m_room[InlineBytes];
  // Set while the element stands in the room.
  const Operations* m_roomOperations = nullptr;
};
template <class T>
struct ElementRoom<T, 0> {
  template <class U>
  static constexpr bool fits = false;
};
}  // namespace RkXmlDetail

template <class T, std::size_t InlineBytes = 0>
class RkXmlVariableElementType : public RkXmlBaseVariableCompoundType,
                                 private RkXmlDetail::ElementRoom<T, InlineBytes> {
 public:
  RkXmlVariableElementType() : m_pElement(nullptr) {}
  RkXmlVariableElementType(const RkXmlVariableElementType& other)
      : RkXmlBaseVariableCompoundType(other), m_pElement(nullptr) {
    copyElementOf(other);
  }
  RkXmlVariableElementType& operator=(const RkXmlVariableElementType& other) {
    if (this == &other) return *this;
    RkXmlBaseVariableCompoundType::operator=(other);
    reset();
    copyElementOf(other);
    return *this;
  }
  RkXmlVariableElementType(RkXmlVariableElementType&& other) noexcept
      : RkXmlBaseVariableCompoundType(std::move(other)), m_pElement(nullptr) {
    takeElementOf(other);
  }
  RkXmlVariableElementType& operator=(RkXmlVariableElementType&& other) noexcept {
    if (this == &other) return *this;
    RkXmlBaseVariableCompoundType::operator=(std::move(other));
    reset();
    takeElementOf(other);
    return *this;
  }
  ~RkXmlVariableElementType() override { reset(); }

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
    reset();
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
    reset();
    adopt(element.clone());
  }
  // Replaces the element with a fresh default object of class U, built in place when it fits the room, and
  // hands it back typed.
  template <class U>
  U& setNewElement() {
    reset();
    U* made;
    if constexpr (Room::template fits<U>) {
      made = new (Room::m_room) U;
      Room::m_roomOperations = &Room::template operationsOf<U>;
    } else {
      made = new U;
    }
    m_pElement = made;
    pointElementHere();
    return *made;
  }

 private:
  typedef RkXmlDetail::ElementRoom<T, InlineBytes> Room;

  // Destroys the element, wherever it stands, leaving the container empty.
  void reset() {
    if constexpr (InlineBytes > 0) {
      if (Room::m_roomOperations) {
        m_pElement->~T();
        m_pElement = nullptr;
        Room::m_roomOperations = nullptr;
        return;
      }
    }
    delete m_pElement;
    m_pElement = nullptr;
  }
  // Into this empty container: a copy of other's element, in place when other holds it in place.
  void copyElementOf(const RkXmlVariableElementType& other) {
    if (!other.m_pElement) return;
    if constexpr (InlineBytes > 0) {
      if (other.Room::m_roomOperations) {
        m_pElement = other.Room::m_roomOperations->copy(*other.m_pElement, Room::m_room);
        Room::m_roomOperations = other.Room::m_roomOperations;
        pointElementHere();
        return;
      }
    }
    adopt(other.m_pElement->clone());
  }
  // Into this empty container: other's element, moved when held in place, else its pointer; other ends empty.
  void takeElementOf(RkXmlVariableElementType& other) noexcept {
    if constexpr (InlineBytes > 0) {
      if (other.Room::m_roomOperations) {
        m_pElement = other.Room::m_roomOperations->move(*other.m_pElement, Room::m_room);
        Room::m_roomOperations = other.Room::m_roomOperations;
        other.reset();
        pointElementHere();
        return;
      }
    }
    m_pElement = other.m_pElement;
    other.m_pElement = nullptr;
    pointElementHere();
  }
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

template <class T, std::size_t InlineBytes>
void RkXmlObjectVisitor::visit(const RkXmlVariableElementType<T, InlineBytes>* container) {
  m_currentObject = container;
  m_pathStrings.clear();
  m_pathStrings.push_back(typeid(const RkXmlVariableElementType<T, InlineBytes>*).name());
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
