#pragma once
// The container class of one polymorphic family, written once: Derived supplies classToken() and
// registerComponentCreators(); this supplies equality, newObject, clone, token and nullObject.
#include "xml/RkXmlVariableElementType.h"

template <class Derived, class T>
class RkXmlFamilyContainer : public RkXmlVariableElementType<T> {
 public:
  bool operator==(const RkXmlFamilyContainer& other) const {
    return RkXmlVariableElementType<T>::operator==(other);
  }
  bool operator!=(const RkXmlFamilyContainer& other) const { return !(*this == other); }

  RkBoolean equality(const RkXmlObject* other) const override {
    const Derived* same = dynamic_cast<const Derived*>(other);
    return same && *this == *same;
  }
  RkXmlObject* newObject() const override { return new Derived; }
  RkXmlObject* clone() const override { return new Derived(static_cast<const Derived&>(*this)); }
  const RkToken& token() const override { return Derived::classToken(); }
  // An empty container.
  static Derived nullObject() { return Derived(); }
};
