#include "sequencing/RkManipulationActionContainer.h"

#include "sequencing/RkManipulationSequence.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationActionContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationSequence::classToken(), &RkManipulationSequence::creator);
}
