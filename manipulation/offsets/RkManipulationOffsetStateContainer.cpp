#include "offsets/RkManipulationOffsetStateContainer.h"

#include "offsets/RkActualPlacementManipulationOffsetState.h"
#include "offsets/RkConstantManipulationOffsetState.h"
#include "offsets/RkInterpolatedManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationOffsetStateContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffsetState::classToken(),
                           &RkConstantManipulationOffsetState::creator);
  registerComponentCreator(RkInterpolatedManipulationOffsetState::classToken(),
                           &RkInterpolatedManipulationOffsetState::creator);
  registerComponentCreator(RkActualPlacementManipulationOffsetState::classToken(),
                           &RkActualPlacementManipulationOffsetState::creator);
}
