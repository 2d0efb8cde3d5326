#pragma once
// The base of the library's polymorphic tree elements (actions, frames, offsets, events and their states):
// a compound that knows the container holding it. Copies start unattached and comparison ignores it.
#include <utility>

#include "xml/RkXmlCompoundType.h"

class RkXmlBaseVariableCompoundType;

class RkBaseExpressionTreeElement : public RkXmlCompoundType {
 public:
  RkBaseExpressionTreeElement() : m_container(nullptr) {}
  RkBaseExpressionTreeElement(const RkBaseExpressionTreeElement& other)
      : RkXmlCompoundType(other), m_container(nullptr) {}
  RkBaseExpressionTreeElement(RkBaseExpressionTreeElement&& other) noexcept
      : RkXmlCompoundType(std::move(other)), m_container(nullptr) {}
  // Keeps where this object stands: assigning changes the content, not the place.
  RkBaseExpressionTreeElement& operator=(const RkBaseExpressionTreeElement& other) {
    RkXmlCompoundType::operator=(other);
    return *this;
  }
  RkBaseExpressionTreeElement& operator=(RkBaseExpressionTreeElement&& other) noexcept {
    RkXmlCompoundType::operator=(std::move(other));
    return *this;
  }

  virtual const RkXmlBaseVariableCompoundType* container() const { return m_container; }
  virtual void setContainer(const RkXmlBaseVariableCompoundType* container) { m_container = container; }

 private:
  const RkXmlBaseVariableCompoundType* m_container;
};
