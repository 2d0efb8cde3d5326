#pragma once
// An end effector that controls position and orientation, such as a gripper:
//   <frameEndEffector><linkIdentifier>wrist</linkIdentifier><maximumAcceleration>2</maximumAcceleration>
//   <orientationWeightLength>0.1</orientationWeightLength></frameEndEffector>
#include "control/RkEndEffector.h"

class RkFrameEndEffector : public RkEndEffector {
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

  bool operator==(const RkFrameEndEffector& other) const {
    return RkEndEffector::operator==(other) && m_orientationWeightLength == other.m_orientationWeightLength;
  }
  bool operator!=(const RkFrameEndEffector& other) const { return !(*this == other); }

  RkBoolean equality(const RkXmlObject* other) const override;
  RkXmlObject* newObject() const override { return new RkFrameEndEffector; }
  RkXmlObject* clone() const override { return new RkFrameEndEffector(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken();
  static RkXmlObject* creator() { return new RkFrameEndEffector; }

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<RkReal> m_orientationWeightLength;
};
