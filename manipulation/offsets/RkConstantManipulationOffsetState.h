#pragma once
// The state of a constant offset: it records nothing, since the goal lives in the offset itself.
#include "offsets/RkManipulationOffsetState.h"
#include "xml/RkXmlConcreteClass.h"

class RkConstantManipulationOffsetState
    : public RkXmlConcreteClass<RkConstantManipulationOffsetState, RkManipulationOffsetState> {
 public:
  bool operator==(const RkConstantManipulationOffsetState& other) const {
    return RkManipulationOffsetState::operator==(other);
  }
  bool operator!=(const RkConstantManipulationOffsetState& other) const { return !(*this == other); }
  static const RkToken& classToken();

  // A shared default placement: ask the offset for its goal.
  const RkEndEffectorPlacement& currentOffsetTransformation() const override;
  const RkEndEffectorPlacement& goalOffsetTransformation() const override;
};
