#pragma once
// Runs its frames one after another, each until its transition event says it is done:
//   <manipulationSequence><manipulationFrameVector count="2">
//     <element><standardManipulationFrame>...</standardManipulationFrame></element> ...
//   </manipulationFrameVector></manipulationSequence>
#include "frames/RkManipulationFrameContainer.h"
#include "sequencing/RkManipulationAction.h"
#include "sequencing/RkManipulationSequenceState.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlConcreteClass.h"

class RkManipulationSequence : public RkXmlConcreteClass<RkManipulationSequence, RkManipulationAction,
                                                         RkManipulation::RkManipulationSequenceToken> {
 public:
  RkBoolean init(RkManipulationActionStateContainer& container) const override;
  // One control step; real-time safe while no frame starts or ends.
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    RkManipulationActionState& state) const override;
  // The queries ask the running frame; with no running frame they give 0 or the class's null objects.
  RkU32 activeControlDescription(const RkManipulationActionState& state) const override;
  RkU32 activeControlMethod(const RkManipulationActionState& state) const override;
  RkU32 activeEndEffectorSet(const RkManipulationActionState& state) const override;
  const RkDataMap& dataMap(const RkManipulationActionState& state) const override;
  // Merges the frames' names in frame order: the earliest frame naming a value wins.
  void findDataMapReferences(std::map<std::string, RkReal>& references) const override;
  const RkEndEffectorSet& endEffectorSet(const RkManipulationUpdateParams& params,
                                         const RkManipulationActionState& state) const override;
  const RkManipulatorEndEffectorPlacement& endEffectorPlacement(
      const RkManipulationActionState& state) const override;
  std::string statusString(const RkManipulationActionState& state, const std::string& prefix) const override;
  // Always empty: a frame-by-frame sequence profiles no end effector itself.
  const RkXmlVectorType<RkXmlBasicType<RkU32>>& profiledPositionEndEffectorIndices(
      const RkManipulationActionState& state) const override;

  virtual void add(const RkManipulationFrame& frame);
  virtual void add(const RkManipulationFrameContainer& container);
  virtual void deleteFrame(RkU32 index);
  virtual const RkXmlVectorType<RkManipulationFrameContainer>& manipulationFrameContainerVector() const {
    return m_frameContainerVector;
  }
  virtual void setManipulationFrameContainerVector(
      const RkXmlVectorType<RkManipulationFrameContainer>& frames) {
    m_frameContainerVector = frames;
  }
  // The running frame, or null when the index is past the frames or its container is empty.
  virtual const RkManipulationFrame* currentFrame(const RkManipulationActionState& state) const;
  virtual RkManipulationFrame* currentFrame(const RkManipulationActionState& state);
  // The state the sequence would have after running to its end, without running it.
  virtual RkManipulationSequenceState calculateEndState(const RkManipulationUpdateParams& params) const;

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkManipulationFrameContainerVectorToken, &m_frameContainerVector,
                      "the frames, run one after another");
  }

 private:
  // Query's answer for the running frame and its state, or fallback when there is none.
  template <class Query, class Fallback>
  decltype(auto) askRunningFrame(const RkManipulationActionState& state, Query query,
                                 Fallback&& fallback) const;

  RkXmlVectorType<RkManipulationFrameContainer> m_frameContainerVector;

  static const RkXmlVectorType<RkXmlBasicType<RkU32>> m_theNullU32Vector;
};
