#include "offsets/RkObjectRelativeManipulationOffset.h"

#include "foundation/RkPrint.h"
#include "manipulator/RkIndividualManipulator.h"
#include "manipulator/RkManipulatorActivePositionState.h"

RkBoolean RkObjectRelativeManipulationOffset::calculatePrimaryFrame(
    const RkManipulationUpdateParams& params, const RkManipulationSequence&, RkU32, RkU32,
    RkCoordinateSystemTransformation& primaryFrame) const {
  const RkIndividualManipulator* manipulator = nullptr;
  const RkPositionState* positionState = nullptr;
  if (!selectedManipulator("RkObjectRelativeManipulationOffset::calculatePrimaryFrame", params, manipulator,
                           positionState)) {
    return false;
  }
  // Made afresh every cycle: the active state only refers to the stated system's position state, so it
  // allocates nothing and nothing outlives the call.
  RkManipulatorActivePositionState active(*manipulator);
  active.setPositionState(*positionState);
  primaryFrame = manipulator->manipulatorFrame(active);
  return true;
}

RkBoolean RkObjectRelativeManipulationOffset::primaryFrame(
    const Context& context, const RkManipulationOffsetState&,
    RkCoordinateSystemTransformation& primaryFrame) const {
  return calculatePrimaryFrame(context.params, context.sequence, context.frameIndex, context.endEffectorIndex,
                               primaryFrame);
}

void RkObjectRelativeManipulationOffset::reportInvalidManipulationFrame(const std::string& problem) const {
  Rk::Print::write(4, "RkObjectRelativeManipulationOffset::init manipulation frame is not valid (%s).\n",
                   problem.c_str());
}
