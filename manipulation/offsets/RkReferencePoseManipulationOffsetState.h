#pragma once
// The state of an RkReferencePoseManipulationOffset: the pose its init found in the pose set. It writes no
// fields and no state container reads it back: a run read back from XML rebuilds it by a fresh init.
#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkManipulationOffsetState.h"

class RkReferencePoseManipulationOffsetState
    : public RkXmlConcreteClass<RkReferencePoseManipulationOffsetState, RkManipulationOffsetState,
                                RkManipulation::RkReferencePoseManipulationOffsetStateToken> {
 public:
  const RkEndEffectorPlacement& currentOffsetTransformation() const override { return m_offset; }
  const RkEndEffectorPlacement& goalOffsetTransformation() const override { return m_offset; }

  virtual const RkEndEffectorPlacement& offset() const { return m_offset; }
  virtual void setOffset(const RkEndEffectorPlacement& offset) { m_offset = offset; }

 private:
  RkEndEffectorPlacement m_offset;
};
