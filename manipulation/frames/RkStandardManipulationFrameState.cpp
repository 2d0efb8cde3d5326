#include "frames/RkStandardManipulationFrameState.h"

#include "foundation/RkPrint.h"
#include "sequencing/RkManipulationTokens.h"

void RkStandardManipulationFrameState::registerComponents() {
  registerComponent(RkManipulation::RkManipulationOffsetStateContainerVectorToken,
                    &m_offsetStateContainerVector, "the state of each offset, in end-effector order");
  registerComponent(RkManipulation::RkManipulationFrameTransitionEventStateContainerToken,
                    &m_transitionEventStateContainer, "the state of the transition event");
  registerComponent(RkManipulation::RkManipulationCurrentEndEffectorPlacementToken,
                    &m_currentEndEffectorPlacement,
                    "the placements commanded this cycle, in the system frame (m, quaternion w x y z)");
  registerComponent(RkManipulation::RkManipulationGoalEndEffectorPlacementToken, &m_goalEndEffectorPlacement,
                    "the placements the offsets end at, in the system frame (m, quaternion w x y z)");
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
