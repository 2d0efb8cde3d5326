#include "events/RkManipulationFrameTransitionEventContainer.h"

#include "events/RkManipulationPlacementAchievedTransitionEvent.h"
#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrameTransitionEventContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationPlacementAchievedTransitionEvent::classToken(),
                           &RkManipulationPlacementAchievedTransitionEvent::creator);
  registerComponentCreator(RkManipulationTimeDurationTransitionEvent::classToken(),
                           &RkManipulationTimeDurationTransitionEvent::creator);
}
