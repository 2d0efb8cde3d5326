#pragma once
// The abstract state of a running transition event.
#include "foundation/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationVersion.h"

class RkManipulationFrameTransitionEventState : public RkBaseExpressionTreeElement {};
