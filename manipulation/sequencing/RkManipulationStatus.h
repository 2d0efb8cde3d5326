#pragma once
// The result of every update in the library. The numbers are part of the interface: callers compare them.
#include "sequencing/RkManipulationVersion.h"

namespace RkManipulationStatus {
enum Enum {
  Failure = 0,     // the step failed; the failing level printed why
  InProgress = 1,  // the running element goes on; nothing began or ended
  Transition = 2,  // an element started in this call, or ended with another to follow
  Complete = 3     // finished; for a list, its last element finished
};
}  // namespace RkManipulationStatus
