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
  const RkIndividualManipulator* manipulator = nullptr;
  const RkPositionState* positionState = nullptr;
  if (!selectedManipulator("RkLinkRelativeManipulationOffset::calculatePrimaryFrame", params, manipulator,
                           positionState)) {
    return false;
  }
  // Made afresh every cycle: the active state only refers to the stated system's position state and
  // computes the link's frame on demand, so it allocates nothing and nothing outlives the call.
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

RkBoolean RkLinkRelativeManipulationOffset::primaryFrame(
    const Context& context, const RkManipulationOffsetState&,
    RkCoordinateSystemTransformation& primaryFrame) const {
  return calculatePrimaryFrame(context.params, context.sequence, context.frameIndex, context.endEffectorIndex,
                               primaryFrame);
}

void RkLinkRelativeManipulationOffset::reportInvalidManipulationFrame(const std::string& problem) const {
  Rk::Print::write(4, "RkLinkRelativeManipulationOffset::init manipulation frame is not valid (%s).\n",
                   problem.c_str());
}
