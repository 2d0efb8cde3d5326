#include "offsets/RkParametricTranslationManipulationOffset.h"

#include "common/RkDataMap.h"
#include "foundation/RkPrint.h"

void RkParametricTranslationManipulationOffset::registerComponents() {
  RkTargetWrappingManipulationOffset::registerComponents();
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
  if (!initTarget(time, context, state)) return false;
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
  const RkManipulationStatus::Enum status = updateTarget(time, context, state);
  if (status == RkManipulationStatus::Failure) return status;
  state.setCurrentOffset(RkEndEffectorPlacement(targetCurrentOffset(state).placement() *
                                                state.parametricTransform().placement()));
  return status;
}

RkManipulationOffsetStateContainer RkParametricTranslationManipulationOffset::calculateEndState(
    const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 endEffectorIndex) const {
  RkManipulationOffsetStateContainer container;
  State& state =
      endStateWithTarget({params, sequence, sequenceState, frameIndex, endEffectorIndex}, container);
  RkVector shift;
  translation(params.dataMap, false, shift);
  const RkEndEffectorPlacement transform(RkCoordinateSystemTransformation(shift, RkOrientation()));
  state.setParametricTransform(transform);
  RkCoordinateSystemTransformation goal;
  const RkManipulationOffset* target = targetOffset().element();
  const RkManipulationOffsetState* targetState = state.targetOffsetState();
  if (target && targetState) goal = target->goalOffsetTransformation(*targetState).placement();
  state.setCurrentOffset(RkEndEffectorPlacement(goal * transform.placement()));
  return container;
}
