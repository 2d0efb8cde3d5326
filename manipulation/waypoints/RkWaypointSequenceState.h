#pragma once
// The state of an RkWaypointSequence: the running waypoint's index and the two flags that carry the
// hand-over between waypoints from one cycle to the next. The waypoints keep their own working values.
#include "sequencing/RkManipulationActionState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"

class RkWaypointSequenceState : public RkXmlConcreteClass<RkWaypointSequenceState, RkManipulationActionState,
                                                          RkManipulation::RkWaypointSequenceStateToken> {
 public:
  virtual RkU32 currentWaypointIndex() const { return m_currentWaypointIndex; }
  virtual void setCurrentWaypointIndex(RkU32 index) { m_currentWaypointIndex = index; }
  virtual RkBoolean currentWaypointNeedsInit() const { return m_currentWaypointNeedsInit; }
  virtual void setCurrentWaypointNeedsInit(RkBoolean needsInit) { m_currentWaypointNeedsInit = needsInit; }
  virtual RkBoolean currentWaypointIsComplete() const { return m_currentWaypointIsComplete; }
  virtual void setCurrentWaypointIsComplete(RkBoolean isComplete) {
    m_currentWaypointIsComplete = isComplete;
  }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkCurrentWaypointIndexToken, &m_currentWaypointIndex,
                      "index of the waypoint being approached, from 0");
    registerComponent(RkManipulation::RkCurrentWaypointNeedsInitToken, &m_currentWaypointNeedsInit,
                      "true: the waypoint starts on the next update");
    registerComponent(RkManipulation::RkCurrentWaypointIsCompleteToken, &m_currentWaypointIsComplete,
                      "true: the waypoint is reached and the next update moves on");
  }

 private:
  RkXmlBasicType<RkU32> m_currentWaypointIndex;
  RkXmlBasicType<RkBoolean> m_currentWaypointNeedsInit;
  RkXmlBasicType<RkBoolean> m_currentWaypointIsComplete;
};
