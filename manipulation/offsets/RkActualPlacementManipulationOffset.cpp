#include "offsets/RkActualPlacementManipulationOffset.h"

#include "control/RkPositionControlSystem.h"
#include "foundation/RkPrint.h"

namespace {

// Where end effector endEffectorIndex of the parameters' controller actually is; false when nobody can say.
RkBoolean actualPlacement(const RkManipulationUpdateParams& params, RkU32 endEffectorIndex,
                          RkCoordinateSystemTransformation& placement) {
  return params.positionControlSystem &&
         params.positionControlSystem->actualPlacement(params.controllerIndex, endEffectorIndex, placement);
}

}  // namespace

RkManipulationStatus::Enum RkActualPlacementManipulationOffset::updateState(RkReal, const Context& context,
                                                                            State& state) const {
  RkCoordinateSystemTransformation actual;
  if (!actualPlacement(context.params, context.endEffectorIndex, actual)) {
    Rk::Print::write(4,
                     "RkActualPlacementManipulationOffset::update no actual placement of end effector %u.\n",
                     context.endEffectorIndex);
    return RkManipulationStatus::Failure;
  }
  state.setOffset(RkEndEffectorPlacement(actual));
  return RkManipulationStatus::Complete;
}

RkManipulationOffsetStateContainer RkActualPlacementManipulationOffset::calculateEndState(
    const RkManipulationUpdateParams& params, const RkManipulationSequence&,
    const RkManipulationSequenceState&, RkU32, RkU32 endEffectorIndex) const {
  RkManipulationOffsetStateContainer container;
  State& state = container.setNewElement<State>();
  RkCoordinateSystemTransformation actual;
  if (actualPlacement(params, endEffectorIndex, actual)) {
    state.setOffset(RkEndEffectorPlacement(actual));
  } else {
    Rk::Print::write(4,
                     "RkActualPlacementManipulationOffset::calculateEndState no actual placement of end "
                     "effector %u.\n",
                     endEffectorIndex);
  }
  return container;
}
