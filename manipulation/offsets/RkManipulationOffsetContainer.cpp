#include "offsets/RkManipulationOffsetContainer.h"

#include "offsets/RkConstantManipulationOffset.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationOffsetContainer::classToken() {
  return RkManipulation::RkManipulationOffsetContainerToken;
}

void RkManipulationOffsetContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffset::classToken(),
                           &RkConstantManipulationOffset::creator);
}
