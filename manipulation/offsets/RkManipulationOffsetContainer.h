#pragma once
// Holds the offset of one end effector:
//   <manipulationOffsetContainer><constantManipulationOffset>...</constantManipulationOffset></...>
#include "offsets/RkManipulationOffset.h"
#include "xml/RkXmlFamilyContainer.h"

class RkManipulationOffsetContainer
    : public RkXmlFamilyContainer<RkManipulationOffsetContainer, RkManipulationOffset> {
 public:
  static const RkToken& classToken();

 protected:
  void registerComponentCreators() override;
};
