#pragma once
// The abstract state of a running offset: the placements it commands now and aims at. Includes what every
// kind of state is written with.
#include "common/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"

class RkEndEffectorPlacement;

class RkManipulationOffsetState : public RkBaseExpressionTreeElement {
 public:
  virtual const RkEndEffectorPlacement& currentOffsetTransformation() const = 0;
  virtual const RkEndEffectorPlacement& goalOffsetTransformation() const = 0;
};
