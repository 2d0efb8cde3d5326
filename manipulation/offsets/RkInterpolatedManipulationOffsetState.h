#pragma once
// The state of an interpolated offset: its target's own state, when the approach started, the actual
// placement it started from and the placement it commands now.
#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkTargetWrappingManipulationOffsetState.h"

class RkInterpolatedManipulationOffsetState
    : public RkTargetWrappingManipulationOffsetState<
          RkInterpolatedManipulationOffsetState, RkManipulation::RkInterpolatedManipulationOffsetStateToken> {
 public:
  // The placement commanded now.
  const RkEndEffectorPlacement& currentOffsetTransformation() const override { return m_currentOffset; }
  // The target's goal, or a shared default placement without a target state.
  const RkEndEffectorPlacement& goalOffsetTransformation() const override;

  virtual RkReal initializationTime() const { return m_initializationTime; }
  virtual void setInitializationTime(RkReal time) { m_initializationTime = time; }
  virtual const RkEndEffectorPlacement& initialOffset() const { return m_initialOffset; }
  virtual void setInitialOffset(const RkEndEffectorPlacement& offset) { m_initialOffset = offset; }
  virtual const RkEndEffectorPlacement& currentOffset() const { return m_currentOffset; }
  virtual void setCurrentOffset(const RkEndEffectorPlacement& offset) { m_currentOffset = offset; }

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<RkReal> m_initializationTime;
  RkEndEffectorPlacement m_initialOffset;
  RkEndEffectorPlacement m_currentOffset;
};
