#include "manipulator/RkManipulatorLink.h"

#include "foundation/RkPrint.h"
#include "manipulator/RkIndividualManipulator.h"
#include "manipulator/RkManipulatorActivePositionState.h"
#include "manipulator/RkManipulatorTokens.h"

RkManipulatorLink::RkManipulatorLink()
    : m_parentIndex(-1),
      m_jointType(JointType::Revolute, {{JointType::Revolute, RkManipulator::RkRevoluteToken},
                                        {JointType::Prismatic, RkManipulator::RkPrismaticToken}}),
      m_jointAxis(RkVector::zVector()) {}

RkBoolean RkManipulatorLink::frameInParent(RkReal position, RkCoordinateSystemTransformation& frame) const {
  switch (jointType()) {
    case JointType::Revolute:
      frame = m_fixedTransformation * RkCoordinateSystemTransformation(
                                          RkVector(), RkOrientation::fromAngleAxis(position, m_jointAxis));
      return true;
    case JointType::Prismatic:
      frame = m_fixedTransformation *
              RkCoordinateSystemTransformation(m_jointAxis.normalized() * position, RkOrientation());
      return true;
  }
  return false;
}

RkBoolean RkManipulatorLink::primaryFrame(const RkManipulatorActivePositionState& state,
                                          RkCoordinateSystemTransformation& frame) const {
  const RkU32 index = indexIn("primaryFrame", state);
  return index < state.manipulator().links().size() && state.primaryFrame(index, frame);
}

RkBoolean RkManipulatorLink::dhFrame(const RkManipulatorActivePositionState& state,
                                     RkCoordinateSystemTransformation& frame) const {
  const RkU32 index = indexIn("dhFrame", state);
  return index < state.manipulator().links().size() && state.dhFrame(index, frame);
}

RkU32 RkManipulatorLink::indexIn(const char* caller, const RkManipulatorActivePositionState& state) const {
  const RkU32 index = state.linkIndex(*this);
  if (index == state.manipulator().links().size()) {
    Rk::Print::write(4, "RkManipulatorLink::%s: link \"%s\" is not a link of manipulator \"%s\"\n", caller,
                     identifier().c_str(), state.manipulator().name().c_str());
  }
  return index;
}

void RkManipulatorLink::registerComponents() {
  registerComponent(RkManipulator::RkIdentifierToken, &m_identifier, "the link's name");
  registerComponent(RkManipulator::RkParentIndexToken, &m_parentIndex,
                    "index of the parent link, from 0; -1 for a link on the base");
  registerComponent(RkManipulator::RkFixedTransformationToken, &m_fixedTransformation,
                    "the joint frame in the parent's primary frame (m, quaternion w x y z)");
  registerComponent(RkManipulator::RkJointTypeToken, &m_jointType,
                    "how the joint moves: revolute (rad) or prismatic (m)");
  registerComponent(RkManipulator::RkJointAxisToken, &m_jointAxis,
                    "the joint's axis in the joint frame (unit vector)");
  registerComponent(RkManipulator::RkDhOffsetToken, &m_dhOffset,
                    "the link's DH frame in its primary frame (m, quaternion w x y z)");
}
