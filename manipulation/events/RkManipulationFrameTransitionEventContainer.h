#pragma once
// Holds the transition event of a frame:
//   <manipulationFrameTransitionEventContainer><timeDurationTransitionEvent>...</...></...>
#include "events/RkManipulationFrameTransitionEvent.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationFrameTransitionEventContainer
    : public RkXmlFamilyContainer<RkManipulationFrameTransitionEventContainer,
                                  RkManipulationFrameTransitionEvent> {
 public:
  static const RkToken& classToken();

 protected:
  void registerComponentCreators() override;
};
