#pragma once
// The abstract frame: one step of a sequence that gives every end effector of the active set a goal and
// ends when its transition event fires. Constant while it runs; everything it computes lives in its state.
#include <map>
#include <string>

#include "foundation/RkBaseExpressionTreeElement.h"
#include "sequencing/RkManipulationStatus.h"
#include "sequencing/RkManipulationUpdateParams.h"
#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlVectorType.h"

class RkDataMap;
class RkEndEffectorSet;
class RkManipulatorEndEffectorPlacement;
class RkManipulationFrameState;
class RkManipulationFrameStateContainer;
class RkManipulationOffsetContainer;
class RkManipulationSequence;
class RkManipulationSequenceState;

class RkManipulationFrame : public RkBaseExpressionTreeElement {
 public:
  // A free label of the frame.
  virtual const RkXmlBasicType<std::string>& tag() const { return m_tag; }
  virtual void setTag(const RkXmlBasicType<std::string>& tag) { m_tag = tag; }

  // The offsets in force, one per end effector.
  virtual const RkXmlVectorType<RkManipulationOffsetContainer>& offsetContainerVector(
      const RkManipulationFrameState& state) const = 0;
  virtual const RkDataMap& dataMap(const RkManipulationFrameState& state) const = 0;
  // Adds every data-map name the frame's offsets refer to; a name already present keeps its value.
  virtual void findDataMapReferences(std::map<std::string, RkReal>& references) const = 0;
  virtual RkU32 activeControlDescription(const RkManipulationFrameState& state) const = 0;
  virtual RkU32 activeEndEffectorSet(const RkManipulationFrameState& state) const = 0;
  virtual RkU32 activeControlMethod(const RkManipulationFrameState& state) const = 0;
  // The end-effector set the active index selects; never null.
  virtual const RkEndEffectorSet& endEffectorSet(const RkManipulationUpdateParams& params,
                                                 const RkManipulationFrameState& state) const = 0;
  // The state as it will be when the frame has ended, computed without running it; empty on failure.
  virtual RkManipulationFrameStateContainer calculateEndState(
      const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
      const RkManipulationSequenceState& sequenceState, RkU32 frameIndex) const = 0;
  // Creates this frame's state in the container, ready for update at the given time.
  virtual RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                         const RkManipulationSequence& sequence,
                         const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                         RkManipulationFrameStateContainer& stateContainer) const = 0;
  // Advances the frame to the given time; the status tells whether it has ended.
  // Real-time path while no element starts or ends: allocates nothing, takes no lock, throws nothing;
  // prints only on Failure.
  virtual RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                            const RkManipulationSequence& sequence,
                                            const RkManipulationSequenceState& sequenceState,
                                            RkU32 frameIndex, RkManipulationFrameState& state) const = 0;
  virtual std::string statusString(const RkManipulationFrameState& state,
                                   const std::string& prefix) const = 0;
  // The placements the offsets give now, and those they aim at.
  virtual const RkManipulatorEndEffectorPlacement& currentEndEffectorPlacement(
      const RkManipulationFrameState& state) const = 0;
  virtual const RkManipulatorEndEffectorPlacement& goalEndEffectorPlacement(
      const RkManipulationFrameState& state) const = 0;

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<std::string> m_tag;
};
