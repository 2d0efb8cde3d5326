#pragma once
// The mechanical members of the class pattern, written once: a concrete class Derived of base Base derives
// from RkXmlConcreteClass<Derived, Base> and gets equality (same class, then Derived's ==), newObject,
// clone, token (Derived::classToken()) and the creator that family containers register.
#include "xml/RkXmlObject.h"

template <class Derived, class Base>
class RkXmlConcreteClass : public Base {
 public:
  using Base::Base;

  RkBoolean equality(const RkXmlObject* other) const override {
    const Derived* same = dynamic_cast<const Derived*>(other);
    return same && self() == *same;
  }
  RkXmlObject* newObject() const override { return new Derived; }
  RkXmlObject* clone() const override { return new Derived(self()); }
  const RkToken& token() const override { return Derived::classToken(); }
  static RkXmlObject* creator() { return new Derived; }

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
};
