#include "offsets/RkManipulationOffsetContainer.h"

#include "offsets/RkActualPlacementManipulationOffset.h"
#include "offsets/RkConstantManipulationOffset.h"
#include "offsets/RkFrameRelativeManipulationOffset.h"
#include "offsets/RkInterpolatedManipulationOffset.h"
#include "offsets/RkLinkRelativeManipulationOffset.h"
#include "offsets/RkObjectRelativeManipulationOffset.h"
#include "offsets/RkParametricTranslationManipulationOffset.h"
#include "offsets/RkReferencePoseManipulationOffset.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationOffsetContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffset::classToken(),
                           &RkConstantManipulationOffset::creator);
  registerComponentCreator(RkFrameRelativeManipulationOffset::classToken(),
                           &RkFrameRelativeManipulationOffset::creator);
  registerComponentCreator(RkObjectRelativeManipulationOffset::classToken(),
                           &RkObjectRelativeManipulationOffset::creator);
  registerComponentCreator(RkInterpolatedManipulationOffset::classToken(),
                           &RkInterpolatedManipulationOffset::creator);
  registerComponentCreator(RkLinkRelativeManipulationOffset::classToken(),
                           &RkLinkRelativeManipulationOffset::creator);
  registerComponentCreator(RkActualPlacementManipulationOffset::classToken(),
                           &RkActualPlacementManipulationOffset::creator);
  registerComponentCreator(RkParametricTranslationManipulationOffset::classToken(),
                           &RkParametricTranslationManipulationOffset::creator);
  registerComponentCreator(RkReferencePoseManipulationOffset::classToken(),
                           &RkReferencePoseManipulationOffset::creator);
}
