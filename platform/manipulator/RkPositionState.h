#pragma once
// The state of one manipulator at one instant: where its base stands in the system and its joints'
// positions (radians or length unit) and velocities (per second), one entry per joint:
//   <positionState><basePlacement>...</basePlacement><jointPositions count="2"><group>0.1 0.2</group>
//   </jointPositions><jointVelocities count="2"><group>0 0</group></jointVelocities></positionState>
#include "foundation/RkCoordinateSystemTransformation.h"
#include "manipulator/RkManipulatorTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlCompoundType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlVectorType.h"

class RkPositionState
    : public RkXmlConcreteClass<RkPositionState, RkXmlCompoundType, RkManipulator::RkPositionStateToken> {
 public:
  typedef RkXmlVectorType<RkXmlBasicType<RkReal>> RealVector;

  RkPositionState() = default;

  // Where the base the manipulator is mounted on stands in the system frame.
  const RkCoordinateSystemTransformation& basePlacement() const { return m_basePlacement; }
  void setBasePlacement(const RkCoordinateSystemTransformation& placement) { m_basePlacement = placement; }
  const RealVector& jointPositions() const { return m_jointPositions; }
  void setJointPositions(const RealVector& positions) { m_jointPositions = positions; }
  const RealVector& jointVelocities() const { return m_jointVelocities; }
  void setJointVelocities(const RealVector& velocities) { m_jointVelocities = velocities; }

 protected:
  void registerComponents() override;

 private:
  RkCoordinateSystemTransformation m_basePlacement;
  RealVector m_jointPositions;
  RealVector m_jointVelocities;
};
