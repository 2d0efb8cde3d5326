#include "frames/RkManipulationFrameStateContainer.h"

#include "frames/RkParametricManipulationFrameState.h"
#include "frames/RkStandardManipulationFrameState.h"
#include "frames/RkSubsequenceManipulationFrameState.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrameStateContainer::registerComponentCreators() {
  registerComponentCreator(RkStandardManipulationFrameState::classToken(),
                           &RkStandardManipulationFrameState::creator);
  registerComponentCreator(RkSubsequenceManipulationFrameState::classToken(),
                           &RkSubsequenceManipulationFrameState::creator);
  registerComponentCreator(RkParametricManipulationFrameState::classToken(),
                           &RkParametricManipulationFrameState::creator);
}
