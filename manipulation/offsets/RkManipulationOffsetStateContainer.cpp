#include "offsets/RkManipulationOffsetStateContainer.h"

#include "offsets/RkConstantManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationOffsetStateContainer::classToken() {
  return RkManipulation::RkManipulationOffsetStateContainerToken;
}

void RkManipulationOffsetStateContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffsetState::classToken(),
                           &RkConstantManipulationOffsetState::creator);
}
