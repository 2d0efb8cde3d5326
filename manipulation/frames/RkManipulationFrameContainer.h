#pragma once
// Holds one frame of any kind, read from XML by its tag:
//   <manipulationFrameContainer><standardManipulationFrame>...</standardManipulationFrame></manipulationFrameContainer>
#include "frames/RkManipulationFrame.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationFrameContainer
    : public RkXmlFamilyContainer<RkManipulationFrameContainer, RkManipulationFrame> {
 public:
  static const RkToken& classToken();

 protected:
  void registerComponentCreators() override;
};
