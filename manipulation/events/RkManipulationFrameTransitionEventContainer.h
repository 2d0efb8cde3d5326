#pragma once
// Holds the transition event of a frame:
//   <manipulationFrameTransitionEventContainer><timeDurationTransitionEvent>
//     <timeDuration>2</timeDuration></timeDurationTransitionEvent></manipulationFrameTransitionEventContainer>
#include "events/RkManipulationFrameTransitionEvent.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationFrameTransitionEventContainer
    : public RkXmlFamilyContainer<RkManipulationFrameTransitionEventContainer,
                                  RkManipulationFrameTransitionEvent,
                                  RkManipulation::RkManipulationFrameTransitionEventContainerToken> {
 public:
 protected:
  void registerComponentCreators() override;
};
