#pragma once
// The controlled system as the manipulation library reads it each cycle: its manipulators and, at the same
// index, each one's current position state.
#include "manipulator/RkIndividualManipulator.h"
#include "manipulator/RkPositionState.h"
#include "xml/RkXmlVectorType.h"

class RkStatedSystem {
 public:
  virtual ~RkStatedSystem();

  // The manipulators of the system.
  virtual const RkXmlVectorType<RkIndividualManipulator>& manipulators() const = 0;
  // The current state of each manipulator, entry i for manipulator i.
  virtual const RkXmlVectorType<RkPositionState>& positionStates() const = 0;
};
