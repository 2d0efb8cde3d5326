#pragma once
// Commands a fixed goal placement, given in the system frame:
//   <constantManipulationOffset><manipulationOffset>
//     <translation>0.4 0 0.3</translation><orientation>0 1 0 0</orientation>
//   </manipulationOffset></constantManipulationOffset>
#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkManipulationOffset.h"
#include "xml/RkXmlConcreteClass.h"

class RkConstantManipulationOffset
    : public RkXmlConcreteClass<RkConstantManipulationOffset, RkManipulationOffset> {
 public:
  bool operator==(const RkConstantManipulationOffset& other) const {
    return RkManipulationOffset::operator==(other) && m_offset == other.m_offset;
  }
  bool operator!=(const RkConstantManipulationOffset& other) const { return !(*this == other); }
  static const RkToken& classToken();

  void findDataMapReferences(std::map<std::string, RkReal>& references) const override;
  RkManipulationOffsetStateContainer calculateEndState(const RkManipulationUpdateParams& params,
                                                       const RkManipulationSequence& sequence,
                                                       const RkManipulationSequenceState& sequenceState,
                                                       RkU32 frameIndex,
                                                       RkU32 endEffectorIndex) const override;
  RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                 const RkManipulationSequence& sequence, const RkManipulationSequenceState& sequenceState,
                 RkU32 frameIndex, RkU32 endEffectorIndex,
                 RkManipulationOffsetStateContainer& stateContainer) const override;
  // Nothing to do: Complete from the first call. Real-time safe.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    const RkManipulationSequence& sequence,
                                    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                                    RkU32 endEffectorIndex, RkManipulationOffsetState& state) const override;
  RkEndEffectorPlacement calculateOffsetTransformationInSystemFrame(
      const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
      const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 endEffectorIndex,
      const RkManipulationOffsetState& state) const override;
  void setFromOffsetTransformationInSystemFrame(const RkEndEffectorPlacement& placement,
                                                const RkManipulationUpdateParams& params,
                                                const RkManipulationSequence& sequence,
                                                const RkManipulationSequenceState& sequenceState,
                                                RkU32 frameIndex, RkU32 endEffectorIndex,
                                                RkManipulationOffsetState& state) override;
  // The offset itself, whatever state is given.
  const RkEndEffectorPlacement& currentOffsetTransformation(
      const RkManipulationOffsetState& state) const override;
  const RkEndEffectorPlacement& goalOffsetTransformation(
      const RkManipulationOffsetState& state) const override;

  virtual const RkEndEffectorPlacement& offset() const { return m_offset; }
  virtual void setOffset(const RkEndEffectorPlacement& offset) { m_offset = offset; }

 protected:
  void registerComponents() override;

 private:
  RkEndEffectorPlacement m_offset;
};
