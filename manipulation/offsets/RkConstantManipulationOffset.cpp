#include "offsets/RkConstantManipulationOffset.h"

void RkConstantManipulationOffset::setFromOffset(const RkEndEffectorPlacement& placement, const Context&,
                                                 State&) {
  m_offset = placement;
}
