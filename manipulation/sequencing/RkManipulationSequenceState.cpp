#include "sequencing/RkManipulationSequenceState.h"

#include <utility>

#include "sequencing/RkManipulationTokens.h"

void RkManipulationSequenceState::registerComponents() {
  registerComponent(RkManipulation::RkCurrentFrameIndexToken, &m_currentFrameIndex,
                    "index of the running frame, from 0");
  registerComponent(RkManipulation::RkCurrentFrameNeedsInitToken, &m_currentFrameNeedsInit,
                    "true: the running frame starts on the next update");
  registerComponent(RkManipulation::RkCurrentFrameIsCompleteToken, &m_currentFrameIsComplete,
                    "true: the running frame has ended and the next update moves on");
  registerComponent(RkManipulation::RkManipulationFrameStateContainerVectorToken,
                    &m_frameStateContainerVector, "the state of each frame, entry i for frame i");
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
