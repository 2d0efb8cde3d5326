#include "offsets/RkInterpolatedManipulationOffsetState.h"

#include "sequencing/RkManipulationNullObjects.h"

const RkEndEffectorPlacement& RkInterpolatedManipulationOffsetState::goalOffsetTransformation() const {
  const RkManipulationOffsetState* target = m_targetOffsetState.element();
  return target ? target->goalOffsetTransformation() : RkManipulationNullObjects::placement();
}

void RkInterpolatedManipulationOffsetState::registerComponents() {
  registerComponent(RkManipulation::RkTargetOffsetStateToken, &m_targetOffsetState);
  registerComponent(RkManipulation::RkInitializationTimeToken, &m_initializationTime);
  registerComponent(RkManipulation::RkInterpolatedInitialOffsetToken, &m_initialOffset);
  registerComponent(RkManipulation::RkInterpolatedCurrentOffsetToken, &m_currentOffset);
}
