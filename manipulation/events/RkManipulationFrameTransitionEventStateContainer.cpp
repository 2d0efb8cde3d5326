#include "events/RkManipulationFrameTransitionEventStateContainer.h"

#include "events/RkManipulationTimeDurationTransitionEventState.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrameTransitionEventStateContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationTimeDurationTransitionEventState::classToken(),
                           &RkManipulationTimeDurationTransitionEventState::creator);
}
