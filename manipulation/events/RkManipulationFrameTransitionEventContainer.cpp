#include "events/RkManipulationFrameTransitionEventContainer.h"

#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrameTransitionEventContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationTimeDurationTransitionEvent::classToken(),
                           &RkManipulationTimeDurationTransitionEvent::creator);
}
