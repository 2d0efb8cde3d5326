#pragma once
// What an offset that wraps a target offset shares with the others of its sort, written once: the target,
// held in a single-element container (the first field), started and run underneath the wrapper with its state
// kept in the wrapper's state, and a replacement placement handed on to it. Derived names itself in the lines
// these print through a static className().
#include "foundation/RkPrint.h"
#include "offsets/RkManipulationOffsetContainer.h"
#include "offsets/RkManipulationOffsetKind.h"

template <class Derived, class StateClass, const RkToken& Token>
class RkTargetWrappingManipulationOffset : public RkManipulationOffsetKind<Derived, StateClass, Token> {
 public:
  typedef StateClass State;
  typedef RkManipulationOffsetContext Context;

  virtual const RkManipulationOffsetContainer& targetOffset() const { return m_targetOffset; }
  virtual void setTargetOffset(const RkManipulationOffsetContainer& target) { m_targetOffset = target; }

  // Handed to the target with its state; nothing without either.
  void setFromOffset(const RkEndEffectorPlacement& placement, const Context& context, State& state) {
    RkManipulationOffset* target = m_targetOffset.element();
    RkManipulationOffsetState* targetState = state.targetOffsetState();
    if (!target || !targetState) return;
    target->setFromOffsetTransformationInSystemFrame(placement, context.params, context.sequence,
                                                     context.sequenceState, context.frameIndex,
                                                     context.endEffectorIndex, *targetState);
  }

 protected:
  void registerComponents() override {
    this->registerComponent(RkManipulation::RkTargetOffsetToken, &m_targetOffset,
                            "the offset whose goal this one starts from and follows");
  }

  // Starts the target into state; false, with the line naming Derived, when there is none or it fails.
  RkBoolean initTarget(RkReal time, const Context& context, State& state) const {
    const RkManipulationOffset* target = m_targetOffset.element();
    if (!target) {
      Rk::Print::write(4, "%s::init missing target offset container element.\n", Derived::className());
      return false;
    }
    RkManipulationOffsetStateContainer targetState;
    if (!target->init(time, context.params, context.sequence, context.sequenceState, context.frameIndex,
                      context.endEffectorIndex, targetState)) {
      Rk::Print::write(4, "%s::init target offset failed to initialize.\n", Derived::className());
      return false;
    }
    state.setTargetOffsetState(targetState);
    return true;
  }
  // Updates the target and gives its status; Failure, with its line, without a target or its state, or when
  // the target fails. Real-time safe when the target's update is.
  RkManipulationStatus::Enum updateTarget(RkReal time, const Context& context, State& state) const {
    const RkManipulationOffset* target = m_targetOffset.element();
    if (!target) {
      Rk::Print::write(4, "%s::update missing target offset container element.\n", Derived::className());
      return RkManipulationStatus::Failure;
    }
    RkManipulationOffsetState* targetState = state.targetOffsetState();
    if (!targetState) {
      Rk::Print::write(4, "%s::update missing target offset state.\n", Derived::className());
      return RkManipulationStatus::Failure;
    }
    const RkManipulationStatus::Enum status =
        target->update(time, context.params, context.sequence, context.sequenceState, context.frameIndex,
                       context.endEffectorIndex, *targetState);
    if (status == RkManipulationStatus::Failure)
      Rk::Print::write(4, "%s::update target offset failed to update.\n", Derived::className());
    return status;
  }
  // The target's current placement; only after updateTarget succeeded.
  const RkEndEffectorPlacement& targetCurrentOffset(const State& state) const {
    return m_targetOffset.element()->currentOffsetTransformation(*state.targetOffsetState());
  }
  // The target's placement in the system frame, asked with handedOn; a default placement without a target.
  RkEndEffectorPlacement targetInSystemFrame(const Context& context,
                                             const RkManipulationOffsetState& handedOn) const {
    const RkManipulationOffset* target = m_targetOffset.element();
    if (!target) return RkEndEffectorPlacement();
    return target->calculateOffsetTransformationInSystemFrame(context.params, context.sequence,
                                                              context.sequenceState, context.frameIndex,
                                                              context.endEffectorIndex, handedOn);
  }
  // A fresh state of this kind in container, holding the target's end state when there is a target.
  State& endStateWithTarget(const Context& context, RkManipulationOffsetStateContainer& container) const {
    State& state = container.template setNewElement<State>();
    if (const RkManipulationOffset* target = m_targetOffset.element()) {
      state.setTargetOffsetState(target->calculateEndState(context.params, context.sequence,
                                                           context.sequenceState, context.frameIndex,
                                                           context.endEffectorIndex));
    }
    return state;
  }

 private:
  RkManipulationOffsetContainer m_targetOffset;
};
