#pragma once
// Holds the interpolator that rounds a waypoint's corner, of whichever kind:
//   <waypointInterpolatorContainer><bezierInterpolator/></waypointInterpolatorContainer>
#include "sequencing/RkManipulationTokens.h"
#include "waypoints/RkWaypointInterpolator.h"
#include "xml/RkXmlFamilyContainer.h"

class RkWaypointInterpolatorContainer
    : public RkXmlFamilyContainer<RkWaypointInterpolatorContainer, RkWaypointInterpolator,
                                  RkManipulation::RkWaypointInterpolatorContainerToken> {
 protected:
  void registerComponentCreators() override;
};
