#include "offsets/RkParametricTranslationManipulationOffset.h"

#include "common/RkDataMap.h"
#include "foundation/RkPrint.h"

void RkParametricTranslationManipulationOffset::registerComponents() {
  registerComponent(RkManipulation::RkTargetOffsetToken, &m_targetOffset, "the offset whose goal is shifted");
  registerComponent(RkManipulation::RkParametricXTagToken, &m_parametricXTag,
                    "data-map name of the x shift, m; empty means 0");
  registerComponent(RkManipulation::RkParametricYTagToken, &m_parametricYTag,
                    "data-map name of the y shift, m; empty means 0");
  registerComponent(RkManipulation::RkParametricZTagToken, &m_parametricZTag,
                    "data-map name of the z shift, m; empty means 0");
}

void RkParametricTranslationManipulationOffset::findDataMapReferences(
    std::map<std::string, RkReal>& references) const {
  for (const RkXmlBasicType<std::string>* tag : {&m_parametricXTag, &m_parametricYTag, &m_parametricZTag}) {
    if (!tag->value().empty()) references[tag->value()] = 0.0;
  }
}

RkBoolean RkParametricTranslationManipulationOffset::translation(const RkDataMap& dataMap, bool report,
                                                                 RkVector& result) const {
  const RkXmlBasicType<std::string>* tags[] = {&m_parametricXTag, &m_parametricYTag, &m_parametricZTag};
  const char* const axes = "XYZ";
  RkReal components[3] = {0.0, 0.0, 0.0};
  RkBoolean found = true;
  for (int axis = 0; axis < 3; ++axis) {
    const std::string& tag = tags[axis]->value();
    if (tag.empty() || dataMap.lookup(tag, components[axis])) continue;
    found = false;
    if (!report) continue;
    Rk::Print::write(
        4, "RkParametricTranslationManipulationOffset::init the parametric %c tag (%s) can not be found.\n",
        axes[axis], tag.c_str());
    return false;
  }
  result = RkVector(components[0], components[1], components[2]);
  return found;
}

RkBoolean RkParametricTranslationManipulationOffset::initState(RkReal time, const Context& context,
                                                               State& state) const {
  const RkManipulationOffset* target = m_targetOffset.element();
  if (!target) {
    Rk::Print::write(
        4, "RkParametricTranslationManipulationOffset::init missing target offset container element.\n");
    return false;
  }
  RkManipulationOffsetStateContainer targetState;
  if (!target->init(time, context.params, context.sequence, context.sequenceState, context.frameIndex,
                    context.endEffectorIndex, targetState)) {
    Rk::Print::write(4,
                     "RkParametricTranslationManipulationOffset::init target offset failed to initialize.\n");
    return false;
  }
  state.setTargetOffsetState(targetState);
  if (m_parametricXTag.value().empty() && m_parametricYTag.value().empty() &&
      m_parametricZTag.value().empty()) {
    Rk::Print::write(
        4,
        "RkParametricTranslationManipulationOffset::init at least one parametric tag must be specified.\n");
    return false;
  }
  RkVector shift;
  if (!translation(context.params.dataMap, true, shift)) return false;
  state.setParametricTransform(
      RkEndEffectorPlacement(RkCoordinateSystemTransformation(shift, RkOrientation())));
  return updateState(time, context, state) != RkManipulationStatus::Failure;
}

RkManipulationStatus::Enum RkParametricTranslationManipulationOffset::updateState(RkReal time,
                                                                                  const Context& context,
                                                                                  State& state) const {
  const RkManipulationOffset* target = m_targetOffset.element();
  if (!target) {
    Rk::Print::write(
        4, "RkParametricTranslationManipulationOffset::update missing target offset container element.\n");
    return RkManipulationStatus::Failure;
  }
  RkManipulationOffsetState* targetState = state.targetOffsetState();
  if (!targetState) {
    Rk::Print::write(4, "RkParametricTranslationManipulationOffset::update missing target offset state.\n");
    return RkManipulationStatus::Failure;
  }
  const RkManipulationStatus::Enum status =
      target->update(time, context.params, context.sequence, context.sequenceState, context.frameIndex,
                     context.endEffectorIndex, *targetState);
  if (status == RkManipulationStatus::Failure) {
    Rk::Print::write(4,
                     "RkParametricTranslationManipulationOffset::update target offset failed to update.\n");
    return RkManipulationStatus::Failure;
  }
  state.setCurrentOffset(
      RkEndEffectorPlacement(target->currentOffsetTransformation(*targetState).placement() *
                             state.parametricTransform().placement()));
  return status;
}

RkEndEffectorPlacement RkParametricTranslationManipulationOffset::offsetInSystemFrame(
    const Context& context, const State& state) const {
  const RkManipulationOffset* target = m_targetOffset.element();
  const RkManipulationOffsetState* targetState = state.targetOffsetState();
  if (!target || !targetState) return RkEndEffectorPlacement();
  return target->calculateOffsetTransformationInSystemFrame(context.params, context.sequence,
                                                            context.sequenceState, context.frameIndex,
                                                            context.endEffectorIndex, *targetState);
}

void RkParametricTranslationManipulationOffset::setFromOffset(const RkEndEffectorPlacement& placement,
                                                              const Context& context, State& state) {
  RkManipulationOffset* target = m_targetOffset.element();
  RkManipulationOffsetState* targetState = state.targetOffsetState();
  if (!target || !targetState) return;
  target->setFromOffsetTransformationInSystemFrame(placement, context.params, context.sequence,
                                                   context.sequenceState, context.frameIndex,
                                                   context.endEffectorIndex, *targetState);
}

RkManipulationOffsetStateContainer RkParametricTranslationManipulationOffset::calculateEndState(
    const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 endEffectorIndex) const {
  RkManipulationOffsetStateContainer container;
  State& state = container.setNewElement<State>();
  RkVector shift;
  translation(params.dataMap, false, shift);
  const RkEndEffectorPlacement transform(RkCoordinateSystemTransformation(shift, RkOrientation()));
  state.setParametricTransform(transform);
  RkCoordinateSystemTransformation goal;
  if (const RkManipulationOffset* target = m_targetOffset.element()) {
    state.setTargetOffsetState(
        target->calculateEndState(params, sequence, sequenceState, frameIndex, endEffectorIndex));
    if (const RkManipulationOffsetState* targetState = state.targetOffsetState()) {
      goal = target->goalOffsetTransformation(*targetState).placement();
    }
  }
  state.setCurrentOffset(RkEndEffectorPlacement(goal * transform.placement()));
  return container;
}
