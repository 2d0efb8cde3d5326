#include "offsets/RkManipulationOffsetContainer.h"

#include "offsets/RkActualPlacementManipulationOffset.h"
#include "offsets/RkConstantManipulationOffset.h"
#include "offsets/RkInterpolatedManipulationOffset.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationOffsetContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffset::classToken(),
                           &RkConstantManipulationOffset::creator);
  registerComponentCreator(RkInterpolatedManipulationOffset::classToken(),
                           &RkInterpolatedManipulationOffset::creator);
  registerComponentCreator(RkActualPlacementManipulationOffset::classToken(),
                           &RkActualPlacementManipulationOffset::creator);
}
