#pragma once
// The abstract state of a running offset: the placements it commands now and aims at.
#include "foundation/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationVersion.h"

class RkEndEffectorPlacement;

class RkManipulationOffsetState : public RkBaseExpressionTreeElement {
 public:
  virtual const RkEndEffectorPlacement& currentOffsetTransformation() const = 0;
  virtual const RkEndEffectorPlacement& goalOffsetTransformation() const = 0;
};
