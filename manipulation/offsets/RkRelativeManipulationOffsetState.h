#pragma once
// The state shared by the offsets that place an end effector relative to a primary frame: the goal, in the
// system frame, as last computed. Abstract; each relative kind has its own state class.
#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkManipulationOffsetState.h"

class RkRelativeManipulationOffsetState : public RkManipulationOffsetState {
 public:
  // The offset commands its goal at once: current and goal placements are both offset.
  const RkEndEffectorPlacement& currentOffsetTransformation() const override { return m_offset; }
  const RkEndEffectorPlacement& goalOffsetTransformation() const override { return m_offset; }

  virtual const RkEndEffectorPlacement& offset() const { return m_offset; }
  virtual void setOffset(const RkEndEffectorPlacement& offset) { m_offset = offset; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkRelativeCurrentOffsetToken, &m_offset,
                      "the goal placement as last computed, in the system frame (m, quaternion w x y z)");
  }

 private:
  RkEndEffectorPlacement m_offset;
};
