#pragma once
// An end effector that controls position and orientation, such as a gripper:
//   <frameEndEffector><linkIdentifier>wrist</linkIdentifier><maximumAcceleration>2</maximumAcceleration>
//   <orientationWeightLength>0.1</orientationWeightLength></frameEndEffector>
#include "control/RkControlTokens.h"
#include "control/RkEndEffector.h"
#include "xml/RkXmlConcreteClass.h"

class RkFrameEndEffector
    : public RkXmlConcreteClass<RkFrameEndEffector, RkEndEffector, RkControl::RkFrameEndEffectorToken> {
 public:
  RkFrameEndEffector() : m_orientationWeightLength(0.0) {}

  // The length that turns an orientation error into a distance: a point this far from the frame's origin
  // moves about L * angle when the frame turns by angle (radians). Zero makes orientation errors count
  // for nothing.
  RkReal orientationWeightLength() const { return m_orientationWeightLength; }
  void setOrientationWeightLength(RkReal length) { m_orientationWeightLength = length; }

  // sqrt(dp^2 + (L * angle)^2): dp the distance between the positions, angle the rotation in [0, pi] that
  // takes one orientation to the other, L the orientation weight length.
  RkReal placementError(const RkCoordinateSystemTransformation& actual,
                        const RkCoordinateSystemTransformation& goal) const override;

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<RkReal> m_orientationWeightLength;
};
