#pragma once
// Holds the state of one frame, read from XML by its tag.
#include "frames/RkManipulationFrameState.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationFrameStateContainer
    : public RkXmlFamilyContainer<RkManipulationFrameStateContainer, RkManipulationFrameState> {
 public:
  static const RkToken& classToken();

 protected:
  void registerComponentCreators() override;
};
