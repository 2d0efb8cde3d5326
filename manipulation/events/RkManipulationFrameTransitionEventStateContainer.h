#pragma once
// Holds the state of a frame's transition event.
#include "events/RkManipulationFrameTransitionEventState.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationFrameTransitionEventStateContainer
    : public RkXmlFamilyContainer<RkManipulationFrameTransitionEventStateContainer,
                                  RkManipulationFrameTransitionEventState> {
 public:
  static const RkToken& classToken();

 protected:
  void registerComponentCreators() override;
};
