#include "events/RkManipulationFrameTransitionEventStateContainer.h"

#include "events/RkManipulationPlacementAchievedTransitionEventState.h"
#include "events/RkManipulationTimeDurationTransitionEventState.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrameTransitionEventStateContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationPlacementAchievedTransitionEventState::classToken(),
                           &RkManipulationPlacementAchievedTransitionEventState::creator);
  registerComponentCreator(RkManipulationTimeDurationTransitionEventState::classToken(),
                           &RkManipulationTimeDurationTransitionEventState::creator);
}
