#include "waypoints/RkBezierInterpolator.h"

#include <cmath>

#include "foundation/RkPrint.h"

void RkBezierInterpolator::setPoints(const RkVector& firstPoint, const RkVector& secondPoint,
                                     const RkVector& thirdPoint) {
  RkWaypointInterpolator::setPoints(firstPoint, secondPoint, thirdPoint);
  m_firstLeg = secondPoint - firstPoint;
  m_secondLeg = thirdPoint - secondPoint;
  // One way only: a fresh interpolator is made for each corner.
  if (m_firstLeg.squaredNorm() == 0.0 || m_secondLeg.squaredNorm() == 0.0) m_valid = false;
  m_secondDerivativeMagnitude = ((firstPoint - secondPoint * 2.0 + thirdPoint) * 2.0).norm();
}

void RkBezierInterpolator::setSpeeds(RkReal firstSpeed, RkReal secondSpeed) {
  RkWaypointInterpolator::setSpeeds(firstSpeed, secondSpeed);
  // B'(0) = 2 (P1 - P0), so this rate meets the first speed at the start.
  m_parameterRate = firstSpeed / (2.0 * m_firstLeg.norm());
}

RkBoolean RkBezierInterpolator::needsDelay() const {
  return m_parameterRate > std::sqrt(m_maxAcceleration / m_secondDerivativeMagnitude);
}

void RkBezierInterpolator::setOrientations(const RkOrientation& firstOrientation,
                                           const RkOrientation& secondOrientation,
                                           const RkOrientation& thirdOrientation) {
  RkWaypointInterpolator::setOrientations(firstOrientation, secondOrientation, thirdOrientation);
  RkReal angle = 0.0;
  RkVector axis;
  RkOrientation::angleAxisBetween(m_thirdOrientation, m_firstOrientation, angle, axis);
  m_rotationVector = axis * angle;
}

RkBoolean RkBezierInterpolator::interpolate(RkReal time, RkVector& position, RkVector& velocity) const {
  if (!m_valid) {
    Rk::Print::writeFrom(__PRETTY_FUNCTION__, 7, "Bezier interpolator invalid\n");
    return false;
  }
  const RkReal s = (time - m_startTime) * m_parameterRate;
  // Written so that a NaN parameter counts as outside the curve too.
  if (!(s >= 0.0 && s <= 1.0)) {
    Rk::Print::writeFrom(__PRETTY_FUNCTION__, 7, "Bezier interpolator out of range\n");
    return false;
  }
  // de Casteljau's construction.
  position = ((m_firstPoint * (1.0 - s) + m_secondPoint * s) * (1.0 - s)) +
             ((m_secondPoint * (1.0 - s) + m_thirdPoint * s) * s);
  velocity = m_firstLeg * (2.0 * (1.0 - s)) + m_secondLeg * (2.0 * s);
  return true;
}

RkBoolean RkBezierInterpolator::interpolate(RkReal time, RkOrientation& orientation) const {
  if (!m_valid) {
    Rk::Print::write(4, "Bezier interpolator invalid\n");
    return false;
  }
  const RkReal s = (time - m_startTime) * m_parameterRate;
  if (!(s >= 0.0 && s <= 1.0)) return false;
  const RkOrientation towardsCorner =
      RkOrientation::interpolation(m_firstOrientation, m_secondOrientation, s);
  const RkOrientation fromCorner = RkOrientation::interpolation(m_secondOrientation, m_thirdOrientation, s);
  orientation = RkOrientation::interpolation(towardsCorner, fromCorner, s);
  return true;
}
