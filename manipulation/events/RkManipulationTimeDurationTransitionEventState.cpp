#include "events/RkManipulationTimeDurationTransitionEventState.h"

void RkManipulationTimeDurationTransitionEventState::setTriggerTime(RkReal time) {
  m_triggerTime = time;
}
