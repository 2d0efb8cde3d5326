#include "offsets/RkManipulationOffsetStateContainer.h"

#include "offsets/RkActualPlacementManipulationOffsetState.h"
#include "offsets/RkConstantManipulationOffsetState.h"
#include "offsets/RkFrameRelativeManipulationOffsetState.h"
#include "offsets/RkInterpolatedManipulationOffsetState.h"
#include "offsets/RkLinkRelativeManipulationOffsetState.h"
#include "offsets/RkObjectRelativeManipulationOffsetState.h"
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
}
