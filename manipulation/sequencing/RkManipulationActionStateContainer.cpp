#include "sequencing/RkManipulationActionStateContainer.h"

#include "sequencing/RkManipulationSequenceState.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationActionStateContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationSequenceState::classToken(), &RkManipulationSequenceState::creator);
}
