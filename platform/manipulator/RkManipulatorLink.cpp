#include "manipulator/RkManipulatorLink.h"

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

void RkManipulatorLink::registerComponents() {
  registerComponent(RkManipulator::RkIdentifierToken, &m_identifier);
  registerComponent(RkManipulator::RkParentIndexToken, &m_parentIndex);
  registerComponent(RkManipulator::RkFixedTransformationToken, &m_fixedTransformation);
  registerComponent(RkManipulator::RkJointTypeToken, &m_jointType);
  registerComponent(RkManipulator::RkJointAxisToken, &m_jointAxis);
  registerComponent(RkManipulator::RkDhOffsetToken, &m_dhOffset);
}
