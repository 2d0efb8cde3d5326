#pragma once
// The state of an actual-placement offset: the actual placement of its end effector read at the last
// update, which is both what it commands and what it aims at.
#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkManipulationOffsetState.h"

class RkActualPlacementManipulationOffsetState
    : public RkXmlConcreteClass<RkActualPlacementManipulationOffsetState, RkManipulationOffsetState,
                                RkManipulation::RkActualPlacementManipulationOffsetStateToken> {
 public:
  const RkEndEffectorPlacement& currentOffsetTransformation() const override { return m_offset; }
  const RkEndEffectorPlacement& goalOffsetTransformation() const override { return m_offset; }

  virtual const RkEndEffectorPlacement& offset() const { return m_offset; }
  virtual void setOffset(const RkEndEffectorPlacement& offset) { m_offset = offset; }

 protected:
  void registerComponents() override { registerComponent(RkManipulation::RkActualOffsetToken, &m_offset); }

 private:
  RkEndEffectorPlacement m_offset;
};
