#pragma once
// The empty objects the library's queries return when there is nothing real to return (no running frame
// or sequence, an index past the last set). Built at load time and never changed.
#include "sequencing/RkManipulationVersion.h"

class RkDataMap;
class RkEndEffectorPlacement;

// The end-effector set and manipulator placement have their own null objects in the control library.
namespace RkManipulationNullObjects {
const RkDataMap& dataMap();
const RkEndEffectorPlacement& placement();
}  // namespace RkManipulationNullObjects
