#include "offsets/RkConstantManipulationOffsetState.h"

#include "sequencing/RkManipulationNullObjects.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkConstantManipulationOffsetState::classToken() {
  return RkManipulation::RkConstantManipulationOffsetStateToken;
}

const RkEndEffectorPlacement& RkConstantManipulationOffsetState::currentOffsetTransformation() const {
  return RkManipulationNullObjects::placement();
}

const RkEndEffectorPlacement& RkConstantManipulationOffsetState::goalOffsetTransformation() const {
  return RkManipulationNullObjects::placement();
}
