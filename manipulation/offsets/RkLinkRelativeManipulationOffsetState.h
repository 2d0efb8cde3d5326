#pragma once
// The state of a link-relative offset: the goal it last computed, in the system frame.
#include "offsets/RkRelativeManipulationOffsetState.h"

class RkLinkRelativeManipulationOffsetState
    : public RkXmlConcreteClass<RkLinkRelativeManipulationOffsetState, RkRelativeManipulationOffsetState,
                                RkManipulation::RkLinkRelativeManipulationOffsetStateToken> {};
