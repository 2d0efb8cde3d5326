#include "manipulator/RkPositionState.h"

#include "manipulator/RkManipulatorTokens.h"

void RkPositionState::registerComponents() {
  registerComponent(RkManipulator::RkBasePlacementToken, &m_basePlacement);
  registerComponent(RkManipulator::RkJointPositionsToken, &m_jointPositions);
  registerComponent(RkManipulator::RkJointVelocitiesToken, &m_jointVelocities);
}
