#include "offsets/RkObjectRelativeManipulationOffset.h"

#include "foundation/RkPrint.h"
#include "manipulator/RkIndividualManipulator.h"
#include "manipulator/RkManipulatorActivePositionState.h"

RkBoolean RkObjectRelativeManipulationOffset::calculatePrimaryFrame(
    const RkManipulationUpdateParams& params, const RkManipulationSequence&, RkU32, RkU32,
    RkCoordinateSystemTransformation& primaryFrame) const {
  const RkPositionState* positionState = nullptr;
  const RkIndividualManipulator* manipulator =
      selectedManipulator("RkObjectRelativeManipulationOffset::calculatePrimaryFrame", params, positionState);
  if (!manipulator) return false;
  RkManipulatorActivePositionState active(*manipulator);
  active.setPositionState(*positionState);
  primaryFrame = manipulator->manipulatorFrame(active);
  return true;
}

void RkObjectRelativeManipulationOffset::reportInvalidManipulationFrame(const std::string& problem) const {
  Rk::Print::write(4, "RkObjectRelativeManipulationOffset::init manipulation frame is not valid (%s).\n",
                   problem.c_str());
}
