#pragma once
// Sends the end effector to a named pose of the pose set handed in with the update parameters, looked up
// once when the frame starts. A missing pose set or pose fails init without a line of its own.
//   <referencePoseManipulationOffset><name>pick</name></referencePoseManipulationOffset>
// Its state is never read back: a run resumed from a written state in the middle of a frame holding this
// offset finds the offset's state missing and its frame fails; resume such a run at a frame start, where a
// fresh init looks the pose up again, in the pose set then in force.
#include <string>

#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkManipulationOffsetKind.h"
#include "offsets/RkReferencePoseManipulationOffsetState.h"

class RkReferencePoseManipulationOffset
    : public RkManipulationOffsetKind<RkReferencePoseManipulationOffset,
                                      RkReferencePoseManipulationOffsetState,
                                      RkManipulation::RkReferencePoseManipulationOffsetToken> {
 public:
  // Holds the named pose; false when there is no pose set or it lacks the name.
  RkBoolean initState(RkReal time, const Context& context, State& state) const;
  // The pose found at init; the pose set is not asked again.
  RkEndEffectorPlacement offsetInSystemFrame(const Context&, const State& state) const {
    return state.currentOffsetTransformation();
  }
  // A pose is changed in the pose set, not here.
  void setFromOffset(const RkEndEffectorPlacement&, const Context&, State&) {}
  const RkEndEffectorPlacement& currentOffset(const State& state) const { return state.offset(); }
  const RkEndEffectorPlacement& goalOffset(const State& state) const { return state.offset(); }

  virtual const std::string& poseName() const { return m_poseName.value(); }
  virtual void setPoseName(const std::string& name) { m_poseName = name; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkNameToken, &m_poseName,
                      "the name of the pose, in the pose set handed to the run, that is the goal");
  }

 private:
  RkXmlBasicType<std::string> m_poseName;
};
