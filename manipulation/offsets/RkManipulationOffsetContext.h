#pragma once
// Where an offset is asked from: the cycle's inputs, the sequence and its state, the frame and the end
// effector. Offsets that read other frames find them through it.
#include "sequencing/RkManipulationUpdateParams.h"

class RkManipulationSequence;
class RkManipulationSequenceState;

struct RkManipulationOffsetContext {
  const RkManipulationUpdateParams& params;
  const RkManipulationSequence& sequence;
  const RkManipulationSequenceState& sequenceState;
  RkU32 frameIndex;
  RkU32 endEffectorIndex;
};
