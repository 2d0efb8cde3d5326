#include "control/RkEndEffectorPlacement.h"

#include <cmath>

#include "control/RkControlTokens.h"
#include "foundation/RkPrint.h"

RkEndEffectorPlacement RkEndEffectorPlacement::interpolation(const RkEndEffectorPlacement& from,
                                                             const RkEndEffectorPlacement& to, RkReal s) {
  if (!std::isfinite(s)) {
    Rk::Print::write(4, "RkEndEffectorPlacement::interpolation: fraction %g is not finite; kept the start\n",
                     s);
    return from;
  }
  const RkCoordinateSystemTransformation& start = from.placement();
  const RkCoordinateSystemTransformation& end = to.placement();
  // The orientation slerp follows the great arc beyond its ends as well, so it extends rather than clamps.
  return RkEndEffectorPlacement(RkCoordinateSystemTransformation(
      start.translation() + (end.translation() - start.translation()) * s,
      RkOrientation::interpolation(start.orientation(), end.orientation(), s)));
}

void RkEndEffectorPlacement::registerComponents() {
  registerComponent(RkControl::RkPlacementToken, &m_placement,
                    "the end effector's placement (m, quaternion w x y z)");
}
