#pragma once
// The hand-over rule shared by every list that runs its elements one after another (a sequence over its
// frames, the manager over its sequences): what the list reports for its running element's result.
#include "sequencing/RkManipulationStatus.h"

namespace RkManipulationHandOver {
// InProgress becomes Transition when the element started in this call; Complete (or any value past
// Transition) sets elementComplete and is reported as Transition when another element follows, else as
// Complete. Failure is passed on; the caller prints its own line for it. Real-time safe.
inline RkManipulationStatus::Enum report(RkManipulationStatus::Enum result, bool startedNow,
                                         bool anotherFollows, bool& elementComplete) {
  elementComplete = false;
  switch (result) {
    case RkManipulationStatus::Failure:
      return RkManipulationStatus::Failure;
    case RkManipulationStatus::InProgress:
      return startedNow ? RkManipulationStatus::Transition : RkManipulationStatus::InProgress;
    case RkManipulationStatus::Transition:
      return RkManipulationStatus::Transition;
    default:
      elementComplete = true;
      return anotherFollows ? RkManipulationStatus::Transition : RkManipulationStatus::Complete;
  }
}
}  // namespace RkManipulationHandOver
