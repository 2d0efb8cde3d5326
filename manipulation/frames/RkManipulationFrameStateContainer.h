#pragma once
// Holds the state of one frame, read from XML by its tag.
#include "frames/RkManipulationFrameState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationFrameStateContainer
    : public RkXmlFamilyContainer<RkManipulationFrameStateContainer, RkManipulationFrameState,
                                  RkManipulation::RkManipulationFrameStateContainerToken> {
 public:
 protected:
  void registerComponentCreators() override;
};
