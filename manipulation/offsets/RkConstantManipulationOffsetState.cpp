#include "offsets/RkConstantManipulationOffsetState.h"

#include "sequencing/RkManipulationNullObjects.h"

const RkEndEffectorPlacement& RkConstantManipulationOffsetState::currentOffsetTransformation() const {
  return RkManipulationNullObjects::placement();
}

const RkEndEffectorPlacement& RkConstantManipulationOffsetState::goalOffsetTransformation() const {
  return RkManipulationNullObjects::placement();
}
