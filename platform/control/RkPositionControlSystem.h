#pragma once
// The controller of a whole system of manipulators, as the manipulation library sees it: one controller per
// manipulator and the placements they drive toward. A robot controller implements it.
#include "common/RkCoordinateSystemTransformation.h"
#include "control/RkManipulatorController.h"
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "xml/RkXmlVectorType.h"

class RkPositionControlSystem {
 public:
  virtual ~RkPositionControlSystem();

  // How many manipulator controllers there are; they are indexed from 0.
  virtual RkU32 manipulatorControllerCount() const = 0;
  // The controller at index, or null when there is none.
  virtual RkManipulatorController* manipulatorController(RkU32 index) = 0;
  // Where each manipulator's end effectors actually are now, one entry per manipulator, each in the order
  // of its active end-effector set.
  virtual const RkXmlVectorType<RkManipulatorEndEffectorPlacement>& currentEndEffectorPlacements() const = 0;
  // Sets placement to where end effector endEffectorIndex of manipulator manipulatorIndex is now, in the
  // system frame; false, leaving placement unchanged, when either index names nothing.
  virtual RkBoolean actualPlacement(RkU32 manipulatorIndex, RkU32 endEffectorIndex,
                                    RkCoordinateSystemTransformation& placement) const = 0;
  // How far ahead, in seconds, the controller plans: commanded placements should lead the actual ones by it.
  virtual RkReal lookAheadTime() const = 0;
};
