#pragma once
// Ends its frame a fixed time, in seconds, after the frame started:
//   <timeDurationTransitionEvent><timeDuration>2.5</timeDuration></timeDurationTransitionEvent>
#include "events/RkManipulationFrameTransitionEventKind.h"
#include "events/RkManipulationTimeDurationTransitionEventState.h"

class RkManipulationTimeDurationTransitionEvent
    : public RkManipulationFrameTransitionEventKind<
          RkManipulationTimeDurationTransitionEvent, RkManipulationTimeDurationTransitionEventState,
          RkManipulation::RkManipulationTimeDurationTransitionEventToken> {
 public:
  // Turns the duration into an absolute trigger time; a duration that is not positive is refused.
  RkBoolean initState(RkReal time, const Context&, State& state) const;
  // Complete from the cycle whose time reaches the trigger time on. Real-time safe.
  RkManipulationStatus::Enum updateState(RkReal time, const Context&, State& state) const {
    return time >= state.triggerTime() ? RkManipulationStatus::Complete : RkManipulationStatus::InProgress;
  }

  virtual RkReal timeDuration() const { return m_timeDuration; }
  virtual void setTimeDuration(RkReal duration) { m_timeDuration = duration; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkTimeDurationToken, &m_timeDuration, "how long the frame lasts, s");
  }

 private:
  RkXmlBasicType<RkReal> m_timeDuration;
};
