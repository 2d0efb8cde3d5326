#include "offsets/RkManipulationOffsetContainer.h"

#include "offsets/RkConstantManipulationOffset.h"
#include "offsets/RkParametricTranslationManipulationOffset.h"
#include "offsets/RkReferencePoseManipulationOffset.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationOffsetContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffset::classToken(),
                           &RkConstantManipulationOffset::creator);
  registerComponentCreator(RkParametricTranslationManipulationOffset::classToken(),
                           &RkParametricTranslationManipulationOffset::creator);
  registerComponentCreator(RkReferencePoseManipulationOffset::classToken(),
                           &RkReferencePoseManipulationOffset::creator);
}
