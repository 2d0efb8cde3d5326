#include "waypoints/RkWaypointInterpolatorContainer.h"

#include "waypoints/RkBezierInterpolator.h"

void RkWaypointInterpolatorContainer::registerComponentCreators() {
  registerComponentCreator(RkBezierInterpolator::classToken(), &RkBezierInterpolator::creator);
}
