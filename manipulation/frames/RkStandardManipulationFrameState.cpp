#include "frames/RkStandardManipulationFrameState.h"

#include "foundation/RkPrint.h"
#include "sequencing/RkManipulationTokens.h"

const RkToken& RkStandardManipulationFrameState::classToken() {
  return RkManipulation::RkStandardManipulationFrameStateToken;
}

bool RkStandardManipulationFrameState::operator==(const RkStandardManipulationFrameState& other) const {
  return RkManipulationFrameState::operator==(other) &&
         m_offsetStateContainerVector == other.m_offsetStateContainerVector &&
         m_transitionEventStateContainer == other.m_transitionEventStateContainer &&
         m_currentEndEffectorPlacement == other.m_currentEndEffectorPlacement &&
         m_goalEndEffectorPlacement == other.m_goalEndEffectorPlacement;
}

void RkStandardManipulationFrameState::registerComponents() {
  registerComponent(RkManipulation::RkManipulationOffsetStateContainerVectorToken,
                    &m_offsetStateContainerVector);
  registerComponent(RkManipulation::RkManipulationFrameTransitionEventStateContainerToken,
                    &m_transitionEventStateContainer);
  registerComponent(RkManipulation::RkManipulationCurrentEndEffectorPlacementToken,
                    &m_currentEndEffectorPlacement);
  registerComponent(RkManipulation::RkManipulationGoalEndEffectorPlacementToken, &m_goalEndEffectorPlacement);
}

const RkManipulationOffsetState* RkStandardManipulationFrameState::offsetState(RkU32 i) const {
  return i < m_offsetStateContainerVector.size() ? m_offsetStateContainerVector[i].element() : nullptr;
}

RkManipulationOffsetState* RkStandardManipulationFrameState::offsetState(RkU32 i) {
  return i < m_offsetStateContainerVector.size() ? m_offsetStateContainerVector[i].element() : nullptr;
}

RkBoolean RkStandardManipulationFrameState::replaceManipulationOffsetState(
    RkU32 i, const RkManipulationOffsetState& state) {
  if (i >= m_offsetStateContainerVector.size()) {
    Rk::Print::write(
        5, "RkStandardManipulationFrameState::replaceManipulationOffsetState invalid offset index %d.\n",
        static_cast<int>(i));
    return false;
  }
  m_offsetStateContainerVector[i].setElement(state);
  return true;
}
