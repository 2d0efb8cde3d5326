#include "frames/RkManipulationFrameContainer.h"

#include "frames/RkParametricManipulationFrame.h"
#include "frames/RkStandardManipulationFrame.h"
#include "frames/RkSubsequenceManipulationFrame.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrameContainer::registerComponentCreators() {
  registerComponentCreator(RkStandardManipulationFrame::classToken(), &RkStandardManipulationFrame::creator);
  registerComponentCreator(RkSubsequenceManipulationFrame::classToken(),
                           &RkSubsequenceManipulationFrame::creator);
  registerComponentCreator(RkParametricManipulationFrame::classToken(),
                           &RkParametricManipulationFrame::creator);
}
