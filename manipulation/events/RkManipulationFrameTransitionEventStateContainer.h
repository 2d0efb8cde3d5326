#pragma once
// Holds the state of a frame's transition event.
#include "events/RkManipulationFrameTransitionEventState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationFrameTransitionEventStateContainer
    : public RkXmlFamilyContainer<RkManipulationFrameTransitionEventStateContainer,
                                  RkManipulationFrameTransitionEventState,
                                  RkManipulation::RkManipulationFrameTransitionEventStateContainerToken> {
 public:
 protected:
  void registerComponentCreators() override;
};
