#pragma once
// The waypoints of a waypoint sequence, in running order:
//   <waypointSequence><manipulationWaypointVector count="2"><element>...</element><element>...</element>
//   </manipulationWaypointVector></waypointSequence>
#include "sequencing/RkManipulationTokens.h"
#include "waypoints/RkManipulationWaypoint.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlVectorType.h"

class RkManipulationWaypointVector
    : public RkXmlConcreteClass<RkManipulationWaypointVector, RkXmlVectorType<RkManipulationWaypoint>,
                                RkManipulation::RkManipulationWaypointVectorToken> {
 public:
  static RkManipulationWaypointVector nullObject() { return RkManipulationWaypointVector(); }
};
