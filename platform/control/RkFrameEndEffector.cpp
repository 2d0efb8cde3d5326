#include "control/RkFrameEndEffector.h"

#include <cmath>

#include "control/RkControlTokens.h"

RkReal RkFrameEndEffector::placementError(const RkCoordinateSystemTransformation& actual,
                                          const RkCoordinateSystemTransformation& goal) const {
  RkReal angle = 0.0;
  RkVector axis;
  RkOrientation::angleAxisBetween(actual.orientation(), goal.orientation(), angle, axis);
  const RkReal turn = m_orientationWeightLength * angle;
  return std::sqrt((actual.translation() - goal.translation()).squaredNorm() + turn * turn);
}

void RkFrameEndEffector::registerComponents() {
  RkEndEffector::registerComponents();
  registerComponent(RkControl::RkOrientationWeightLengthToken, &m_orientationWeightLength,
                    "the length an angle error is multiplied by to weigh against position error, m per rad");
}
