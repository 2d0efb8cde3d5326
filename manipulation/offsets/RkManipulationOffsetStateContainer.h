#pragma once
// Holds the state of one offset, read from XML by its tag; an empty state, or one of at most one number
// beside its base, stands in the container itself, so starting a frame allocates nothing for it.
#include "offsets/RkManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationOffsetStateContainer
    : public RkXmlFamilyContainer<RkManipulationOffsetStateContainer, RkManipulationOffsetState,
                                  RkManipulation::RkManipulationOffsetStateContainerToken, 32> {
 public:
 protected:
  void registerComponentCreators() override;
};
