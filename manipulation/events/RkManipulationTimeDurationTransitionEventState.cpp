#include "events/RkManipulationTimeDurationTransitionEventState.h"

#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationTimeDurationTransitionEventState::classToken() {
  return RkManipulation::RkManipulationTimeDurationTransitionEventStateToken;
}

void RkManipulationTimeDurationTransitionEventState::registerComponents() {
  registerComponent(RkManipulation::RkTriggerTimeToken, &m_triggerTime);
}
