#pragma once
// What most offset kinds share, written once: Derived, whose state class is State and element name Token,
// gets init and calculateEndState (a fresh State), an update that is Complete at once, no data-map names,
// and the remaining operations handed to it with its own state class and an RkManipulationOffsetContext.
// Derived supplies offsetInSystemFrame, setFromOffset, currentOffset and goalOffset, and may replace
// initState and updateState.
#include "offsets/RkManipulationOffset.h"
#include "offsets/RkManipulationOffsetContext.h"
#include "offsets/RkManipulationOffsetStateContainer.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlConcreteClass.h"

template <class Derived, class StateClass, const RkToken& Token>
class RkManipulationOffsetKind : public RkXmlConcreteClass<Derived, RkManipulationOffset, Token> {
 public:
  typedef StateClass State;
  typedef RkManipulationOffsetContext Context;

  void findDataMapReferences(std::map<std::string, RkReal>&) const override {}
  RkManipulationOffsetStateContainer calculateEndState(const RkManipulationUpdateParams&,
                                                       const RkManipulationSequence&,
                                                       const RkManipulationSequenceState&, RkU32,
                                                       RkU32) const override {
    RkManipulationOffsetStateContainer container;
    container.template setNewElement<State>();
    return container;
  }
  RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                 const RkManipulationSequence& sequence, const RkManipulationSequenceState& sequenceState,
                 RkU32 frameIndex, RkU32 endEffectorIndex,
                 RkManipulationOffsetStateContainer& stateContainer) const override {
    State& state = stateContainer.template setNewElement<State>();
    return self().initState(time, {params, sequence, sequenceState, frameIndex, endEffectorIndex}, state);
  }
  // Real-time safe when Derived's updateState is.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    const RkManipulationSequence& sequence,
                                    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                                    RkU32 endEffectorIndex, RkManipulationOffsetState& state) const override {
    return self().updateState(time, {params, sequence, sequenceState, frameIndex, endEffectorIndex},
                              dynamic_cast<State&>(state));
  }
  RkEndEffectorPlacement calculateOffsetTransformationInSystemFrame(
      const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
      const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 endEffectorIndex,
      const RkManipulationOffsetState& state) const override {
    return self().offsetInSystemFrame({params, sequence, sequenceState, frameIndex, endEffectorIndex},
                                      dynamic_cast<const State&>(state));
  }
  void setFromOffsetTransformationInSystemFrame(const RkEndEffectorPlacement& placement,
                                                const RkManipulationUpdateParams& params,
                                                const RkManipulationSequence& sequence,
                                                const RkManipulationSequenceState& sequenceState,
                                                RkU32 frameIndex, RkU32 endEffectorIndex,
                                                RkManipulationOffsetState& state) override {
    static_cast<Derived&>(*this).setFromOffset(
        placement, {params, sequence, sequenceState, frameIndex, endEffectorIndex},
        dynamic_cast<State&>(state));
  }
  const RkEndEffectorPlacement& currentOffsetTransformation(
      const RkManipulationOffsetState& state) const override {
    return self().currentOffset(dynamic_cast<const State&>(state));
  }
  const RkEndEffectorPlacement& goalOffsetTransformation(
      const RkManipulationOffsetState& state) const override {
    return self().goalOffset(dynamic_cast<const State&>(state));
  }

 protected:
  // The defaults Derived may replace: nothing to prepare, and nothing left to do once started.
  RkBoolean initState(RkReal, const Context&, State&) const { return true; }
  RkManipulationStatus::Enum updateState(RkReal, const Context&, State&) const {
    return RkManipulationStatus::Complete;
  }

 private:
  const Derived& self() const { return static_cast<const Derived&>(*this); }
};
