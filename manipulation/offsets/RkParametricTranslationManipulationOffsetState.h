#pragma once
// The state of an RkParametricTranslationManipulationOffset: its target's state, the translation read from
// the data map when the frame started, and the placement commanded now.
#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkTargetWrappingManipulationOffsetState.h"

class RkParametricTranslationManipulationOffsetState
    : public RkTargetWrappingManipulationOffsetState<
          RkParametricTranslationManipulationOffsetState,
          RkManipulation::RkParametricTranslationManipulationOffsetStateToken> {
 public:
  const RkEndEffectorPlacement& currentOffsetTransformation() const override { return m_currentOffset; }
  // The translation applied in the system frame to the target's goal. Reading it overwrites the current
  // offset with that goal, as stored runs expect; a shared default placement without a target state.
  const RkEndEffectorPlacement& goalOffsetTransformation() const override;

  virtual const RkEndEffectorPlacement& parametricTransform() const { return m_parametricTransform; }
  virtual void setParametricTransform(const RkEndEffectorPlacement& transform) {
    m_parametricTransform = transform;
  }
  virtual const RkEndEffectorPlacement& currentOffset() const { return m_currentOffset; }
  virtual void setCurrentOffset(const RkEndEffectorPlacement& offset) { m_currentOffset = offset; }

 protected:
  void registerComponents() override {
    RkTargetWrappingManipulationOffsetState::registerComponents();
    registerComponent(RkManipulation::RkParametricTransformToken, &m_parametricTransform,
                      "the translation read from the data map when the frame started, m");
    registerComponent(
        RkManipulation::RkParametricCurrentOffsetToken, &m_currentOffset,
        "the placement commanded, the target's shifted by the translation (m, quaternion w x y z)");
  }

 private:
  RkEndEffectorPlacement m_parametricTransform;
  mutable RkEndEffectorPlacement m_currentOffset;
};
