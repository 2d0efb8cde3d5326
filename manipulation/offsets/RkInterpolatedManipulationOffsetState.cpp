#include "offsets/RkInterpolatedManipulationOffsetState.h"

#include "sequencing/RkManipulationNullObjects.h"

const RkEndEffectorPlacement& RkInterpolatedManipulationOffsetState::goalOffsetTransformation() const {
  const RkManipulationOffsetState* target = targetOffsetState();
  return target ? target->goalOffsetTransformation() : RkManipulationNullObjects::placement();
}

void RkInterpolatedManipulationOffsetState::registerComponents() {
  RkTargetWrappingManipulationOffsetState::registerComponents();
  registerComponent(RkManipulation::RkInitializationTimeToken, &m_initializationTime,
                    "the time the blend started, s");
  registerComponent(RkManipulation::RkInterpolatedInitialOffsetToken, &m_initialOffset,
                    "the actual placement the blend started from (m, quaternion w x y z)");
  registerComponent(RkManipulation::RkInterpolatedCurrentOffsetToken, &m_currentOffset,
                    "the placement commanded this cycle (m, quaternion w x y z)");
}
