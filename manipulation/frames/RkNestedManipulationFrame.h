#pragma once
// What the frames that run other frames share, written once: Derived (the parametric frame over its target
// frame, the subsequence frame over its sequence's current frame) answers every per-frame question with the
// answer of the frame running inside it, and may hold an optional transition event of its own. Derived
// supplies runningFrame(state), its State runningFrameState(), and registers the event fields.
#include "control/RkEndEffectorSet.h"
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "events/RkManipulationFrameTransitionEventContainer.h"
#include "foundation/RkPrint.h"
#include "frames/RkManipulationFrame.h"
#include "frames/RkNestedManipulationFrameState.h"
#include "sequencing/RkManipulationNullObjects.h"
#include "xml/RkXmlConcreteClass.h"

template <class Derived, class StateClass, const RkToken& Token>
class RkNestedManipulationFrame : public RkXmlConcreteClass<Derived, RkManipulationFrame, Token> {
 public:
  typedef StateClass State;

  // The answers of the frame running inside; 0 or the null objects while none runs.
  const RkXmlVectorType<RkManipulationOffsetContainer>& offsetContainerVector(
      const RkManipulationFrameState& state) const override {
    const Running running = runningIn(state);
    return running.frame ? running.frame->offsetContainerVector(*running.state)
                         : RkNestedManipulationFrameNullObjects::offsets();
  }
  const RkDataMap& dataMap(const RkManipulationFrameState& state) const override {
    const Running running = runningIn(state);
    return running.frame ? running.frame->dataMap(*running.state) : RkManipulationNullObjects::dataMap();
  }
  RkU32 activeControlDescription(const RkManipulationFrameState& state) const override {
    const Running running = runningIn(state);
    return running.frame ? running.frame->activeControlDescription(*running.state) : 0u;
  }
  RkU32 activeEndEffectorSet(const RkManipulationFrameState& state) const override {
    const Running running = runningIn(state);
    return running.frame ? running.frame->activeEndEffectorSet(*running.state) : 0u;
  }
  RkU32 activeControlMethod(const RkManipulationFrameState& state) const override {
    const Running running = runningIn(state);
    return running.frame ? running.frame->activeControlMethod(*running.state) : 0u;
  }
  const RkEndEffectorSet& endEffectorSet(const RkManipulationUpdateParams& params,
                                         const RkManipulationFrameState& state) const override {
    const Running running = runningIn(state);
    return running.frame ? running.frame->endEffectorSet(params, *running.state)
                         : RkEndEffectorSet::nullObject();
  }
  const RkManipulatorEndEffectorPlacement& currentEndEffectorPlacement(
      const RkManipulationFrameState& state) const override {
    const Running running = runningIn(state);
    return running.frame ? running.frame->currentEndEffectorPlacement(*running.state)
                         : RkManipulatorEndEffectorPlacement::nullObject();
  }
  const RkManipulatorEndEffectorPlacement& goalEndEffectorPlacement(
      const RkManipulationFrameState& state) const override {
    const Running running = runningIn(state);
    return running.frame ? running.frame->goalEndEffectorPlacement(*running.state)
                         : RkManipulatorEndEffectorPlacement::nullObject();
  }

  // The frame's own event, optional.
  virtual const RkManipulationFrameTransitionEventContainer& transitionEventContainer(
      const RkManipulationFrameState&) const {
    return m_transitionEventContainer;
  }
  virtual void setTransitionEventContainer(const RkManipulationFrameTransitionEventContainer& container) {
    m_transitionEventContainer = container;
  }

 protected:
  // Starts the event, if there is one, into the state; false after owner's line when it cannot start.
  RkBoolean initEvent(RkReal time, const RkManipulationUpdateParams& params, State& state,
                      const char* owner) const {
    const RkManipulationFrameTransitionEvent* event = m_transitionEventContainer.element();
    if (!event) return true;
    RkManipulationFrameTransitionEventStateContainer eventState;
    if (!event->init(time, params, self(), eventState)) {
      Rk::Print::write(4, "%s::init transition event failed to initialize.\n", owner);
      return false;
    }
    state.setTransitionEventStateContainer(eventState);
    return true;
  }
  // The event's status, or noEvent when there is none; Failure after owner's line when it fails.
  // Real-time safe.
  RkManipulationStatus::Enum updateEvent(RkReal time, const RkManipulationUpdateParams& params, State& state,
                                         RkManipulationStatus::Enum noEvent, const char* owner) const {
    const RkManipulationFrameTransitionEvent* event = m_transitionEventContainer.element();
    if (!event) return noEvent;
    RkManipulationFrameTransitionEventState* eventState = state.transitionEventState();
    RkManipulationStatus::Enum result = RkManipulationStatus::Failure;
    if (eventState) result = event->update(time, params, self(), state, *eventState);
    if (result == RkManipulationStatus::Failure) {
      Rk::Print::write(4, "%s::update transition event failed to update.\n", owner);
    }
    return result;
  }
  // Puts the event's end state, if there is an event, into the state.
  void endEvent(const RkManipulationUpdateParams& params, State& state) const {
    if (const RkManipulationFrameTransitionEvent* event = m_transitionEventContainer.element()) {
      state.setTransitionEventStateContainer(event->calculateEndState(params, self()));
    }
  }

  // Registered by Derived, where its fields put it.
  RkManipulationFrameTransitionEventContainer m_transitionEventContainer;

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
  // The frame running inside and its state, both null unless both are there.
  struct Running {
    const RkManipulationFrame* frame;
    const RkManipulationFrameState* state;
  };
  Running runningIn(const RkManipulationFrameState& frameState) const {
    const State& state = dynamic_cast<const State&>(frameState);
    const RkManipulationFrame* frame = self().runningFrame(state);
    const RkManipulationFrameState* running = state.runningFrameState();
    if (!frame || !running) return {nullptr, nullptr};
    return {frame, running};
  }
};
