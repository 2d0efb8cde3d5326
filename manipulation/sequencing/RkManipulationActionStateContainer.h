#pragma once
// Holds the state of one action; only sequence states are rebuilt from XML by their tag.
#include "sequencing/RkManipulationActionState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationActionStateContainer
    : public RkXmlFamilyContainer<RkManipulationActionStateContainer, RkManipulationActionState,
                                  RkManipulation::RkManipulationActionStateContainerToken> {
 public:
 protected:
  void registerComponentCreators() override;
};
