#include "sequencing/RkManipulationSequenceState.h"

#include <utility>

#include "sequencing/RkManipulationTokens.h"

void RkManipulationSequenceState::registerComponents() {
  registerComponent(RkManipulation::RkCurrentFrameIndexToken, &m_currentFrameIndex);
  registerComponent(RkManipulation::RkCurrentFrameNeedsInitToken, &m_currentFrameNeedsInit);
  registerComponent(RkManipulation::RkCurrentFrameIsCompleteToken, &m_currentFrameIsComplete);
  registerComponent(RkManipulation::RkManipulationFrameStateContainerVectorToken,
                    &m_frameStateContainerVector);
}

void RkManipulationSequenceState::add(const RkManipulationFrameState& frameState) {
  RkManipulationFrameStateContainer container;
  container.setElement(frameState);
  add(std::move(container));
}

void RkManipulationSequenceState::add(const RkManipulationFrameStateContainer& container) {
  m_frameStateContainerVector.pushBack(container);
}

void RkManipulationSequenceState::add(RkManipulationFrameStateContainer&& container) {
  m_frameStateContainerVector.pushBack(std::move(container));
}

void RkManipulationSequenceState::clear() {
  m_currentFrameIndex = 0u;
  m_currentFrameNeedsInit = false;
  m_currentFrameIsComplete = false;
  m_frameStateContainerVector.clear();
}

void RkManipulationSequenceState::deleteFrame(RkU32 index) {
  m_frameStateContainerVector.erase(index);
}

const RkManipulationFrameState* RkManipulationSequenceState::currentFrameState() const {
  const RkU32 index = m_currentFrameIndex;
  return index < m_frameStateContainerVector.size() ? m_frameStateContainerVector[index].element() : nullptr;
}

RkManipulationFrameState* RkManipulationSequenceState::currentFrameState() {
  const RkU32 index = m_currentFrameIndex;
  return index < m_frameStateContainerVector.size() ? m_frameStateContainerVector[index].element() : nullptr;
}
