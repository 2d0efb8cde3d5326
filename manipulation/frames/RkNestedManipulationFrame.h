#pragma once
// What the frames that run other frames share, written once: Derived (the parametric frame over its target
// frame, the subsequence frame over its sequence's current frame) answers every per-frame question with the
// answer of the frame running inside it, and may hold an optional transition event of its own. Derived
// supplies runningFrame(state), its State runningFrameState(), and both the event accessors of a frame.
#include "control/RkEndEffectorSet.h"
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "events/RkManipulationFrameTransitionEventContainer.h"
#include "events/RkManipulationFrameTransitionEventStateContainer.h"
#include "foundation/RkPrint.h"
#include "frames/RkManipulationFrame.h"
#include "frames/RkManipulationFrameState.h"
#include "offsets/RkManipulationOffsetContainer.h"
#include "offsets/RkManipulationOffsetStateContainer.h"
#include "sequencing/RkManipulationListRunner.h"
#include "sequencing/RkManipulationNullObjects.h"
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

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
};

template <class Derived, class StateClass, const RkToken& Token>
class RkNestedManipulationFrame : public RkXmlConcreteClass<Derived, RkManipulationFrame, Token> {
 public:
  typedef StateClass State;

  // The answers of the frame running inside; 0 or the null objects while none runs.
  const RkXmlVectorType<RkManipulationOffsetContainer>& offsetContainerVector(
      const RkManipulationFrameState& state) const override {
    return ask(
        state,
        [](const RkManipulationFrame& frame,
           const RkManipulationFrameState& running) -> const RkXmlVectorType<RkManipulationOffsetContainer>& {
          return frame.offsetContainerVector(running);
        },
        RkNestedManipulationFrameNullObjects::offsets());
  }
  const RkDataMap& dataMap(const RkManipulationFrameState& state) const override {
    return ask(
        state,
        [](const RkManipulationFrame& frame, const RkManipulationFrameState& running) -> const RkDataMap& {
          return frame.dataMap(running);
        },
        RkManipulationNullObjects::dataMap());
  }
  RkU32 activeControlDescription(const RkManipulationFrameState& state) const override {
    return ask(
        state,
        [](const RkManipulationFrame& frame, const RkManipulationFrameState& running) {
          return frame.activeControlDescription(running);
        },
        0u);
  }
  RkU32 activeEndEffectorSet(const RkManipulationFrameState& state) const override {
    return ask(
        state,
        [](const RkManipulationFrame& frame, const RkManipulationFrameState& running) {
          return frame.activeEndEffectorSet(running);
        },
        0u);
  }
  RkU32 activeControlMethod(const RkManipulationFrameState& state) const override {
    return ask(
        state,
        [](const RkManipulationFrame& frame, const RkManipulationFrameState& running) {
          return frame.activeControlMethod(running);
        },
        0u);
  }
  const RkEndEffectorSet& endEffectorSet(const RkManipulationUpdateParams& params,
                                         const RkManipulationFrameState& state) const override {
    return ask(
        state,
        [&params](const RkManipulationFrame& frame, const RkManipulationFrameState& running)
            -> const RkEndEffectorSet& { return frame.endEffectorSet(params, running); },
        RkEndEffectorSet::nullObject());
  }
  const RkManipulatorEndEffectorPlacement& currentEndEffectorPlacement(
      const RkManipulationFrameState& state) const override {
    return ask(
        state,
        [](const RkManipulationFrame& frame,
           const RkManipulationFrameState& running) -> const RkManipulatorEndEffectorPlacement& {
          return frame.currentEndEffectorPlacement(running);
        },
        RkManipulatorEndEffectorPlacement::nullObject());
  }
  const RkManipulatorEndEffectorPlacement& goalEndEffectorPlacement(
      const RkManipulationFrameState& state) const override {
    return ask(
        state,
        [](const RkManipulationFrame& frame, const RkManipulationFrameState& running)
            -> const RkManipulatorEndEffectorPlacement& { return frame.goalEndEffectorPlacement(running); },
        RkManipulatorEndEffectorPlacement::nullObject());
  }

 protected:
  // Starts the event, if there is one, into the state; false after owner's line when it cannot start.
  RkBoolean initEvent(RkReal time, const RkManipulationUpdateParams& params, State& state,
                      const char* owner) const {
    const RkManipulationFrameTransitionEvent* event = self().transitionEventContainer(state).element();
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
    const RkManipulationFrameTransitionEvent* event = self().transitionEventContainer(state).element();
    if (!event) return noEvent;
    RkManipulationFrameTransitionEventState* eventState = state.transitionEventState();
    RkManipulationStatus::Enum result = RkManipulationStatus::Failure;
    if (eventState) result = event->update(time, params, self(), state, *eventState);
    if (result == RkManipulationStatus::Failure) {
      Rk::Print::write(4, "%s::update transition event failed to update.\n", owner);
    }
    return result;
  }

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
  template <class Query, class Fallback>
  decltype(auto) ask(const RkManipulationFrameState& frameState, Query query, Fallback&& fallback) const {
    const State& state = dynamic_cast<const State&>(frameState);
    return RkManipulationListRunner::ask(self().runningFrame(state), state.runningFrameState(), query,
                                         std::forward<Fallback>(fallback));
  }
};
