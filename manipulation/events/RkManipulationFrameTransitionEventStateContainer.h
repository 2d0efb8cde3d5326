#pragma once
// Holds the state of a frame's transition event; a state of at most one number beside its base stands in the
// container itself, so starting a frame allocates nothing for it.
#include "events/RkManipulationFrameTransitionEventState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationFrameTransitionEventStateContainer
    : public RkXmlFamilyContainer<RkManipulationFrameTransitionEventStateContainer,
                                  RkManipulationFrameTransitionEventState,
                                  RkManipulation::RkManipulationFrameTransitionEventStateContainerToken, 32> {
 public:
 protected:
  void registerComponentCreators() override;
};
