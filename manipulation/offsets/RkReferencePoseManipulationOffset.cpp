#include "offsets/RkReferencePoseManipulationOffset.h"

#include "sequencing/RkPoseSet.h"

RkBoolean RkReferencePoseManipulationOffset::initState(RkReal, const Context& context, State& state) const {
  const RkPoseSet* poseSet = context.params.poseSet;
  if (!poseSet) return false;
  const RkCoordinateSystemTransformation* pose = poseSet->poseMap().find(m_poseName.value());
  if (!pose) return false;
  state.setOffset(RkEndEffectorPlacement(*pose));
  return true;
}
