#pragma once
// The container class of one polymorphic family, written once: Derived supplies
// registerComponentCreators(), the one place that names the classes of the family; this supplies equality,
// newObject, clone, token, classToken and nullObject. Moving a container never copies its element. A family
// of small objects made often (running states) may give its containers InlineBytes of room for one.
#include <cstddef>
#include <type_traits>

#include "xml/RkXmlVariableElementType.h"

template <class Derived, class T, const RkToken& Token, std::size_t InlineBytes = 0>
class RkXmlFamilyContainer : public RkXmlVariableElementType<T, InlineBytes> {
 public:
  RkBoolean equality(const RkXmlObject* other) const override {
    const Derived* same = dynamic_cast<const Derived*>(other);
    return same && *this == *same;
  }
  RkXmlObject* newObject() const override { return new Derived; }
  RkXmlObject* clone() const override { return new Derived(static_cast<const Derived&>(*this)); }
  const RkToken& token() const override { return Token; }
  static const RkToken& classToken() { return Token; }
  // An empty container.
  static Derived nullObject() { return Derived(); }
};
