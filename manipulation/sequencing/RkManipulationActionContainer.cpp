#include "sequencing/RkManipulationActionContainer.h"

#include "sequencing/RkManipulationSequence.h"
#include "sequencing/RkManipulationTokens.h"
#include "waypoints/RkWaypointSequence.h"

void RkManipulationActionContainer::registerComponentCreators() {
  registerComponentCreator(RkManipulationSequence::classToken(), &RkManipulationSequence::creator);
  registerComponentCreator(RkWaypointSequence::classToken(), &RkWaypointSequence::creator);
}
