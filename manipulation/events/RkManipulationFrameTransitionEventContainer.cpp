#include "events/RkManipulationFrameTransitionEventContainer.h"

#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationFrameTransitionEventContainer::classToken() {
  return RkManipulation::RkManipulationFrameTransitionEventContainerToken;
}

void RkManipulationFrameTransitionEventContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationTimeDurationTransitionEvent::classToken(),
                           &RkManipulationTimeDurationTransitionEvent::creator);
}
