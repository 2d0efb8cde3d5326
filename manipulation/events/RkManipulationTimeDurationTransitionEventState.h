#pragma once
// The state of a time-duration event: the absolute time, in seconds, at which it fires.
#include "events/RkManipulationFrameTransitionEventState.h"

class RkManipulationTimeDurationTransitionEventState
    : public RkXmlConcreteClass<RkManipulationTimeDurationTransitionEventState,
                                RkManipulationFrameTransitionEventState,
                                RkManipulation::RkManipulationTimeDurationTransitionEventStateToken> {
 public:
  virtual RkReal triggerTime() const { return m_triggerTime; }
  virtual void setTriggerTime(RkReal time) { m_triggerTime = time; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkTriggerTimeToken, &m_triggerTime,
                      "the time at which the event fires, s");
  }

 private:
  RkXmlBasicType<RkReal> m_triggerTime;
};
