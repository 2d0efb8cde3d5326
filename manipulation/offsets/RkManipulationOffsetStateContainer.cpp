#include "offsets/RkManipulationOffsetStateContainer.h"

#include "offsets/RkConstantManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationOffsetStateContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffsetState::classToken(),
                           &RkConstantManipulationOffsetState::creator);
}
