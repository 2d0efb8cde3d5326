#pragma once
// The state of a constant offset: it records nothing, since the goal lives in the offset itself.
#include "offsets/RkManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlConcreteClass.h"

class RkConstantManipulationOffsetState
    : public RkXmlConcreteClass<RkConstantManipulationOffsetState, RkManipulationOffsetState,
                                RkManipulation::RkConstantManipulationOffsetStateToken> {
 public:
  // A shared default placement: ask the offset for its goal.
  const RkEndEffectorPlacement& currentOffsetTransformation() const override;
  const RkEndEffectorPlacement& goalOffsetTransformation() const override;
};
