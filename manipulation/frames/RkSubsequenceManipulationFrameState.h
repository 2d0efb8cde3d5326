#pragma once
// The state of an RkSubsequenceManipulationFrame: the state of the sequence it runs and that of its own
// event.
#include "frames/RkNestedManipulationFrameState.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkManipulationTokens.h"

class RkSubsequenceManipulationFrameState
    : public RkNestedManipulationFrameState<RkSubsequenceManipulationFrameState,
                                            RkManipulation::RkSubsequenceManipulationFrameStateToken> {
 public:
  // The state of the subsequence's current frame, or null when none runs.
  const RkManipulationFrameState* runningFrameState() const;

  virtual RkManipulationActionState* subsequenceState() { return m_subsequenceStateContainer.element(); }
  virtual const RkManipulationActionState* subsequenceState() const {
    return m_subsequenceStateContainer.element();
  }
  virtual RkManipulationActionStateContainer& subsequenceStateContainer() {
    return m_subsequenceStateContainer;
  }
  virtual const RkManipulationActionStateContainer& subsequenceStateContainer() const {
    return m_subsequenceStateContainer;
  }
  virtual void setSubsequenceStateContainer(const RkManipulationActionStateContainer& container) {
    m_subsequenceStateContainer = container;
  }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkSubsequenceStateContainerToken, &m_subsequenceStateContainer,
                      "the state of the sequence run as this frame");
    registerComponent(RkManipulation::RkManipulationFrameTransitionEventStateContainerToken,
                      &m_transitionEventStateContainer, "the state of the frame's transition event");
  }

 private:
  RkManipulationActionStateContainer m_subsequenceStateContainer;
};
