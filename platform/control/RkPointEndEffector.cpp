#include "control/RkPointEndEffector.h"

#include "control/RkControlTokens.h"

RkReal RkPointEndEffector::placementError(const RkCoordinateSystemTransformation& actual,
                                          const RkCoordinateSystemTransformation& goal) const {
  return (actual.translation() - goal.translation()).norm();
}
