#include "sequencing/RkManipulationNullObjects.h"

#include "control/RkEndEffectorPlacement.h"
#include "common/RkDataMap.h"

namespace RkManipulationNullObjects {
namespace {
const RkDataMap theNullDataMap;
const RkEndEffectorPlacement theNullPlacement;
}  // namespace

const RkDataMap& dataMap() {
  return theNullDataMap;
}
const RkEndEffectorPlacement& placement() {
  return theNullPlacement;
}
}  // namespace RkManipulationNullObjects
