#include "offsets/RkInterpolatedManipulationOffsetState.h"

#include "sequencing/RkManipulationNullObjects.h"

const RkEndEffectorPlacement& RkInterpolatedManipulationOffsetState::goalOffsetTransformation() const {
  const RkManipulationOffsetState* target = targetOffsetState();
  return target ? target->goalOffsetTransformation() : RkManipulationNullObjects::placement();
}

void RkInterpolatedManipulationOffsetState::registerComponents() {
  RkTargetWrappingManipulationOffsetState::registerComponents();
  registerComponent(RkManipulation::RkInitializationTimeToken, &m_initializationTime);
  registerComponent(RkManipulation::RkInterpolatedInitialOffsetToken, &m_initialOffset);
  registerComponent(RkManipulation::RkInterpolatedCurrentOffsetToken, &m_currentOffset);
}
