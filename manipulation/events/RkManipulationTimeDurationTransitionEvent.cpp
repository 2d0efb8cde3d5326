#include "events/RkManipulationTimeDurationTransitionEvent.h"

#include "foundation/RkPrint.h"

RkBoolean RkManipulationTimeDurationTransitionEvent::initState(RkReal time, const RkManipulationUpdateParams&,
                                                               const RkManipulationFrame&,
                                                               State& state) const {
  // Written so that a duration that is not a number is refused too.
  if (!(m_timeDuration.value() > 0.0)) {
    Rk::Print::write(4, "RkManipulationTimeDurationTransitionEvent::init time duration must be positive.\n");
    return false;
  }
  state.setTriggerTime(m_timeDuration.value() + time);
  return true;
}
