#pragma once
// What most transition-event kinds share, written once: Derived, whose state class is State and element
// name Token, gets calculateEndState (a fresh State), and init and update handed to its initState and
// updateState with its own state class.
#include "events/RkManipulationFrameTransitionEvent.h"
#include "events/RkManipulationFrameTransitionEventStateContainer.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlConcreteClass.h"

template <class Derived, class StateClass, const RkToken& Token>
class RkManipulationFrameTransitionEventKind
    : public RkXmlConcreteClass<Derived, RkManipulationFrameTransitionEvent, Token> {
 public:
  typedef StateClass State;

  RkManipulationFrameTransitionEventStateContainer calculateEndState(
      const RkManipulationUpdateParams&, const RkManipulationFrame&) const override {
    RkManipulationFrameTransitionEventStateContainer container;
    container.template setNewElement<State>();
    return container;
  }
  RkBoolean init(RkReal time, const RkManipulationUpdateParams& params, const RkManipulationFrame& frame,
                 RkManipulationFrameTransitionEventStateContainer& stateContainer) const override {
    return self().initState(time, params, frame, stateContainer.template setNewElement<State>());
  }
  // Real-time safe when Derived's updateState is.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    const RkManipulationFrame& frame,
                                    const RkManipulationFrameState& frameState,
                                    RkManipulationFrameTransitionEventState& state) const override {
    return self().updateState(time, params, frame, frameState, dynamic_cast<State&>(state));
  }

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
};
