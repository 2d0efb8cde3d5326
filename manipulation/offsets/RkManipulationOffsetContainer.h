#pragma once
// Holds the offset of one end effector:
//   <manipulationOffsetContainer><constantManipulationOffset>...</constantManipulationOffset>
//   </manipulationOffsetContainer>
#include "offsets/RkManipulationOffset.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationOffsetContainer
    : public RkXmlFamilyContainer<RkManipulationOffsetContainer, RkManipulationOffset,
                                  RkManipulation::RkManipulationOffsetContainerToken> {
 public:
 protected:
  void registerComponentCreators() override;
};
