#include "sequencing/RkManipulationActionStateContainer.h"

#include "sequencing/RkManipulationSequenceState.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationActionStateContainer::classToken() {
  return RkManipulation::RkManipulationActionStateContainerToken;
}

void RkManipulationActionStateContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationSequenceState::classToken(), &RkManipulationSequenceState::creator);
}
