#include "frames/RkManipulationFrameStateContainer.h"

#include "frames/RkStandardManipulationFrameState.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrameStateContainer::registerComponentCreators() {
  registerComponentCreator(RkStandardManipulationFrameState::classToken(),
                           &RkStandardManipulationFrameState::creator);
}
