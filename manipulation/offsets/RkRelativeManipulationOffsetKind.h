#pragma once
// What the relative offset kinds share, written once: Derived, whose state class is State and element name
// Token, gets init (refusing an unusable manipulation frame), an update that recomputes the goal, the goal
// computed afresh, its inverse, and the end state. Derived supplies calculatePrimaryFrame(params, sequence,
// frameIndex, endEffectorIndex, frame) or its own primaryFrame(context, state, frame), and
// reportInvalidManipulationFrame(problem); it may replace start, update, goalFromPrimaryFrame and
// relativeOffsetFor.
#include "offsets/RkManipulationOffsetContext.h"
#include "offsets/RkManipulationOffsetStateContainer.h"
#include "offsets/RkRelativeManipulationOffset.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlConcreteClass.h"

template <class Derived, class StateClass, const RkToken& Token>
class RkRelativeManipulationOffsetKind
    : public RkXmlConcreteClass<Derived, RkRelativeManipulationOffset, Token> {
 public:
  typedef StateClass State;
  typedef RkManipulationOffsetContext Context;

  void findDataMapReferences(std::map<std::string, RkReal>&) const override {}
  // A state holding the goal computed now; an empty container when there is no primary frame.
  RkManipulationOffsetStateContainer calculateEndState(const RkManipulationUpdateParams& params,
                                                       const RkManipulationSequence& sequence,
                                                       const RkManipulationSequenceState& sequenceState,
                                                       RkU32 frameIndex,
                                                       RkU32 endEffectorIndex) const override {
    RkManipulationOffsetStateContainer container;
    State state;
    if (storeGoal({params, sequence, sequenceState, frameIndex, endEffectorIndex}, state)) {
      container.setElement(state);
    }
    return container;
  }
  RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                 const RkManipulationSequence& sequence, const RkManipulationSequenceState& sequenceState,
                 RkU32 frameIndex, RkU32 endEffectorIndex,
                 RkManipulationOffsetStateContainer& stateContainer) const override {
    State& state = stateContainer.template setNewElement<State>();
    const std::string problem = this->validManipulationFrame();
    if (!problem.empty()) {
      self().reportInvalidManipulationFrame(problem);
      return false;
    }
    return self().start(time, {params, sequence, sequenceState, frameIndex, endEffectorIndex}, state);
  }
  // The goal follows the primary frame: recomputed every cycle. Real-time safe.
  RkManipulationStatus::Enum update(RkReal, const RkManipulationUpdateParams& params,
                                    const RkManipulationSequence& sequence,
                                    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                                    RkU32 endEffectorIndex, RkManipulationOffsetState& state) const override {
    State& own = dynamic_cast<State&>(state);
    return storeGoal({params, sequence, sequenceState, frameIndex, endEffectorIndex}, own)
               ? RkManipulationStatus::Complete
               : RkManipulationStatus::Failure;
  }
  // Any kind of state is accepted here and below: an offset wrapping this one may hand over its own.
  RkEndEffectorPlacement calculateOffsetTransformationInSystemFrame(
      const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
      const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 endEffectorIndex,
      const RkManipulationOffsetState& state) const override {
    RkCoordinateSystemTransformation primaryFrame;
    if (!self().primaryFrame({params, sequence, sequenceState, frameIndex, endEffectorIndex}, state,
                             primaryFrame)) {
      return RkEndEffectorPlacement();
    }
    return self().goalFromPrimaryFrame(primaryFrame);
  }
  // Leaves the offset as it is when there is no primary frame.
  void setFromOffsetTransformationInSystemFrame(const RkEndEffectorPlacement& placement,
                                                const RkManipulationUpdateParams& params,
                                                const RkManipulationSequence& sequence,
                                                const RkManipulationSequenceState& sequenceState,
                                                RkU32 frameIndex, RkU32 endEffectorIndex,
                                                RkManipulationOffsetState& state) override {
    RkCoordinateSystemTransformation primaryFrame;
    if (!self().primaryFrame({params, sequence, sequenceState, frameIndex, endEffectorIndex}, state,
                             primaryFrame)) {
      return;
    }
    this->setRelativeOffset(self().relativeOffsetFor(placement.placement(), primaryFrame));
  }

  // The primary frame of the kinds that read it off the arm: their calculatePrimaryFrame.
  RkBoolean primaryFrame(const Context& context, const RkManipulationOffsetState&,
                         RkCoordinateSystemTransformation& primaryFrame) const {
    return self().calculatePrimaryFrame(context.params, context.sequence, context.frameIndex,
                                        context.endEffectorIndex, primaryFrame);
  }
  // The start of a frame: the kind's own update, which must not fail.
  RkBoolean start(RkReal time, const Context& context, State& state) const {
    return this->update(time, context.params, context.sequence, context.sequenceState, context.frameIndex,
                        context.endEffectorIndex, state) != RkManipulationStatus::Failure;
  }

 protected:
  // Puts the goal for the primary frame into state; false, state untouched, without a primary frame.
  RkBoolean storeGoal(const Context& context, State& state) const {
    RkCoordinateSystemTransformation primaryFrame;
    if (!self().primaryFrame(context, state, primaryFrame)) return false;
    state.setOffset(self().goalFromPrimaryFrame(primaryFrame));
    return true;
  }

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
};
