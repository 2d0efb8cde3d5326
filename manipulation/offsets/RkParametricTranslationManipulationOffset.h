#pragma once
// Shifts the goal of a target offset by a translation whose x, y and z are data-map values named by tags,
// read when the frame starts (a parametric frame publishes them), applied in the target's frame:
//   <parametricTranslationManipulationOffset>
//     <targetOffset><constantManipulationOffset>...</constantManipulationOffset></targetOffset>
//     <parametricYTag>slot y=</parametricYTag>
//   </parametricTranslationManipulationOffset>
// An empty tag leaves its axis at 0. Its goal composes the translation on the left (in the system frame)
// while its update composes it on the right (in the target's frame): stored runs rely on both.
#include <string>

#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkParametricTranslationManipulationOffsetState.h"
#include "offsets/RkTargetWrappingManipulationOffset.h"

class RkDataMap;
class RkVector;

class RkParametricTranslationManipulationOffset
    : public RkTargetWrappingManipulationOffset<
          RkParametricTranslationManipulationOffset, RkParametricTranslationManipulationOffsetState,
          RkManipulation::RkParametricTranslationManipulationOffsetToken> {
 public:
  static const char* className() { return "RkParametricTranslationManipulationOffset"; }
  // Each tag named, with the value 0.
  void findDataMapReferences(std::map<std::string, RkReal>& references) const override;
  RkManipulationOffsetStateContainer calculateEndState(const RkManipulationUpdateParams& params,
                                                       const RkManipulationSequence& sequence,
                                                       const RkManipulationSequenceState& sequenceState,
                                                       RkU32 frameIndex,
                                                       RkU32 endEffectorIndex) const override;
  // Starts the target, reads the translation and takes the first step.
  RkBoolean initState(RkReal time, const Context& context, State& state) const;
  // Updates the target and shifts its current placement. Real-time safe.
  RkManipulationStatus::Enum updateState(RkReal time, const Context& context, State& state) const;
  // The target's own goal, asked with its own state, without the translation; a default placement without
  // a target or its state. Replacing the offset hands the placement to the target; the tags stay.
  RkEndEffectorPlacement offsetInSystemFrame(const Context& context, const State& state) const {
    const RkManipulationOffsetState* targetState = state.targetOffsetState();
    return targetState ? targetInSystemFrame(context, *targetState) : RkEndEffectorPlacement();
  }
  const RkEndEffectorPlacement& currentOffset(const State& state) const {
    return state.currentOffsetTransformation();
  }
  const RkEndEffectorPlacement& goalOffset(const State& state) const {
    return state.currentOffsetTransformation();
  }

  virtual const std::string& parametricXTag() const { return m_parametricXTag.value(); }
  virtual void setParametricXTag(const std::string& tag) { m_parametricXTag = tag; }
  virtual const std::string& parametricYTag() const { return m_parametricYTag.value(); }
  virtual void setParametricYTag(const std::string& tag) { m_parametricYTag = tag; }
  virtual const std::string& parametricZTag() const { return m_parametricZTag.value(); }
  virtual void setParametricZTag(const std::string& tag) { m_parametricZTag = tag; }

 protected:
  void registerComponents() override;

 private:
  // The translation the tags name in dataMap. A tag not found fails, with its line when report is set, and
  // stops the lookup; without report it leaves its axis at 0 and the lookup goes on.
  RkBoolean translation(const RkDataMap& dataMap, bool report, RkVector& result) const;

  RkXmlBasicType<std::string> m_parametricXTag;
  RkXmlBasicType<std::string> m_parametricYTag;
  RkXmlBasicType<std::string> m_parametricZTag;
};
