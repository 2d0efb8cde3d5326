#pragma once
// The state of an RkParametricManipulationFrame: the state of the current run of its target frame, the
// index of the value in force, and the state of its own event, which runs across all values.
#include "frames/RkManipulationFrameStateContainer.h"
#include "frames/RkNestedManipulationFrameState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlBasicType.h"

class RkParametricManipulationFrameState
    : public RkNestedManipulationFrameState<RkParametricManipulationFrameState,
                                            RkManipulation::RkParametricManipulationFrameStateToken> {
 public:
  const RkManipulationFrameState* runningFrameState() const { return m_targetFrameState.element(); }

  virtual RkManipulationFrameState* targetFrameState() { return m_targetFrameState.element(); }
  virtual const RkManipulationFrameState* targetFrameState() const { return m_targetFrameState.element(); }
  virtual void setTargetFrameState(const RkManipulationFrameStateContainer& container) {
    m_targetFrameState = container;
  }
  // Takes the container's state over.
  virtual void setTargetFrameState(RkManipulationFrameStateContainer&& container) {
    m_targetFrameState = std::move(container);
  }
  virtual RkU32 parametricIndex() const { return m_parametricIndex; }
  virtual void setParametricIndex(RkU32 index) { m_parametricIndex = index; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkTargetFrameStateToken, &m_targetFrameState,
                      "the state of the frame being rerun");
    registerComponent(RkManipulation::RkParametricIndexToken, &m_parametricIndex,
                      "index into parametricValues of the value in force, from 0");
    registerComponent(RkManipulation::RkManipulationFrameTransitionEventStateContainerToken,
                      &m_transitionEventStateContainer, "the state of the frame's own transition event");
  }

 private:
  RkManipulationFrameStateContainer m_targetFrameState;
  RkXmlBasicType<RkU32> m_parametricIndex;
};
