#include "offsets/RkInterpolatedManipulationOffset.h"

#include "control/RkManipulatorController.h"
#include "control/RkPositionControlSystem.h"
#include "foundation/RkPrint.h"

namespace {

// Asks the controller of the update parameters where end effector endEffectorIndex actually is; false when
// there is no controller or it cannot say. Allocates: for a frame's start, not its cycles.
RkBoolean actualPlacement(const RkManipulationUpdateParams& params, RkU32 endEffectorIndex,
                          RkEndEffectorPlacement& placement) {
  RkManipulatorController* controller =
      params.positionControlSystem
          ? params.positionControlSystem->manipulatorController(params.controllerIndex)
          : nullptr;
  if (!controller) return false;
  RkXmlVectorType<RkXmlBasicType<RkU32>> indices;
  indices.pushBack(endEffectorIndex);
  RkManipulatorEndEffectorPlacement::TransformationVector actuals;
  if (!controller->actualPlacements(indices, actuals) || actuals.size() == 0) return false;
  placement.setPlacement(actuals[0]);
  return true;
}

}  // namespace

RkBoolean RkInterpolatedManipulationOffset::initState(RkReal time, const Context& context,
                                                      State& state) const {
  if (!initTarget(time, context, state)) return false;
  RkEndEffectorPlacement actual;
  if (!actualPlacement(context.params, context.endEffectorIndex, actual)) {
    Rk::Print::write(4, "RkInterpolatedManipulationOffset::init no actual placement of end effector %u.\n",
                     context.endEffectorIndex);
    return false;
  }
  state.setInitialOffset(actual);
  state.setCurrentOffset(actual);
  state.setInitializationTime(time);
  return true;
}

RkManipulationStatus::Enum RkInterpolatedManipulationOffset::updateState(RkReal time, const Context& context,
                                                                         State& state) const {
  const RkManipulationStatus::Enum status = updateTarget(time, context, state);
  if (status == RkManipulationStatus::Failure) return status;
  const RkReal s = (time - state.initializationTime()) / m_interpolationTime.value();
  const RkEndEffectorPlacement& targetPlacement = targetCurrentOffset(state);
  // False for a fraction that is not a number, so a zero interpolation time arrives at once.
  if (s < 1.0) {
    state.setCurrentOffset(RkEndEffectorPlacement::interpolation(state.initialOffset(), targetPlacement, s));
    return status == RkManipulationStatus::Complete ? RkManipulationStatus::InProgress : status;
  }
  state.setCurrentOffset(targetPlacement);
  return status;
}

const RkEndEffectorPlacement& RkInterpolatedManipulationOffset::goalOffset(const State& state) const {
  const RkManipulationOffset* target = targetOffset().element();
  const RkManipulationOffsetState* targetState = state.targetOffsetState();
  if (!target || !targetState) return state.currentOffsetTransformation();
  return target->goalOffsetTransformation(*targetState);
}

RkManipulationOffsetStateContainer RkInterpolatedManipulationOffset::calculateEndState(
    const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 endEffectorIndex) const {
  RkManipulationOffsetStateContainer container;
  State& state =
      endStateWithTarget({params, sequence, sequenceState, frameIndex, endEffectorIndex}, container);
  RkEndEffectorPlacement actual;
  if (!actualPlacement(params, endEffectorIndex, actual)) {
    Rk::Print::write(
        4,
        "RkInterpolatedManipulationOffset::calculateEndState no actual placement of end effector "
        "%u.\n",
        endEffectorIndex);
  }
  state.setInitialOffset(actual);
  state.setCurrentOffset(actual);
  state.setInitializationTime(0.0);
  return container;
}
