#include "events/RkManipulationTimeDurationTransitionEvent.h"

#include "events/RkManipulationFrameTransitionEventStateContainer.h"
#include "events/RkManipulationTimeDurationTransitionEventState.h"
#include "foundation/RkPrint.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationTimeDurationTransitionEvent::classToken() {
  return RkManipulation::RkManipulationTimeDurationTransitionEventToken;
}

void RkManipulationTimeDurationTransitionEvent::registerComponents() {
  registerComponent(RkManipulation::RkTimeDurationToken, &m_timeDuration);
}

RkManipulationFrameTransitionEventStateContainer RkManipulationTimeDurationTransitionEvent::calculateEndState(
    const RkManipulationUpdateParams&, const RkManipulationFrame&) const {
  RkManipulationFrameTransitionEventStateContainer container;
  container.setElement(RkManipulationTimeDurationTransitionEventState());
  return container;
}

RkBoolean RkManipulationTimeDurationTransitionEvent::init(
    RkReal time, const RkManipulationUpdateParams&, const RkManipulationFrame&,
    RkManipulationFrameTransitionEventStateContainer& stateContainer) const {
  stateContainer.setElement(RkManipulationTimeDurationTransitionEventState());
  auto* state = dynamic_cast<RkManipulationTimeDurationTransitionEventState*>(stateContainer.element());
  // Written so that a duration that is not a number is refused too.
  if (!(m_timeDuration.value() > 0.0)) {
    Rk::Print::write(4, "RkManipulationTimeDurationTransitionEvent::init time duration must be positive.\n");
    return false;
  }
  state->setTriggerTime(m_timeDuration.value() + time);
  return true;
}

RkManipulationStatus::Enum RkManipulationTimeDurationTransitionEvent::update(
    RkReal time, const RkManipulationUpdateParams&, const RkManipulationFrame&,
    const RkManipulationFrameState&, RkManipulationFrameTransitionEventState& state) const {
  const auto& timed = dynamic_cast<const RkManipulationTimeDurationTransitionEventState&>(state);
  return time >= timed.triggerTime() ? RkManipulationStatus::Complete : RkManipulationStatus::InProgress;
}
