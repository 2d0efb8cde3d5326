#pragma once
// Ends its frame once every tested end effector stands within the tolerance of its goal; until then it
// waits while the controller may keep converging, and then fails, or completes when soft failure is set:
//   <placementAchievedTransitionEvent><placementTestIndices count="1"><group>0</group>
//   </placementTestIndices><placementTolerance>0.002</placementTolerance><softFailure>true</softFailure>
//   </placementAchievedTransitionEvent>
#include "events/RkManipulationFrameTransitionEventKind.h"
#include "events/RkManipulationPlacementAchievedTransitionEventState.h"
#include "xml/RkXmlVectorType.h"

class RkManipulationPlacementAchievedTransitionEvent
    : public RkManipulationFrameTransitionEventKind<
          RkManipulationPlacementAchievedTransitionEvent, RkManipulationPlacementAchievedTransitionEventState,
          RkManipulation::RkManipulationPlacementAchievedTransitionEventToken> {
 public:
  typedef RkXmlVectorType<RkXmlBasicType<RkU32>> IndexVector;

  RkManipulationPlacementAchievedTransitionEvent()
      : m_convergenceWindow(1.0), m_tolerance(0.001), m_softFailure(false) {}

  // Refuses a tolerance that is not positive.
  RkBoolean initState(RkReal time, const Context& context, State& state) const;
  // Judges the frame's goals against the actual placements afresh on every cycle. Real-time safe.
  RkManipulationStatus::Enum updateState(RkReal time, const Context& context, State& state) const;

  // Kept with the event for a convergence window; the event does not consult it.
  virtual RkReal convergenceWindow() const { return m_convergenceWindow; }
  virtual void setConvergenceWindow(RkReal window) { m_convergenceWindow = window; }
  // The end effectors to test, by index in the frame's set; empty tests them all.
  virtual const IndexVector& testIndices() const { return m_testIndices; }
  virtual void setTestIndices(const IndexVector& indices) { m_testIndices = indices; }
  // The largest placement error, in the end effector's measure, that counts as reached.
  virtual RkReal tolerance() const { return m_tolerance; }
  virtual void setTolerance(RkReal tolerance) { m_tolerance = tolerance; }
  // Whether a goal the controller gives up on completes the frame rather than failing it.
  virtual RkBoolean softFailure() const { return m_softFailure; }
  virtual void setSoftFailure(RkBoolean softFailure) { m_softFailure = softFailure; }

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<RkReal> m_convergenceWindow;
  IndexVector m_testIndices;
  RkXmlBasicType<RkReal> m_tolerance;
  RkXmlBasicType<RkBoolean> m_softFailure;
};
