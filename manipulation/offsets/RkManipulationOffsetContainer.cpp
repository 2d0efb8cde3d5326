#include "offsets/RkManipulationOffsetContainer.h"

#include "offsets/RkConstantManipulationOffset.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationOffsetContainer::registerComponentCreators() {
  registerComponentCreator(RkConstantManipulationOffset::classToken(),
                           &RkConstantManipulationOffset::creator);
}
