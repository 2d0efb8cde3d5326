#pragma once
// The state of an RkStandardManipulationFrame: its offsets' states, its event's state, and the current and
// goal placements its offsets gave in the last cycle, one per end effector.
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "events/RkManipulationFrameTransitionEventStateContainer.h"
#include "frames/RkManipulationFrameState.h"
#include "offsets/RkManipulationOffsetStateContainer.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlConcreteClass.h"

class RkStandardManipulationFrameState
    : public RkXmlConcreteClass<RkStandardManipulationFrameState, RkManipulationFrameState,
                                RkManipulation::RkStandardManipulationFrameStateToken> {
 public:
  const RkXmlVectorType<RkManipulationOffsetStateContainer>& offsetStateContainerVector() const override {
    return m_offsetStateContainerVector;
  }
  const RkManipulatorEndEffectorPlacement& currentEndEffectorPlacement() const override {
    return m_currentEndEffectorPlacement;
  }
  const RkManipulatorEndEffectorPlacement& goalEndEffectorPlacement() const override {
    return m_goalEndEffectorPlacement;
  }

  // The state of offset i, or null past the last container or for an empty one.
  virtual const RkManipulationOffsetState* offsetState(RkU32 i) const;
  virtual RkManipulationOffsetState* offsetState(RkU32 i);
  virtual void setOffsetStateContainerVector(
      const RkXmlVectorType<RkManipulationOffsetStateContainer>& states) {
    m_offsetStateContainerVector = states;
  }
  virtual RkManipulationFrameTransitionEventState* transitionEventState() {
    return m_transitionEventStateContainer.element();
  }
  virtual const RkManipulationFrameTransitionEventStateContainer& transitionEventStateContainer() const {
    return m_transitionEventStateContainer;
  }
  virtual void setTransitionEventStateContainer(
      const RkManipulationFrameTransitionEventStateContainer& container) {
    m_transitionEventStateContainer = container;
  }
  virtual void setCurrentEndEffectorPlacement(const RkManipulatorEndEffectorPlacement& placement) {
    m_currentEndEffectorPlacement = placement;
  }
  virtual void setGoalEndEffectorPlacement(const RkManipulatorEndEffectorPlacement& placement) {
    m_goalEndEffectorPlacement = placement;
  }
  // Puts a copy of state into container i; false, with a level-5 line, when i is past the last container.
  virtual RkBoolean replaceManipulationOffsetState(RkU32 i, const RkManipulationOffsetState& state);

  // The states to build in place when the frame starts, so that none is made elsewhere and copied in.
  RkXmlVectorType<RkManipulationOffsetStateContainer>& offsetStatesInPlace() {
    return m_offsetStateContainerVector;
  }
  RkManipulationFrameTransitionEventStateContainer& transitionEventStateInPlace() {
    return m_transitionEventStateContainer;
  }
  // The placements to fill in place each cycle, so that a running frame allocates nothing.
  RkManipulatorEndEffectorPlacement& currentPlacementInPlace() { return m_currentEndEffectorPlacement; }
  RkManipulatorEndEffectorPlacement& goalPlacementInPlace() { return m_goalEndEffectorPlacement; }

 protected:
  void registerComponents() override;

 private:
  RkXmlVectorType<RkManipulationOffsetStateContainer> m_offsetStateContainerVector;
  RkManipulationFrameTransitionEventStateContainer m_transitionEventStateContainer;
  RkManipulatorEndEffectorPlacement m_currentEndEffectorPlacement;
  RkManipulatorEndEffectorPlacement m_goalEndEffectorPlacement;
};
