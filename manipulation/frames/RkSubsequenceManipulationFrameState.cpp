#include "frames/RkSubsequenceManipulationFrameState.h"

#include "sequencing/RkManipulationSequenceState.h"

const RkManipulationFrameState* RkSubsequenceManipulationFrameState::runningFrameState() const {
  const auto* sequenceState = dynamic_cast<const RkManipulationSequenceState*>(subsequenceState());
  return sequenceState ? sequenceState->currentFrameState() : nullptr;
}
