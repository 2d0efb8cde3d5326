#pragma once
// The state of a frame that runs other frames, written once: Derived (the parametric frame's state, the
// subsequence frame's state) answers with the state of the frame running inside, given by its
// runningFrameState(), and holds the state of the frame's own event, which it registers where its fields put
// it.
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "events/RkManipulationFrameTransitionEventStateContainer.h"
#include "frames/RkManipulationFrameState.h"
#include "offsets/RkManipulationOffsetContainer.h"
#include "offsets/RkManipulationOffsetStateContainer.h"
#include "xml/RkXmlConcreteClass.h"

// The empty lists a nested frame answers with while nothing runs inside it.
namespace RkNestedManipulationFrameNullObjects {
const RkXmlVectorType<RkManipulationOffsetContainer>& offsets();
const RkXmlVectorType<RkManipulationOffsetStateContainer>& offsetStates();
}  // namespace RkNestedManipulationFrameNullObjects

template <class Derived, const RkToken& Token>
class RkNestedManipulationFrameState : public RkXmlConcreteClass<Derived, RkManipulationFrameState, Token> {
 public:
  const RkXmlVectorType<RkManipulationOffsetStateContainer>& offsetStateContainerVector() const override {
    const RkManipulationFrameState* running = self().runningFrameState();
    return running ? running->offsetStateContainerVector()
                   : RkNestedManipulationFrameNullObjects::offsetStates();
  }
  const RkManipulatorEndEffectorPlacement& currentEndEffectorPlacement() const override {
    const RkManipulationFrameState* running = self().runningFrameState();
    return running ? running->currentEndEffectorPlacement() : RkManipulatorEndEffectorPlacement::nullObject();
  }
  const RkManipulatorEndEffectorPlacement& goalEndEffectorPlacement() const override {
    const RkManipulationFrameState* running = self().runningFrameState();
    return running ? running->goalEndEffectorPlacement() : RkManipulatorEndEffectorPlacement::nullObject();
  }

  // The state of the frame's own event, if it has one.
  virtual RkManipulationFrameTransitionEventState* transitionEventState() {
    return m_transitionEventStateContainer.element();
  }
  virtual const RkManipulationFrameTransitionEventStateContainer& transitionEventStateContainer() const {
    return m_transitionEventStateContainer;
  }
  virtual void setTransitionEventStateContainer(
      const RkManipulationFrameTransitionEventStateContainer& container) {
    m_transitionEventStateContainer = container;
  }

 protected:
  // Registered by Derived, where its fields put it.
  RkManipulationFrameTransitionEventStateContainer m_transitionEventStateContainer;

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
};
