#pragma once
// Holds one frame of any kind, read from XML by its tag:
//   <manipulationFrameContainer><standardManipulationFrame>...</standardManipulationFrame></manipulationFrameContainer>
#include "frames/RkManipulationFrame.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationFrameContainer
    : public RkXmlFamilyContainer<RkManipulationFrameContainer, RkManipulationFrame,
                                  RkManipulation::RkManipulationFrameContainerToken> {
 public:
 protected:
  void registerComponentCreators() override;
};
