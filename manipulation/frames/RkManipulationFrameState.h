#pragma once
// The abstract state of a running frame: its offsets' states and the placements they give.
#include "common/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationVersion.h"
#include "xml/RkXmlVectorType.h"

class RkManipulationOffsetStateContainer;
class RkManipulatorEndEffectorPlacement;

class RkManipulationFrameState : public RkBaseExpressionTreeElement {
 public:
  virtual const RkXmlVectorType<RkManipulationOffsetStateContainer>& offsetStateContainerVector() const = 0;
  virtual const RkManipulatorEndEffectorPlacement& currentEndEffectorPlacement() const = 0;
  virtual const RkManipulatorEndEffectorPlacement& goalEndEffectorPlacement() const = 0;
};
