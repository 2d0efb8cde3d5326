#include "events/RkManipulationFrameTransitionEventStateContainer.h"

#include "events/RkManipulationTimeDurationTransitionEventState.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationFrameTransitionEventStateContainer::classToken() {
  return RkManipulation::RkManipulationFrameTransitionEventStateContainerToken;
}

void RkManipulationFrameTransitionEventStateContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationTimeDurationTransitionEventState::classToken(),
                           &RkManipulationTimeDurationTransitionEventState::creator);
}
