#pragma once
// Holds the state of one offset, read from XML by its tag.
#include "offsets/RkManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationOffsetStateContainer
    : public RkXmlFamilyContainer<RkManipulationOffsetStateContainer, RkManipulationOffsetState,
                                  RkManipulation::RkManipulationOffsetStateContainerToken> {
 public:
 protected:
  void registerComponentCreators() override;
};
