#include "manipulator/RkPositionState.h"

#include "manipulator/RkManipulatorTokens.h"

void RkPositionState::registerComponents() {
  registerComponent(RkManipulator::RkBasePlacementToken, &m_basePlacement,
                    "where the base stands in the system frame (m, quaternion w x y z)");
  registerComponent(RkManipulator::RkJointPositionsToken, &m_jointPositions,
                    "one position per joint, rad (m for a prismatic joint)");
  registerComponent(RkManipulator::RkJointVelocitiesToken, &m_jointVelocities,
                    "one velocity per joint, rad/s (m/s for a prismatic joint)");
}
