#pragma once
// The state of an RkParametricTranslationManipulationOffset: its target's state, the translation read from
// the data map when the frame started, and the placement commanded now.
#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkManipulationOffsetState.h"
#include "offsets/RkManipulationOffsetStateContainer.h"

class RkParametricTranslationManipulationOffsetState
    : public RkXmlConcreteClass<RkParametricTranslationManipulationOffsetState, RkManipulationOffsetState,
                                RkManipulation::RkParametricTranslationManipulationOffsetStateToken> {
 public:
  const RkEndEffectorPlacement& currentOffsetTransformation() const override { return m_currentOffset; }
  // The translation applied in the system frame to the target's goal. Reading it overwrites the current
  // offset with that goal, as stored runs expect; a shared default placement without a target state.
  const RkEndEffectorPlacement& goalOffsetTransformation() const override;

  virtual RkManipulationOffsetState* targetOffsetState() { return m_targetOffsetState.element(); }
  virtual const RkManipulationOffsetState* targetOffsetState() const { return m_targetOffsetState.element(); }
  virtual void setTargetOffsetState(const RkManipulationOffsetStateContainer& container) {
    m_targetOffsetState = container;
  }
  virtual const RkEndEffectorPlacement& parametricTransform() const { return m_parametricTransform; }
  virtual void setParametricTransform(const RkEndEffectorPlacement& transform) {
    m_parametricTransform = transform;
  }
  virtual const RkEndEffectorPlacement& currentOffset() const { return m_currentOffset; }
  virtual void setCurrentOffset(const RkEndEffectorPlacement& offset) { m_currentOffset = offset; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkTargetOffsetStateToken, &m_targetOffsetState,
                      "the state of the target offset");
    registerComponent(RkManipulation::RkParametricTransformToken, &m_parametricTransform,
                      "the translation read from the data map when the frame started, m");
    registerComponent(
        RkManipulation::RkParametricCurrentOffsetToken, &m_currentOffset,
        "the placement commanded, the target's shifted by the translation (m, quaternion w x y z)");
  }

 private:
  RkManipulationOffsetStateContainer m_targetOffsetState;
  RkEndEffectorPlacement m_parametricTransform;
  mutable RkEndEffectorPlacement m_currentOffset;
};
