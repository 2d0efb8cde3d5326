#include "frames/RkNestedManipulationFrame.h"

namespace RkNestedManipulationFrameNullObjects {
namespace {
const RkXmlVectorType<RkManipulationOffsetContainer> theNullOffsets;
const RkXmlVectorType<RkManipulationOffsetStateContainer> theNullOffsetStates;
}  // namespace

const RkXmlVectorType<RkManipulationOffsetContainer>& offsets() {
  return theNullOffsets;
}
const RkXmlVectorType<RkManipulationOffsetStateContainer>& offsetStates() {
  return theNullOffsetStates;
}
}  // namespace RkNestedManipulationFrameNullObjects
