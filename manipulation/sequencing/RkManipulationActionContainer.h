#pragma once
// Holds one action of any kind, read from XML by its tag:
//   <manipulationActionContainer><manipulationSequence>...</manipulationSequence></manipulationActionContainer>
#include "sequencing/RkManipulationAction.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationActionContainer
    : public RkXmlFamilyContainer<RkManipulationActionContainer, RkManipulationAction> {
 public:
  static const RkToken& classToken();

 protected:
  void registerComponentCreators() override;
};
