#pragma once
// The controller of one manipulator, as the manipulation library sees it. A robot controller implements it;
// end-effector indices count within the active end-effector set.
#include "control/RkEndEffectorSet.h"
#include "common/RkCoordinateSystemTransformation.h"
#include "foundation/RkVector.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlVectorType.h"

class RkManipulatorController {
 public:
  virtual ~RkManipulatorController();

  // Every end-effector set the manipulator can be driven with; actions pick one by its index.
  virtual const RkXmlVectorType<RkEndEffectorSet>& endEffectorSets() const = 0;
  // The index, in endEffectorSets(), of the set being driven now.
  virtual RkU32 activeEndEffectorSetIndex() const = 0;
  // Replaces out with the actual placements of the end effectors at indices, in their order, in the system
  // frame; false when an index names no end effector, and out may then hold only some of them.
  virtual RkBoolean actualPlacements(const RkXmlVectorType<RkXmlBasicType<RkU32>>& indices,
                                     RkXmlVectorType<RkCoordinateSystemTransformation>& out) const = 0;
  // The current linear (length unit per second) and angular (radians per second) velocity of end effector
  // index in the system frame; false when index names no end effector.
  virtual RkBoolean endEffectorVelocity(RkU32 index, RkVector& linear, RkVector& angular) const = 0;
  // True while end effector index can still get closer to its commanded placement (it is neither blocked
  // nor at a limit), so a caller waiting for it to arrive may keep waiting.
  virtual RkBoolean mayKeepConverging(RkU32 index) const = 0;
  // Tells the controller that end effector index is at its commanded placement, within tolerance.
  virtual void notifyPlacementAchieved(RkU32 index) = 0;
  // Tells the controller that end effector index has reached the final goal of the running action.
  virtual void notifyGoalReached(RkU32 index) = 0;
};
