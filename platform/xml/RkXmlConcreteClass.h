#pragma once
// The mechanical members of the class pattern, written once: a concrete class Derived of base Base with
// element name Token derives from RkXmlConcreteClass<Derived, Base, Token> and gets equality (same class,
// then Derived's ==), newObject, clone, token, classToken and the creator that family containers register.
// A compound class also gets its field list, built once for the class on first use, and its == from it.
#include <type_traits>

#include "xml/RkXmlCompoundType.h"

namespace RkXmlDetail {
// The field list of a compound class, shared by every object of the class.
template <class Derived, class Base, bool = std::is_base_of<RkXmlCompoundType, Base>::value>
class ClassFields : public Base {
 public:
  using Base::Base;
};
template <class Derived, class Base>
class ClassFields<Derived, Base, true> : public Base {
 public:
  using Base::Base;
  const RkXmlCompoundType::ComponentList& components() const override {
    static const RkXmlCompoundType::ComponentList list = [] {
      Derived prototype;
      return RkXmlCompoundType::buildComponents(prototype);
    }();
    return list;
  }
};
}  // namespace RkXmlDetail

template <class Derived, class Base, const RkToken& Token>
class RkXmlConcreteClass : public RkXmlDetail::ClassFields<Derived, Base> {
 public:
  using RkXmlDetail::ClassFields<Derived, Base>::ClassFields;

  RkBoolean equality(const RkXmlObject* other) const override {
    const Derived* same = dynamic_cast<const Derived*>(other);
    return same && self() == *same;
  }
  RkXmlObject* newObject() const override { return new Derived; }
  RkXmlObject* clone() const override { return new Derived(self()); }
  const RkToken& token() const override { return Token; }
  static const RkToken& classToken() { return Token; }
  static RkXmlObject* creator() { return new Derived; }

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
};
