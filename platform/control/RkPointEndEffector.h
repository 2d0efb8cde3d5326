#pragma once
// An end effector that controls position only, such as a suction cup or a probe tip:
//   <pointEndEffector><linkIdentifier>wrist</linkIdentifier>
//   <maximumAcceleration>2</maximumAcceleration></pointEndEffector>
#include "control/RkEndEffector.h"

class RkPointEndEffector : public RkEndEffector {
 public:
  RkPointEndEffector() = default;

  // The distance between the two positions; orientations are ignored.
  RkReal placementError(const RkCoordinateSystemTransformation& actual,
                        const RkCoordinateSystemTransformation& goal) const override;

  bool operator==(const RkPointEndEffector& other) const { return RkEndEffector::operator==(other); }
  bool operator!=(const RkPointEndEffector& other) const { return !(*this == other); }

  RkBoolean equality(const RkXmlObject* other) const override;
  RkXmlObject* newObject() const override { return new RkPointEndEffector; }
  RkXmlObject* clone() const override { return new RkPointEndEffector(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken();
  static RkXmlObject* creator() { return new RkPointEndEffector; }
};
