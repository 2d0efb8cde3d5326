#pragma once
// An end effector that controls position only, such as a suction cup or a probe tip:
//   <pointEndEffector><linkIdentifier>wrist</linkIdentifier>
//   <maximumAcceleration>2</maximumAcceleration></pointEndEffector>
#include "control/RkControlTokens.h"
#include "control/RkEndEffector.h"
#include "xml/RkXmlConcreteClass.h"

class RkPointEndEffector
    : public RkXmlConcreteClass<RkPointEndEffector, RkEndEffector, RkControl::RkPointEndEffectorToken> {
 public:
  RkPointEndEffector() = default;

  // The distance between the two positions; orientations are ignored.
  RkReal placementError(const RkCoordinateSystemTransformation& actual,
                        const RkCoordinateSystemTransformation& goal) const override;
};
