#pragma once
// Runs its target frame once for each of a list of values, publishing the value in force under the
// parametric tag in the update parameters' data map, where the target's offsets read it. It steps to the
// next value when the target completes, and completes after the last value once its own event agrees:
//   <parametricManipulationFrame>
//     <tag>row</tag>
//     <targetFrame><standardManipulationFrame>...</standardManipulationFrame></targetFrame>
//     <parametricTag>slot y=</parametricTag>
//     <parametricValues count="3"><group>-0.1 0 0.1</group></parametricValues>
//   </parametricManipulationFrame>
// The value lives in the caller's data map, not in the state: a run read back from a written state goes on
// exactly, since the value is published again on every cycle, but a later frame that reads it needs the
// caller's data map carried over with the state.
#include <string>

#include "frames/RkManipulationFrameContainer.h"
#include "frames/RkNestedManipulationFrame.h"
#include "frames/RkParametricManipulationFrameState.h"

class RkParametricManipulationFrame
    : public RkNestedManipulationFrame<RkParametricManipulationFrame, RkParametricManipulationFrameState,
                                       RkManipulation::RkParametricManipulationFrameToken> {
 public:
  // Forgets the parametric tag: this frame supplies it, so it is no outside reference.
  void findDataMapReferences(std::map<std::string, RkReal>& references) const override;
  RkManipulationFrameStateContainer calculateEndState(const RkManipulationUpdateParams& params,
                                                      const RkManipulationSequence& sequence,
                                                      const RkManipulationSequenceState& sequenceState,
                                                      RkU32 frameIndex) const override;
  // Publishes the first value and starts the target and the event.
  RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                 const RkManipulationSequence& sequence, const RkManipulationSequenceState& sequenceState,
                 RkU32 frameIndex, RkManipulationFrameStateContainer& stateContainer) const override;
  // Publishes the value in force, updates the target and, once it completes with values left, restarts it
  // on the next value (Transition). Real-time safe within one value.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    const RkManipulationSequence& sequence,
                                    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                                    RkManipulationFrameState& state) const override;
  // tag, prefix, parametric tag and value, prefix, then the target's text, with nothing else between.
  std::string statusString(const RkManipulationFrameState& state, const std::string& prefix) const override;

  const RkManipulationFrame* runningFrame(const State&) const { return m_targetFrame.element(); }

  virtual const RkManipulationFrameContainer& targetFrame() const { return m_targetFrame; }
  virtual void setTargetFrame(const RkManipulationFrameContainer& target) { m_targetFrame = target; }
  virtual const std::string& parametricTag() const { return m_parametricTag.value(); }
  virtual void setParametricTag(const std::string& tag) { m_parametricTag = tag; }
  virtual const RkXmlVectorType<RkXmlBasicType<RkReal>>& parametricValues() const {
    return m_parametricValues;
  }
  virtual void setParametricValues(const RkXmlVectorType<RkXmlBasicType<RkReal>>& values) {
    m_parametricValues = values;
  }

 protected:
  void registerComponents() override;

 private:
  // Starts the target frame into a fresh container; false when it cannot start.
  RkBoolean startTarget(RkReal time, const RkManipulationUpdateParams& params,
                        const RkManipulationSequence& sequence,
                        const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                        RkManipulationFrameStateContainer& container) const;

  RkManipulationFrameContainer m_targetFrame;
  RkXmlBasicType<std::string> m_parametricTag;
  RkXmlVectorType<RkXmlBasicType<RkReal>> m_parametricValues;
};
