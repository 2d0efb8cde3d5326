#pragma once
// The state of a time-duration event: the absolute time at which it fires.
#include "events/RkManipulationFrameTransitionEventState.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"

class RkManipulationTimeDurationTransitionEventState
    : public RkXmlConcreteClass<RkManipulationTimeDurationTransitionEventState,
                                RkManipulationFrameTransitionEventState> {
 public:
  bool operator==(const RkManipulationTimeDurationTransitionEventState& other) const {
    return RkManipulationFrameTransitionEventState::operator==(other) && m_triggerTime == other.m_triggerTime;
  }
  bool operator!=(const RkManipulationTimeDurationTransitionEventState& other) const {
    return !(*this == other);
  }
  static const RkToken& classToken();

  virtual RkReal triggerTime() const { return m_triggerTime; }
  virtual void setTriggerTime(RkReal time) { m_triggerTime = time; }

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<RkReal> m_triggerTime;
};
