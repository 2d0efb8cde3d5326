#include "offsets/RkParametricTranslationManipulationOffsetState.h"

#include "sequencing/RkManipulationNullObjects.h"

const RkEndEffectorPlacement& RkParametricTranslationManipulationOffsetState::goalOffsetTransformation()
    const {
  const RkManipulationOffsetState* target = targetOffsetState();
  if (!target) return RkManipulationNullObjects::placement();
  m_currentOffset.setPlacement(m_parametricTransform.placement() *
                               target->goalOffsetTransformation().placement());
  return m_currentOffset;
}
