#include "offsets/RkManipulationOffsetStateContainer.h"

#include "offsets/RkActualPlacementManipulationOffsetState.h"
#include "offsets/RkConstantManipulationOffsetState.h"
#include "offsets/RkFrameRelativeManipulationOffsetState.h"
#include "offsets/RkInterpolatedManipulationOffsetState.h"
#include "offsets/RkLinkRelativeManipulationOffsetState.h"
#include "offsets/RkObjectRelativeManipulationOffsetState.h"
#include "offsets/RkParametricTranslationManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationOffsetStateContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffsetState::classToken(),
                           &RkConstantManipulationOffsetState::creator);
  registerComponentCreator(RkFrameRelativeManipulationOffsetState::classToken(),
                           &RkFrameRelativeManipulationOffsetState::creator);
  registerComponentCreator(RkObjectRelativeManipulationOffsetState::classToken(),
                           &RkObjectRelativeManipulationOffsetState::creator);
  registerComponentCreator(RkInterpolatedManipulationOffsetState::classToken(),
                           &RkInterpolatedManipulationOffsetState::creator);
  registerComponentCreator(RkLinkRelativeManipulationOffsetState::classToken(),
                           &RkLinkRelativeManipulationOffsetState::creator);
  registerComponentCreator(RkActualPlacementManipulationOffsetState::classToken(),
                           &RkActualPlacementManipulationOffsetState::creator);
  registerComponentCreator(RkParametricTranslationManipulationOffsetState::classToken(),
                           &RkParametricTranslationManipulationOffsetState::creator);
  // The reference-pose offset's state is left out on purpose: it is rebuilt by init, never read back.
}
