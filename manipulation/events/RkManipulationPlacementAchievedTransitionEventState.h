#pragma once
// The state of a placement-achieved event: a convergence value and the start time of its convergence
// window, both -1 until set. They are kept and written with the run but not consulted by the event.
#include "events/RkManipulationFrameTransitionEventState.h"

class RkManipulationPlacementAchievedTransitionEventState
    : public RkXmlConcreteClass<RkManipulationPlacementAchievedTransitionEventState,
                                RkManipulationFrameTransitionEventState,
                                RkManipulation::RkManipulationPlacementAchievedTransitionEventStateToken> {
 public:
  RkManipulationPlacementAchievedTransitionEventState()
      : m_convergenceValue(-1.0), m_convergenceWindowStartTime(-1.0) {}

  virtual RkReal convergenceValue() const { return m_convergenceValue; }
  virtual void setConvergenceValue(RkReal value) { m_convergenceValue = value; }
  virtual RkReal convergenceWindowStartTime() const { return m_convergenceWindowStartTime; }
  virtual void setConvergenceWindowStartTime(RkReal time) { m_convergenceWindowStartTime = time; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkPlacementConvergenceValueToken, &m_convergenceValue,
                      "the largest placement error of the last test, m");
    registerComponent(RkManipulation::RkPlacementConvergenceWindowStartTimeToken,
                      &m_convergenceWindowStartTime,
                      "the time the convergence window opened, s; -1 before it opens");
  }

 private:
  RkXmlBasicType<RkReal> m_convergenceValue;
  RkXmlBasicType<RkReal> m_convergenceWindowStartTime;
};
