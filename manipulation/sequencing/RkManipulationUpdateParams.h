#pragma once
// The per-cycle inputs the caller fills before each control cycle and hands, by const reference, to every
// init and update. The data map is the one member the library writes: a parametric frame publishes its
// current value there for the offsets of the frame it runs.
#include "common/RkDataMap.h"
#include "sequencing/RkManipulationVersion.h"

class RkStatedSystem;
class RkPositionControlSystem;
class RkPoseSet;

struct RkManipulationUpdateParams {
  // The controlled system and its current state: its manipulators and their position states.
  const RkStatedSystem* statedSystem = nullptr;
  // Picks the manipulator, and its position state, out of the stated system's lists.
  RkU32 manipulatorIndex = 0;
  // The controller of the system: per-manipulator controllers and current end-effector placements.
  RkPositionControlSystem* positionControlSystem = nullptr;
  // Picks the manipulator's controller out of the position-control system.
  RkU32 controllerIndex = 0;
  // The named poses in force; may be null.
  const RkPoseSet* poseSet = nullptr;
  // Named values; set through a const record by the parametric frame, seen by every later lookup.
  mutable RkDataMap dataMap;
};
