#pragma once
// The abstract state of an action: what a running sequence or waypoint sequence records.
#include "common/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationVersion.h"

class RkManipulationActionState : public RkBaseExpressionTreeElement {};
