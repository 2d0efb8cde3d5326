#include "manipulator/RkPositionState.h"

#include "manipulator/RkManipulatorTokens.h"

RkBoolean RkPositionState::equality(const RkXmlObject* other) const {
  const auto* same = dynamic_cast<const RkPositionState*>(other);
  return same && *this == *same;
}

const RkToken& RkPositionState::classToken() {
  return RkManipulator::RkPositionStateToken;
}

void RkPositionState::registerComponents() {
  registerComponent(RkManipulator::RkBasePlacementToken, &m_basePlacement);
  registerComponent(RkManipulator::RkJointPositionsToken, &m_jointPositions);
  registerComponent(RkManipulator::RkJointVelocitiesToken, &m_jointVelocities);
}
