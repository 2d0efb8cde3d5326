#pragma once
// The abstract transition event: decides when its frame has ended. Constant while it runs.
#include "foundation/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationStatus.h"
#include "sequencing/RkManipulationUpdateParams.h"

class RkManipulationFrame;
class RkManipulationFrameState;
class RkManipulationFrameTransitionEventState;
class RkManipulationFrameTransitionEventStateContainer;

class RkManipulationFrameTransitionEvent : public RkBaseExpressionTreeElement {
 public:
  // A container holding the event's state as it is once the event has fired.
  virtual RkManipulationFrameTransitionEventStateContainer calculateEndState(
      const RkManipulationUpdateParams& params, const RkManipulationFrame& frame) const = 0;
  // Puts a fresh state into the container, records what the event needs from the start time and checks the
  // settings; false after one error line when a setting is invalid.
  virtual RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                         const RkManipulationFrame& frame,
                         RkManipulationFrameTransitionEventStateContainer& stateContainer) const = 0;
  // Complete once the event has fired, InProgress until then, Failure when it cannot be evaluated.
  // Real-time path: allocates nothing, takes no lock, throws nothing; prints only on Failure.
  virtual RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                            const RkManipulationFrame& frame,
                                            const RkManipulationFrameState& frameState,
                                            RkManipulationFrameTransitionEventState& state) const = 0;
};
