#include "sequencing/RkManipulationSequenceManagerState.h"

#include "sequencing/RkManipulationTokens.h"

void RkManipulationSequenceManagerState::registerComponents() {
  registerComponent(RkManipulation::RkCurrentSequenceIndexToken, &m_currentSequenceIndex,
                    "position in the order of the running sequence, from 0");
  registerComponent(RkManipulation::RkCurrentSequenceNeedsInitToken, &m_currentSequenceNeedsInit,
                    "true: the running sequence starts on the next update");
  registerComponent(RkManipulation::RkCurrentSequenceIsCompleteToken, &m_currentSequenceIsComplete,
                    "true: the running sequence has ended and the next update moves on");
  registerComponent(RkManipulation::RkCurrentSequenceStateContainerToken, &m_currentSequenceStateContainer,
                    "the state of the running sequence");
}

void RkManipulationSequenceManagerState::clear() {
  m_currentSequenceIndex = 0u;
  m_currentSequenceNeedsInit = false;
  m_currentSequenceIsComplete = false;
  m_currentSequenceStateContainer = RkManipulationActionStateContainer();
}
