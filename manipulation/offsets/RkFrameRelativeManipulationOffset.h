#pragma once
// Places an end effector relative to the goal an earlier frame gave the end effector on the same link; the
// goal is fixed when the frame starts. Retreat 10 cm along the tool axis from where frame 1 put the tool:
//   <frameRelativeManipulationOffset><relativeOffset><translation>0 0 -0.1</translation>
//   <orientation>1 0 0 0</orientation></relativeOffset>
//   <manipulationFrameXAxisVector>1 0 0</manipulationFrameXAxisVector>
//   <manipulationFrameXAxisSourceFrame>objectFrame</manipulationFrameXAxisSourceFrame>
//   <manipulationFrameYAxisVector>0 1 0</manipulationFrameYAxisVector>
//   <manipulationFrameYAxisSourceFrame>objectFrame</manipulationFrameYAxisSourceFrame>
//   <manipulationFrameZAxisVector>0 0 1</manipulationFrameZAxisVector>
//   <manipulationFrameZAxisSourceFrame>objectFrame</manipulationFrameZAxisSourceFrame>
//   <frameIndex>1</frameIndex></frameRelativeManipulationOffset>
#include "offsets/RkFrameRelativeManipulationOffsetState.h"
#include "offsets/RkRelativeManipulationOffsetKind.h"
#include "xml/RkXmlBasicType.h"

class RkFrameRelativeManipulationOffset
    : public RkRelativeManipulationOffsetKind<RkFrameRelativeManipulationOffset,
                                              RkFrameRelativeManipulationOffsetState,
                                              RkManipulation::RkFrameRelativeManipulationOffsetToken> {
 public:
  // The goal fixed at the start holds for the whole frame. Real-time safe.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    const RkManipulationSequence& sequence,
                                    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                                    RkU32 endEffectorIndex, RkManipulationOffsetState& state) const override;
  // Only the strict object-frame and system-frame settings are usable.
  std::string validManipulationFrame() const override;

  virtual RkU32 frameIndex() const { return m_frameIndex; }
  virtual void setFrameIndex(RkU32 index) { m_frameIndex = index; }
  // The reference goal: that of the end effector on the same link in frame frameIndex() of the sequence.
  virtual RkBoolean calculatePrimaryFrame(const RkManipulationUpdateParams& params,
                                          const RkManipulationSequence& sequence,
                                          const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                                          RkU32 endEffectorIndex, const RkManipulationOffsetState& state,
                                          RkCoordinateSystemTransformation& primaryFrame) const;

  // Hooks of the relative kinds. With system-frame axes the relative offset acts in the system frame,
  // before the reference goal: goal = offset * reference goal.
  RkBoolean primaryFrame(const Context& context, const RkManipulationOffsetState& state,
                         RkCoordinateSystemTransformation& primaryFrame) const;
  RkBoolean start(RkReal time, const Context& context, State& state) const;
  void reportInvalidManipulationFrame(const std::string& problem) const;
  RkEndEffectorPlacement goalFromPrimaryFrame(const RkCoordinateSystemTransformation& primaryFrame) const;
  RkCoordinateSystemTransformation relativeOffsetFor(
      const RkCoordinateSystemTransformation& goal,
      const RkCoordinateSystemTransformation& primaryFrame) const;

 protected:
  void registerComponents() override {
    RkRelativeManipulationOffset::registerComponents();
    registerComponent(RkManipulation::RkFrameIndexToken, &m_frameIndex,
                      "index, from 0, of the earlier frame of the sequence whose goal is the primary frame");
  }

 private:
  RkBoolean systemFrameAxes() const;

  RkXmlBasicType<RkU32> m_frameIndex;
};
