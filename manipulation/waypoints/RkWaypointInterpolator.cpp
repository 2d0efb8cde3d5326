#include "waypoints/RkWaypointInterpolator.h"

void RkWaypointInterpolator::setPoints(const RkVector& firstPoint, const RkVector& secondPoint,
                                       const RkVector& thirdPoint) {
  m_firstPoint = firstPoint;
  m_secondPoint = secondPoint;
  m_thirdPoint = thirdPoint;
}

void RkWaypointInterpolator::setSpeeds(RkReal firstSpeed, RkReal secondSpeed) {
  m_firstSpeed = firstSpeed;
  m_secondSpeed = secondSpeed;
}

void RkWaypointInterpolator::setMaxAcceleration(RkReal maxAcceleration) {
  m_maxAcceleration = maxAcceleration;
}

void RkWaypointInterpolator::setStartTime(RkReal startTime) {
  m_startTime = startTime;
}

void RkWaypointInterpolator::setOrientations(const RkOrientation& firstOrientation,
                                             const RkOrientation& secondOrientation,
                                             const RkOrientation& thirdOrientation) {
  m_firstOrientation = firstOrientation;
  m_secondOrientation = secondOrientation;
  m_thirdOrientation = thirdOrientation;
}
