#include "sequencing/RkManipulationSequenceManagerState.h"

#include "sequencing/RkManipulationTokens.h"

const RkToken& RkManipulationSequenceManagerState::classToken() {
  return RkManipulation::RkManipulationSequenceManagerStateToken;
}

bool RkManipulationSequenceManagerState::operator==(const RkManipulationSequenceManagerState& other) const {
  return RkXmlCompoundType::operator==(other) && m_currentSequenceIndex == other.m_currentSequenceIndex &&
         m_currentSequenceNeedsInit == other.m_currentSequenceNeedsInit &&
         m_currentSequenceIsComplete == other.m_currentSequenceIsComplete &&
         m_currentSequenceStateContainer == other.m_currentSequenceStateContainer;
}

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
