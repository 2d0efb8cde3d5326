#include "offsets/RkManipulationOffsetStateContainer.h"

#include "offsets/RkConstantManipulationOffsetState.h"
#include "offsets/RkParametricTranslationManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationOffsetStateContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffsetState::classToken(),
                           &RkConstantManipulationOffsetState::creator);
  registerComponentCreator(RkParametricTranslationManipulationOffsetState::classToken(),
                           &RkParametricTranslationManipulationOffsetState::creator);
  // The reference-pose offset's state is left out on purpose: it is rebuilt by init, never read back.
}
