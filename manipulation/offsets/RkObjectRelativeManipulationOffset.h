#pragma once
// Places an end effector relative to the manipulator itself, as it stands in the system now; the goal follows
// the manipulator every cycle. 40 cm ahead of the arm's base and 30 cm up, turned with the base:
//   <objectRelativeManipulationOffset><relativeOffset><translation>0.4 0 0.3</translation>
//   <orientation>0 1 0 0</orientation></relativeOffset>
//   <manipulationFrameXAxisVector>1 0 0</manipulationFrameXAxisVector>
//   <manipulationFrameXAxisSourceFrame>objectFrame</manipulationFrameXAxisSourceFrame>
//   <manipulationFrameYAxisVector>0 1 0</manipulationFrameYAxisVector>
//   <manipulationFrameYAxisSourceFrame>objectFrame</manipulationFrameYAxisSourceFrame>
//   </objectRelativeManipulationOffset>
#include "offsets/RkObjectRelativeManipulationOffsetState.h"
#include "offsets/RkRelativeManipulationOffsetKind.h"

class RkObjectRelativeManipulationOffset
    : public RkRelativeManipulationOffsetKind<RkObjectRelativeManipulationOffset,
                                              RkObjectRelativeManipulationOffsetState,
                                              RkManipulation::RkObjectRelativeManipulationOffsetToken> {
 public:
  // The manipulator's frame in the system frame for its current position state. Real-time safe.
  virtual RkBoolean calculatePrimaryFrame(const RkManipulationUpdateParams& params,
                                          const RkManipulationSequence& sequence, RkU32 frameIndex,
                                          RkU32 endEffectorIndex,
                                          RkCoordinateSystemTransformation& primaryFrame) const;

  // Hook of the relative kinds.
  void reportInvalidManipulationFrame(const std::string& problem) const;
};
