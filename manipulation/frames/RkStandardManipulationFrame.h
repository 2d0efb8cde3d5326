#pragma once
// The ordinary step of a sequence: one offset per end effector and one transition event that ends it.
//   <standardManipulationFrame>
//     <tag>approach</tag>
//     <manipulationOffsetContainerVector count="1"><element>
//       <constantManipulationOffset>...</constantManipulationOffset></element>
//     </manipulationOffsetContainerVector>
//     <manipulationFrameTransitionEventContainer><timeDurationTransitionEvent>
//       <timeDuration>2</timeDuration></timeDurationTransitionEvent></manipulationFrameTransitionEventContainer>
//   </standardManipulationFrame>
#include "common/RkDataMap.h"
#include "events/RkManipulationFrameTransitionEventContainer.h"
#include "frames/RkManipulationFrame.h"
#include "frames/RkStandardManipulationFrameState.h"
#include "offsets/RkManipulationOffsetContainer.h"

class RkStandardManipulationFrame
    : public RkXmlConcreteClass<RkStandardManipulationFrame, RkManipulationFrame,
                                RkManipulation::RkStandardManipulationFrameToken> {
 public:
  const RkXmlVectorType<RkManipulationOffsetContainer>& offsetContainerVector(
      const RkManipulationFrameState& state) const override;
  const RkDataMap& dataMap(const RkManipulationFrameState& state) const override;
  void findDataMapReferences(std::map<std::string, RkReal>& references) const override;
  RkU32 activeControlDescription(const RkManipulationFrameState& state) const override;
  RkU32 activeEndEffectorSet(const RkManipulationFrameState& state) const override;
  RkU32 activeControlMethod(const RkManipulationFrameState& state) const override;
  // The set the active index selects; 0xFFFFFFFF selects the controller's active set. Never fails: the null
  // set stands in for a set that cannot be found.
  const RkEndEffectorSet& endEffectorSet(const RkManipulationUpdateParams& params,
                                         const RkManipulationFrameState& state) const override;
  RkManipulationFrameStateContainer calculateEndState(const RkManipulationUpdateParams& params,
                                                      const RkManipulationSequence& sequence,
                                                      const RkManipulationSequenceState& sequenceState,
                                                      RkU32 frameIndex) const override;
  RkBoolean init(RkReal time, const RkManipulationUpdateParams& params,
                 const RkManipulationSequence& sequence, const RkManipulationSequenceState& sequenceState,
                 RkU32 frameIndex, RkManipulationFrameStateContainer& stateContainer) const override;
  // Updates every offset, stores their placements, then asks the event; the first status that is not
  // Complete wins. Real-time safe.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    const RkManipulationSequence& sequence,
                                    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
                                    RkManipulationFrameState& state) const override;
  // The frame's tag: a standard frame reports itself by its tag.
  std::string statusString(const RkManipulationFrameState& state, const std::string& prefix) const override;
  const RkManipulatorEndEffectorPlacement& currentEndEffectorPlacement(
      const RkManipulationFrameState& state) const override;
  const RkManipulatorEndEffectorPlacement& goalEndEffectorPlacement(
      const RkManipulationFrameState& state) const override;

  virtual void setActiveControlDescription(RkU32 index) { m_activeControlDescription = index; }
  virtual void setActiveEndEffectorSet(RkU32 index) { m_activeEndEffectorSet = index; }
  virtual void setActiveControlMethod(RkU32 index) { m_activeControlMethod = index; }
  virtual void setOffsetContainerVector(const RkXmlVectorType<RkManipulationOffsetContainer>& offsets) {
    m_offsetContainerVector = offsets;
  }
  virtual const RkManipulationFrameTransitionEventContainer& transitionEventContainer(
      const RkManipulationFrameState& state) const;
  virtual void setTransitionEventContainer(const RkManipulationFrameTransitionEventContainer& container) {
    m_transitionEventContainer = container;
  }
  virtual void setDataMap(const RkDataMap& dataMap) { m_dataMap = dataMap; }
  // Swaps offset i while the frame runs; the new offset starts from where the old one stood.
  virtual RkBoolean replaceManipulationOffset(const RkManipulationUpdateParams& params,
                                              const RkManipulationSequence& sequence,
                                              const RkManipulationSequenceState& sequenceState,
                                              RkU32 frameIndex, RkU32 offsetIndex,
                                              const RkManipulationOffset& newOffset,
                                              const RkManipulationOffsetState& oldOffsetState,
                                              RkManipulationOffsetState& newOffsetState);

  // The value that selects the controller's active end-effector set.
  static constexpr RkU32 kControllerActiveSet = 0xFFFFFFFFu;

 protected:
  void registerComponents() override;

 private:
  RkXmlBasicType<RkU32> m_activeControlDescription;
  RkXmlBasicType<RkU32> m_activeEndEffectorSet;
  RkXmlBasicType<RkU32> m_activeControlMethod;
  RkXmlVectorType<RkManipulationOffsetContainer> m_offsetContainerVector;
  RkManipulationFrameTransitionEventContainer m_transitionEventContainer;
  RkDataMap m_dataMap;
};
