#pragma once
// Commands, every cycle, the placement its end effector actually has, so the goal follows the arm:
//   <actualPlacementManipulationOffset/>
#include "offsets/RkActualPlacementManipulationOffsetState.h"
#include "offsets/RkManipulationOffsetKind.h"

class RkActualPlacementManipulationOffset
    : public RkManipulationOffsetKind<RkActualPlacementManipulationOffset,
                                      RkActualPlacementManipulationOffsetState,
                                      RkManipulation::RkActualPlacementManipulationOffsetToken> {
 public:
  // Reads the actual placement into the state; Complete, so the event alone ends the frame. Real-time safe.
  RkManipulationStatus::Enum updateState(RkReal time, const Context& context, State& state) const;
  RkEndEffectorPlacement offsetInSystemFrame(const Context&, const State& state) const {
    return state.offset();
  }
  void setFromOffset(const RkEndEffectorPlacement& placement, const Context&, State& state) {
    state.setOffset(placement);
  }
  const RkEndEffectorPlacement& currentOffset(const State& state) const {
    return state.currentOffsetTransformation();
  }
  const RkEndEffectorPlacement& goalOffset(const State& state) const {
    return state.currentOffsetTransformation();
  }
  // A state holding the actual placement now.
  RkManipulationOffsetStateContainer calculateEndState(const RkManipulationUpdateParams& params,
                                                       const RkManipulationSequence& sequence,
                                                       const RkManipulationSequenceState& sequenceState,
                                                       RkU32 frameIndex,
                                                       RkU32 endEffectorIndex) const override;
};
