#pragma once
// The state of a frame-relative offset: the goal it last computed, in the system frame.
#include "offsets/RkRelativeManipulationOffsetState.h"

class RkFrameRelativeManipulationOffsetState
    : public RkXmlConcreteClass<RkFrameRelativeManipulationOffsetState, RkRelativeManipulationOffsetState,
                                RkManipulation::RkFrameRelativeManipulationOffsetStateToken> {};
