#include "offsets/RkLinkRelativeManipulationOffset.h"

#include "foundation/RkPrint.h"
#include "manipulator/RkIndividualManipulator.h"
#include "manipulator/RkManipulatorActivePositionState.h"

RkLinkRelativeManipulationOffset::RkLinkRelativeManipulationOffset()
    : m_linkFrameType(PrimaryFrame, {{PrimaryFrame, RkManipulation::RkPrimaryFrameToken},
                                     {DhFrame, RkManipulation::RkDhFrameToken}}) {}

RkBoolean RkLinkRelativeManipulationOffset::calculatePrimaryFrame(
    const RkManipulationUpdateParams& params, const RkManipulationSequence&, RkU32, RkU32,
    RkCoordinateSystemTransformation& primaryFrame) const {
  const RkPositionState* positionState = nullptr;
  const RkIndividualManipulator* manipulator =
      selectedManipulator("RkLinkRelativeManipulationOffset::calculatePrimaryFrame", params, positionState);
  if (!manipulator) return false;
  RkManipulatorActivePositionState active(*manipulator);
  active.setPositionState(*positionState);
  if (linkIdentifier().empty()) {
    Rk::Print::write(4,
                     "RkLinkRelativeManipulationOffset::calculatePrimaryFrame link identifier is empty.\n");
    return false;
  }
  const RkManipulatorLink* link = manipulator->link(linkIdentifier());
  if (!link) {
    Rk::Print::write(4,
                     "RkLinkRelativeManipulationOffset::calculatePrimaryFrame link identifier %s cannot be "
                     "found.\n",
                     linkIdentifier().c_str());
    return false;
  }
  return linkFrameType() != PrimaryFrame ? link->dhFrame(active, primaryFrame)
                                         : link->primaryFrame(active, primaryFrame);
}

void RkLinkRelativeManipulationOffset::reportInvalidManipulationFrame(const std::string& problem) const {
  Rk::Print::write(4, "RkLinkRelativeManipulationOffset::init manipulation frame is not valid (%s).\n",
                   problem.c_str());
}
