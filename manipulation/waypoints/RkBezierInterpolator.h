#pragma once
// Rounds the corner between two waypoint segments with a quadratic Bezier curve from the start point, pulled
// towards the corner point, to the end point, run at the constant parameter rate that the start speed fixes:
//   <waypointInterpolatorContainer><bezierInterpolator/></waypointInterpolatorContainer>
#include "waypoints/RkWaypointInterpolator.h"
#include "xml/RkXmlConcreteClass.h"

class RkBezierInterpolator : public RkXmlConcreteClass<RkBezierInterpolator, RkWaypointInterpolator,
                                                       RkManipulation::RkBezierInterpolatorToken> {
 public:
  // Coincident start and corner, or corner and end, make the interpolator invalid for the rest of its life.
  void setPoints(const RkVector& firstPoint, const RkVector& secondPoint,
                 const RkVector& thirdPoint) override;
  // The parameter rate that gives the first speed at the start; the second speed is only stored.
  void setSpeeds(RkReal firstSpeed, RkReal secondSpeed) override;
  // The acceleration at constant parameter rate r is r^2 |B''|; a straight, evenly spaced curve never delays.
  RkBoolean needsDelay() const override;
  // Also keeps the rotation from the third to the first orientation as axis times angle.
  void setOrientations(const RkOrientation& firstOrientation, const RkOrientation& secondOrientation,
                       const RkOrientation& thirdOrientation) override;
  // The velocity is the derivative with respect to the curve parameter; multiply by parameterRate() for
  // the velocity per unit time. Real-time safe.
  RkBoolean interpolate(RkReal time, RkVector& position, RkVector& velocity) const override;
  // The same quadratic scheme on orientations, by spherical interpolation. Real-time safe.
  RkBoolean interpolate(RkReal time, RkOrientation& orientation) const override;

  RkReal parameterRate() const { return m_parameterRate; }
  const RkVector& rotationVector() const { return m_rotationVector; }

 private:
  RkVector m_firstLeg;
  RkVector m_secondLeg;
  RkBoolean m_valid = true;
  RkReal m_parameterRate = 0.0;
  RkReal m_secondDerivativeMagnitude = 0.0;
  RkVector m_rotationVector;
};
