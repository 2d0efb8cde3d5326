#include "control/RkPointEndEffector.h"

#include "control/RkControlTokens.h"

RkReal RkPointEndEffector::placementError(const RkCoordinateSystemTransformation& actual,
                                          const RkCoordinateSystemTransformation& goal) const {
  return (actual.translation() - goal.translation()).norm();
}

RkBoolean RkPointEndEffector::equality(const RkXmlObject* other) const {
  const auto* same = dynamic_cast<const RkPointEndEffector*>(other);
  return same && *this == *same;
}

const RkToken& RkPointEndEffector::classToken() {
  return RkControl::RkPointEndEffectorToken;
}
