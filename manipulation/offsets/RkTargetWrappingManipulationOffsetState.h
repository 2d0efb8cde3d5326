#pragma once
// What the state of an offset that wraps a target offset shares with the others of its sort: the target's own
// state, in a single-element container registered as its first field.
#include "offsets/RkManipulationOffsetState.h"
#include "offsets/RkManipulationOffsetStateContainer.h"
#include "xml/RkXmlConcreteClass.h"

template <class Derived, const RkToken& Token>
class RkTargetWrappingManipulationOffsetState
    : public RkXmlConcreteClass<Derived, RkManipulationOffsetState, Token> {
 public:
  // The target's state, or null.
  virtual RkManipulationOffsetState* targetOffsetState() { return m_targetOffsetState.element(); }
  virtual const RkManipulationOffsetState* targetOffsetState() const { return m_targetOffsetState.element(); }
  virtual void setTargetOffsetState(const RkManipulationOffsetStateContainer& container) {
    m_targetOffsetState = container;
  }

 protected:
  void registerComponents() override {
    this->registerComponent(RkManipulation::RkTargetOffsetStateToken, &m_targetOffsetState,
                            "the state of the target offset");
  }

 private:
  RkManipulationOffsetStateContainer m_targetOffsetState;
};
