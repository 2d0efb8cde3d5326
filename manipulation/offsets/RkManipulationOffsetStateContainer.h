#pragma once
// Holds the state of one offset, read from XML by its tag.
#include "offsets/RkManipulationOffsetState.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationOffsetStateContainer
    : public RkXmlFamilyContainer<RkManipulationOffsetStateContainer, RkManipulationOffsetState> {
 public:
  static const RkToken& classToken();

 protected:
  void registerComponentCreators() override;
};
