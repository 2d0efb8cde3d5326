#pragma once
// The base of the library's polymorphic tree elements (actions, frames, offsets, events and their states):
// a compound that knows the container holding it. Copies start unattached and comparison ignores it.
#include "xml/RkXmlCompoundType.h"

class RkXmlBaseVariableCompoundType;

class RkBaseExpressionTreeElement : public RkXmlCompoundType {
 public:
  RkBaseExpressionTreeElement() : m_container(nullptr) {}
  RkBaseExpressionTreeElement(const RkBaseExpressionTreeElement& other)
      : RkXmlCompoundType(other), m_container(nullptr) {}
  RkBaseExpressionTreeElement& operator=(const RkBaseExpressionTreeElement& other) {
    RkXmlCompoundType::operator=(other);
    return *this;
  }
  bool operator==(const RkBaseExpressionTreeElement& other) const { return RkXmlObject::operator==(other); }
  bool operator!=(const RkBaseExpressionTreeElement& other) const { return !(*this == other); }

  virtual const RkXmlBaseVariableCompoundType* container() const { return m_container; }
  virtual void setContainer(const RkXmlBaseVariableCompoundType* container) { m_container = container; }

 private:
  const RkXmlBaseVariableCompoundType* m_container;
};
