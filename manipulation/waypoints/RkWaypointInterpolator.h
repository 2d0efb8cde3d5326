#pragma once
// The abstract curve that carries an end effector from one waypoint region to the next: configured with
// start, corner and end points and orientations, two speeds, an acceleration bound and a start time, it
// answers position, velocity and orientation for any time along the curve. Nothing of the configuration is
// stored in XML: every kind writes itself as an empty element, and all interpolators of a class compare
// equal.
#include "foundation/RkOrientation.h"
#include "foundation/RkVector.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlCompoundType.h"

class RkWaypointInterpolator : public RkXmlCompoundType {
 public:
  // Set in this order before use: points, speeds (which may depend on the points), acceleration bound,
  // start time, orientations. A kind derives its own quantities after calling the setter here.
  // Every operation is real-time safe: none allocates, locks or throws, and only failures print.
  virtual void setPoints(const RkVector& firstPoint, const RkVector& secondPoint, const RkVector& thirdPoint);
  virtual void setSpeeds(RkReal firstSpeed, RkReal secondSpeed);
  virtual void setMaxAcceleration(RkReal maxAcceleration);
  // True when the curve, run from its start speed, would need more than the acceleration bound.
  virtual RkBoolean needsDelay() const = 0;
  virtual void setStartTime(RkReal startTime);
  virtual void setOrientations(const RkOrientation& firstOrientation, const RkOrientation& secondOrientation,
                               const RkOrientation& thirdOrientation);
  // Position and velocity on the curve at time; false, leaving both untouched, when there is no curve there.
  virtual RkBoolean interpolate(RkReal time, RkVector& position, RkVector& velocity) const = 0;
  // Orientation on the curve at time; false, leaving it untouched, when there is no curve there.
  virtual RkBoolean interpolate(RkReal time, RkOrientation& orientation) const = 0;

 protected:
  // Registers nothing: an interpolator is configured afresh by its user each time it is used.
  void registerComponents() override {}

  RkVector m_firstPoint;
  RkVector m_secondPoint;
  RkVector m_thirdPoint;
  // Zero until set, so that copying an unconfigured interpolator reads no indeterminate value.
  RkReal m_firstSpeed = 0.0;
  RkReal m_secondSpeed = 0.0;
  RkReal m_maxAcceleration = 0.0;
  RkReal m_startTime = 0.0;
  RkOrientation m_firstOrientation;
  RkOrientation m_secondOrientation;
  RkOrientation m_thirdOrientation;
};
