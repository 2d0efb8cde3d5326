#pragma once
// The abstract state of a running transition event; includes what every kind of state is written with.
#include "common/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"

class RkManipulationFrameTransitionEventState : public RkBaseExpressionTreeElement {};
