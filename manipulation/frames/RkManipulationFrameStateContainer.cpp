#include "frames/RkManipulationFrameStateContainer.h"

#include "frames/RkStandardManipulationFrameState.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationFrameStateContainer::classToken() {
  return RkManipulation::RkManipulationFrameStateContainerToken;
}

void RkManipulationFrameStateContainer::registerComponentCreators() {
  registerComponentCreator(RkStandardManipulationFrameState::classToken(),
                           &RkStandardManipulationFrameState::creator);
}
