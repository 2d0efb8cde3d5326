#pragma once
// Commands a fixed goal placement, given in the system frame:
//   <constantManipulationOffset><manipulationOffset><placement>
//     <translation>0.4 0 0.3</translation><orientation>0 1 0 0</orientation>
//   </placement></manipulationOffset></constantManipulationOffset>
#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkConstantManipulationOffsetState.h"
#include "offsets/RkManipulationOffsetKind.h"

class RkConstantManipulationOffset
    : public RkManipulationOffsetKind<RkConstantManipulationOffset, RkConstantManipulationOffsetState,
                                      RkManipulation::RkConstantManipulationOffsetToken> {
 public:
  // The offset itself, whatever the state, even one of another kind: an offset wrapping this one as its
  // target may hand on its own state.
  RkEndEffectorPlacement calculateOffsetTransformationInSystemFrame(
      const RkManipulationUpdateParams&, const RkManipulationSequence&, const RkManipulationSequenceState&,
      RkU32, RkU32, const RkManipulationOffsetState&) const override {
    return m_offset;
  }
  const RkEndEffectorPlacement& currentOffsetTransformation(const RkManipulationOffsetState&) const override {
    return m_offset;
  }
  const RkEndEffectorPlacement& goalOffsetTransformation(const RkManipulationOffsetState&) const override {
    return m_offset;
  }
  // The hooks of the kind, which the queries above answer in place of.
  RkEndEffectorPlacement offsetInSystemFrame(const Context&, const State&) const { return m_offset; }
  void setFromOffset(const RkEndEffectorPlacement& placement, const Context&, State&);
  const RkEndEffectorPlacement& currentOffset(const State&) const { return m_offset; }
  const RkEndEffectorPlacement& goalOffset(const State&) const { return m_offset; }

  virtual const RkEndEffectorPlacement& offset() const { return m_offset; }
  virtual void setOffset(const RkEndEffectorPlacement& offset) { m_offset = offset; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkManipulationOffsetToken, &m_offset,
                      "the goal placement of the end effector, in the system frame (m, quaternion w x y z)");
  }

 private:
  RkEndEffectorPlacement m_offset;
};
