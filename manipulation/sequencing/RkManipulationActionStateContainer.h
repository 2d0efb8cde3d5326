#pragma once
// Holds the state of one action; only sequence states are rebuilt from XML by their tag.
#include "sequencing/RkManipulationActionState.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationActionStateContainer
    : public RkXmlFamilyContainer<RkManipulationActionStateContainer, RkManipulationActionState> {
 public:
  static const RkToken& classToken();

 protected:
  void registerComponentCreators() override;
};
