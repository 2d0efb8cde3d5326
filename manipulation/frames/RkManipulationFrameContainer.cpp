#include "frames/RkManipulationFrameContainer.h"

#include "frames/RkStandardManipulationFrame.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrameContainer::registerComponentCreators() {
  registerComponentCreator(RkStandardManipulationFrame::classToken(), &RkStandardManipulationFrame::creator);
}
