#pragma once
// Moves an end effector from where it actually stands when its frame starts to the goal of a target
// offset, linearly over the interpolation time; the target keeps running, so a moving goal is followed:
//   <interpolatedManipulationOffset><targetOffset><constantManipulationOffset><manipulationOffset>
//     <placement><translation>0.4 0 0.3</translation><orientation>0 1 0 0</orientation></placement>
//   </manipulationOffset></constantManipulationOffset></targetOffset>
//   <interpolationTime>2</interpolationTime></interpolatedManipulationOffset>
#include "offsets/RkInterpolatedManipulationOffsetState.h"
#include "offsets/RkTargetWrappingManipulationOffset.h"

class RkInterpolatedManipulationOffset
    : public RkTargetWrappingManipulationOffset<RkInterpolatedManipulationOffset,
                                                RkInterpolatedManipulationOffsetState,
                                                RkManipulation::RkInterpolatedManipulationOffsetToken> {
 public:
  static const char* className() { return "RkInterpolatedManipulationOffset"; }
  // Starts the target and records the actual placement and the time it starts from.
  RkBoolean initState(RkReal time, const Context& context, State& state) const;
  // Advances the target and blends towards its current placement. Real-time safe.
  RkManipulationStatus::Enum updateState(RkReal time, const Context& context, State& state) const;
  // The target's own value, asked with this offset's state (not the target's) as it is given.
  RkEndEffectorPlacement offsetInSystemFrame(const Context& context, const State& state) const {
    return targetInSystemFrame(context, state);
  }
  const RkEndEffectorPlacement& currentOffset(const State& state) const {
    return state.currentOffsetTransformation();
  }
  // The target's goal; the current placement when there is no target to ask.
  const RkEndEffectorPlacement& goalOffset(const State& state) const;
  // The target's end state, starting from the actual placement now, at time 0.
  RkManipulationOffsetStateContainer calculateEndState(const RkManipulationUpdateParams& params,
                                                       const RkManipulationSequence& sequence,
                                                       const RkManipulationSequenceState& sequenceState,
                                                       RkU32 frameIndex,
                                                       RkU32 endEffectorIndex) const override;

  // How long the approach takes, in the unit of the update times.
  virtual RkReal interpolationTime() const { return m_interpolationTime; }
  virtual void setInterpolationTime(RkReal time) { m_interpolationTime = time; }

 protected:
  void registerComponents() override {
    RkTargetWrappingManipulationOffset::registerComponents();
    registerComponent(RkManipulation::RkInterpolationTimeToken, &m_interpolationTime,
                      "how long the blend from the actual placement to the target's goal takes, s");
  }

 private:
  RkXmlBasicType<RkReal> m_interpolationTime;
};
