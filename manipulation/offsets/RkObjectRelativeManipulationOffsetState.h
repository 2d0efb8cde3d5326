#pragma once
// The state of an object-relative offset: the goal it last computed, in the system frame.
#include "offsets/RkRelativeManipulationOffsetState.h"

class RkObjectRelativeManipulationOffsetState
    : public RkXmlConcreteClass<RkObjectRelativeManipulationOffsetState, RkRelativeManipulationOffsetState,
                                RkManipulation::RkObjectRelativeManipulationOffsetStateToken> {};
