#pragma once
// Holds one action of any kind, read from XML by its tag:
//   <manipulationActionContainer><manipulationSequence>...</manipulationSequence></manipulationActionContainer>
#include "sequencing/RkManipulationAction.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationActionContainer
    : public RkXmlFamilyContainer<RkManipulationActionContainer, RkManipulationAction,
                                  RkManipulation::RkManipulationActionContainerToken> {
 public:
 protected:
  void registerComponentCreators() override;
};
