#pragma once
// The abstract offset: the rule that gives one end effector its goal placement, in the system frame, while
// its frame runs. Constant while it runs; everything that changes lives in its state.
#include <map>
#include <string>

#include "foundation/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationStatus.h"
#include "sequencing/RkManipulationUpdateParams.h"

class RkEndEffectorPlacement;
class RkManipulationOffsetState;
class RkManipulationOffsetStateContainer;
class RkManipulationSequence;
class RkManipulationSequenceState;

class RkManipulationOffset : public RkBaseExpressionTreeElement {
 public:
  // Adds the names of the data-map values this offset reads.
  virtual void findDataMapReferences(std::map<std::string, RkReal>& references) const = 0;
  // The state this offset would have when its frame ends, computed without running the frame.
  virtual RkManipulationOffsetStateContainer calculateEndState(
      const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
      const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 endEffectorIndex) const = 0;
  // Creates this kind's state in the container and fills it for the start of the frame.
  virtual RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                         const RkManipulationSequence& sequence,
                         const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                         RkU32 endEffectorIndex,
                         RkManipulationOffsetStateContainer& stateContainer) const = 0;
  // Advances the state to the given time: Failure, InProgress, or Complete when nothing is left to do.
  // Real-time path: allocates nothing, takes no lock, throws nothing; prints only on Failure.
  virtual RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                            const RkManipulationSequence& sequence,
                                            const RkManipulationSequenceState& sequenceState,
                                            RkU32 frameIndex, RkU32 endEffectorIndex,
                                            RkManipulationOffsetState& state) const = 0;
  // The goal this offset stands for, in the system frame, computed afresh; a default placement on failure.
  virtual RkEndEffectorPlacement calculateOffsetTransformationInSystemFrame(
      const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
      const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 endEffectorIndex,
      const RkManipulationOffsetState& state) const = 0;
  // Changes the offset (and where needed its state) so that it would now produce placement.
  virtual void setFromOffsetTransformationInSystemFrame(const RkEndEffectorPlacement& placement,
                                                        const RkManipulationUpdateParams& params,
                                                        const RkManipulationSequence& sequence,
                                                        const RkManipulationSequenceState& sequenceState,
                                                        RkU32 frameIndex, RkU32 endEffectorIndex,
                                                        RkManipulationOffsetState& state) = 0;
  // The placement the offset commands now, and the one it finally aims at.
  virtual const RkEndEffectorPlacement& currentOffsetTransformation(
      const RkManipulationOffsetState& state) const = 0;
  virtual const RkEndEffectorPlacement& goalOffsetTransformation(
      const RkManipulationOffsetState& state) const = 0;
};
