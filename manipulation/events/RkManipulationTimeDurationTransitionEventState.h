#pragma once
// The state of a time-duration event: the absolute time, in seconds, at which it fires.
#include "events/RkManipulationFrameTransitionEventState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"

class RkManipulationTimeDurationTransitionEventState
    : public RkXmlConcreteClass<RkManipulationTimeDurationTransitionEventState,
                                RkManipulationFrameTransitionEventState,
                                RkManipulation::RkManipulationTimeDurationTransitionEventStateToken> {
 public:
  virtual RkReal triggerTime() const { return m_triggerTime; }
  virtual void setTriggerTime(RkReal time);

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkTriggerTimeToken, &m_triggerTime);
  }

 private:
  RkXmlBasicType<RkReal> m_triggerTime;
};
