#include "frames/RkManipulationFrameContainer.h"

#include "frames/RkStandardManipulationFrame.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationFrameContainer::classToken() {
  return RkManipulation::RkManipulationFrameContainerToken;
}

void RkManipulationFrameContainer::registerComponentCreators() {
  registerComponentCreator(RkStandardManipulationFrame::classToken(), &RkStandardManipulationFrame::creator);
}
