#include "sequencing/RkManipulationActionContainer.h"

#include "sequencing/RkManipulationSequence.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationActionContainer::classToken() {
  return RkManipulation::RkManipulationActionContainerToken;
}

void RkManipulationActionContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationSequence::classToken(), &RkManipulationSequence::creator);
}
