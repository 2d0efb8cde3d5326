#include "control/RkManipulatorEndEffectorPlacement.h"

#include "control/RkControlTokens.h"
#include "foundation/RkPrint.h"

RkBoolean RkManipulatorEndEffectorPlacement::setOffsetInRelative(
    RkU32 index, const RkCoordinateSystemTransformation& placement) {
  if (index >= kMaxEndEffectorCount) {
    Rk::Print::write(4, "RkManipulatorEndEffectorPlacement::setOffsetInRelative: index %u is not below %u\n",
                     index, kMaxEndEffectorCount);
    return false;
  }
  m_offsetTransformations.resizeToAtLeast(index + 1);
  m_offsetTransformations[index] = placement;
  return true;
}

const RkManipulatorEndEffectorPlacement& RkManipulatorEndEffectorPlacement::nullObject() {
  static const RkManipulatorEndEffectorPlacement empty;
  return empty;
}

void RkManipulatorEndEffectorPlacement::registerComponents() {
  registerComponent(RkControl::RkOffsetTransformationsToken, &m_offsetTransformations,
                    "one placement per end effector, in end-effector order (m, quaternion w x y z)");
}
