#include "sequencing/RkManipulationSequenceManagerState.h"

#include "sequencing/RkManipulationTokens.h"

void RkManipulationSequenceManagerState::registerComponents() {
  registerComponent(RkManipulation::RkCurrentSequenceIndexToken, &m_currentSequenceIndex);
  registerComponent(RkManipulation::RkCurrentSequenceNeedsInitToken, &m_currentSequenceNeedsInit);
  registerComponent(RkManipulation::RkCurrentSequenceIsCompleteToken, &m_currentSequenceIsComplete);
  registerComponent(RkManipulation::RkCurrentSequenceStateContainerToken, &m_currentSequenceStateContainer);
}

void RkManipulationSequenceManagerState::clear() {
  m_currentSequenceIndex = 0u;
  m_currentSequenceNeedsInit = false;
  m_currentSequenceIsComplete = false;
  m_currentSequenceStateContainer = RkManipulationActionStateContainer();
}
