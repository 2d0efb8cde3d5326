#pragma once
// One link of a manipulator and the joint that moves it. The link hangs from its parent (an earlier link, or
// the manipulator's base for parent index -1) through a fixed transformation to the joint frame, then the
// joint's motion about or along its axis, given in the joint frame:
//   primary frame = parent's primary frame * fixed transformation * joint motion(position)
//   DH frame      = primary frame * DH offset
//   <manipulatorLink><identifier>elbow</identifier><parentIndex>0</parentIndex>
//   <fixedTransformation>...</fixedTransformation><jointType>revolute</jointType>
//   <jointAxis>0 0 1</jointAxis><dhOffset>...</dhOffset></manipulatorLink>
#include <string>

#include "common/RkCoordinateSystemTransformation.h"
#include "manipulator/RkManipulatorTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlCompoundType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlEnumType.h"
#include "xml/RkXmlVector.h"

class RkManipulatorActivePositionState;

class RkManipulatorLink
    : public RkXmlConcreteClass<RkManipulatorLink, RkXmlCompoundType, RkManipulator::RkManipulatorLinkToken> {
 public:
  // A revolute joint turns by its position (radians) about the axis; a prismatic one shifts by its position
  // (length unit) along it.
  enum class JointType { Revolute, Prismatic };

  // A revolute joint about z on the base, with identity transformations.
  RkManipulatorLink();

  const std::string& identifier() const { return m_identifier.value(); }
  void setIdentifier(const std::string& identifier) { m_identifier = identifier; }
  // The index of the link this one hangs from, or -1 for the base.
  int parentIndex() const { return m_parentIndex; }
  void setParentIndex(int index) { m_parentIndex = index; }
  // The joint frame in the parent's primary frame, with the joint at position zero.
  const RkCoordinateSystemTransformation& fixedTransformation() const { return m_fixedTransformation; }
  void setFixedTransformation(const RkCoordinateSystemTransformation& transformation) {
    m_fixedTransformation = transformation;
  }
  JointType jointType() const { return m_jointType.value(); }
  void setJointType(JointType type) { m_jointType.setValue(type); }
  // In the joint frame; only its direction counts, and a zero axis makes the joint immobile.
  const RkVector& jointAxis() const { return m_jointAxis; }
  void setJointAxis(const RkVector& axis) { static_cast<RkVector&>(m_jointAxis) = axis; }
  // The DH frame in the link's primary frame.
  const RkCoordinateSystemTransformation& dhOffset() const { return m_dhOffset; }
  void setDhOffset(const RkCoordinateSystemTransformation& offset) { m_dhOffset = offset; }

  // Sets frame to the link's primary frame in its parent's with the joint at position; false when the
  // joint type is none of the known ones (a number a document gave).
  RkBoolean frameInParent(RkReal position, RkCoordinateSystemTransformation& frame) const;
  // Sets frame to this link's primary or DH frame in the system frame for state. False, with one printed
  // line and frame unchanged, when this link is not one of the state's manipulator's links or the state
  // gives it no frame.
  RkBoolean primaryFrame(const RkManipulatorActivePositionState& state,
                         RkCoordinateSystemTransformation& frame) const;
  RkBoolean dhFrame(const RkManipulatorActivePositionState& state,
                    RkCoordinateSystemTransformation& frame) const;

 protected:
  void registerComponents() override;

 private:
  // This link's index in the state's manipulator, or the link count (with one line naming caller).
  RkU32 indexIn(const char* caller, const RkManipulatorActivePositionState& state) const;

  RkXmlBasicType<std::string> m_identifier;
  RkXmlBasicType<int> m_parentIndex;
  RkCoordinateSystemTransformation m_fixedTransformation;
  RkXmlEnumType<JointType> m_jointType;
  RkXmlVector m_jointAxis;
  RkCoordinateSystemTransformation m_dhOffset;
};
