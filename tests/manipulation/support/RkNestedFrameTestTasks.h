#pragma once
// Builders of the frames that run other frames, and of the offsets that read the data map or the pose set,
// for the library's tests and benchmarks.
#include <initializer_list>
#include <string>

#include "frames/RkParametricManipulationFrame.h"
#include "frames/RkSubsequenceManipulationFrame.h"
#include "manipulation/support/RkManipulationTestTasks.h"
#include "offsets/RkParametricTranslationManipulationOffset.h"
#include "offsets/RkReferencePoseManipulationOffset.h"
#include "sequencing/RkPoseSet.h"

// The goal moved along the goal's own y axis by the data-map value named yTag.
inline RkParametricTranslationManipulationOffset shiftedAlongY(const RkCoordinateSystemTransformation& goal,
                                                               const std::string& yTag) {
  RkConstantManipulationOffset target;
  target.setOffset(RkEndEffectorPlacement(goal));
  RkManipulationOffsetContainer container;
  container.setElement(target);
  RkParametricTranslationManipulationOffset offset;
  offset.setTargetOffset(container);
  offset.setParametricYTag(yTag);
  return offset;
}

// A standard frame with the given offset for its one end effector.
inline RkStandardManipulationFrame frameWithOffset(const std::string& tag, const RkManipulationOffset& offset,
                                                   const RkManipulationFrameTransitionEvent& event) {
  RkStandardManipulationFrame frame = standardFrame(tag, {}, event);
  RkXmlVectorType<RkManipulationOffsetContainer> offsets(1);
  offsets[0].setElement(offset);
  frame.setOffsetContainerVector(offsets);
  return frame;
}

// Runs target once for each value, published under parametricTag; no event unless one is given.
inline RkParametricManipulationFrame parametricFrame(const std::string& tag,
                                                     const RkManipulationFrame& target,
                                                     const std::string& parametricTag,
                                                     std::initializer_list<RkReal> values) {
  RkParametricManipulationFrame frame;
  frame.setTag(tag);
  RkManipulationFrameContainer container;
  container.setElement(target);
  frame.setTargetFrame(container);
  frame.setParametricTag(parametricTag);
  RkXmlVectorType<RkXmlBasicType<RkReal>> list;
  for (RkReal value : values) list.pushBack(value);
  frame.setParametricValues(list);
  return frame;
}

// Runs subsequence as one frame; no event unless one is given.
inline RkSubsequenceManipulationFrame subsequenceFrame(const std::string& tag,
                                                       const RkManipulationSequence& subsequence) {
  RkSubsequenceManipulationFrame frame;
  frame.setTag(tag);
  frame.setSubsequence(subsequence);
  return frame;
}

template <class Frame>
void setEvent(Frame& frame, const RkManipulationFrameTransitionEvent& event) {
  RkManipulationFrameTransitionEventContainer container;
  container.setElement(event);
  frame.setTransitionEventContainer(container);
}

// A frame, its sequence and the inputs of a cycle, to drive a frame by hand.
struct RkFrameRun {
  RkManipulationSequence sequence;
  RkManipulationSequenceState sequenceState;
  RkManipulationUpdateParams params;
  RkManipulationFrameStateContainer container;

  RkBoolean init(const RkManipulationFrame& frame, RkReal time = 0.0) {
    return frame.init(time, params, sequence, sequenceState, 0, container);
  }
  RkManipulationStatus::Enum update(const RkManipulationFrame& frame, RkReal time = 0.0) {
    return frame.update(time, params, sequence, sequenceState, 0, *container.element());
  }
  // The goal of end effector 0.
  const RkCoordinateSystemTransformation& goal() const {
    return container.element()->goalEndEffectorPlacement().offsetTransformations()[0];
  }
};
