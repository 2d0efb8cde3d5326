#include "frames/RkParametricManipulationFrame.h"

#include <boost/lexical_cast.hpp>

#include "frames/RkManipulationFrameStateContainer.h"

void RkParametricManipulationFrame::registerComponents() {
  RkManipulationFrame::registerComponents();
  registerComponent(RkManipulation::RkTargetFrameToken, &m_targetFrame, "the frame run once per value");
  registerComponent(RkManipulation::RkParametricTagToken, &m_parametricTag,
                    "the data-map name under which each value is published to the target frame");
  registerComponent(RkManipulation::RkParametricValuesToken, &m_parametricValues,
                    "the values, used in order, one run of the target frame each; at least one");
  registerComponent(
      RkManipulation::RkManipulationFrameTransitionEventContainerToken, &m_transitionEventContainer,
      "optional; must also have fired before the frame ends on the last value (it runs across all values)");
}

void RkParametricManipulationFrame::findDataMapReferences(std::map<std::string, RkReal>& references) const {
  references.erase(m_parametricTag.value());
}

RkBoolean RkParametricManipulationFrame::startTarget(RkReal time, const RkManipulationUpdateParams& params,
                                                     const RkManipulationSequence& sequence,
                                                     const RkManipulationSequenceState& sequenceState,
                                                     RkU32 frameIndex,
                                                     RkManipulationFrameStateContainer& container) const {
  const RkManipulationFrame* target = m_targetFrame.element();
  return target && target->init(time, params, sequence, sequenceState, frameIndex, container);
}

RkBoolean RkParametricManipulationFrame::init(RkReal time, const RkManipulationUpdateParams& params,
                                              const RkManipulationSequence& sequence,
                                              const RkManipulationSequenceState& sequenceState,
                                              RkU32 frameIndex,
                                              RkManipulationFrameStateContainer& stateContainer) const {
  State& state = stateContainer.setNewElement<State>();
  if (m_parametricTag.value().empty()) {
    Rk::Print::write(4, "RkParametricManipulationFrame::init the parametric tag must be specified.\n");
    return false;
  }
  if (m_parametricValues.size() == 0) {
    Rk::Print::write(
        4, "RkParametricManipulationFrame::init at least one parametric value must be specified.\n");
    return false;
  }
  state.setParametricIndex(0);
  params.dataMap.setValue(m_parametricTag.value(), m_parametricValues[0]);
  RkManipulationFrameStateContainer targetState;
  if (!startTarget(time, params, sequence, sequenceState, frameIndex, targetState)) {
    Rk::Print::write(4, "RkParametricManipulationFrame::init failed to initialize the target frame.\n");
    return false;
  }
  state.setTargetFrameState(std::move(targetState));
  return initEvent(time, params, state, "RkParametricManipulationFrame");
}

RkManipulationStatus::Enum RkParametricManipulationFrame::update(
    RkReal time, const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
    RkManipulationFrameState& frameState) const {
  State& state = dynamic_cast<State&>(frameState);
  RkU32 index = state.parametricIndex();
  const RkU32 count = m_parametricValues.size();
  const RkManipulationFrame* target = m_targetFrame.element();
  RkManipulationFrameState* targetState = state.targetFrameState();
  if (!target || !targetState) {
    Rk::Print::write(4, "RkParametricManipulationFrame::update missing target frame container element.\n");
    return RkManipulationStatus::Failure;
  }
  if (index >= count) {
    Rk::Print::write(
        4, "RkParametricManipulationFrame::update parametric index %u is past the last value (%u values).\n",
        index, count);
    return RkManipulationStatus::Failure;
  }
  params.dataMap.setValue(m_parametricTag.value(), m_parametricValues[index]);
  RkManipulationStatus::Enum result =
      target->update(time, params, sequence, sequenceState, frameIndex, *targetState);
  if (result == RkManipulationStatus::Failure) {
    Rk::Print::write(4, "RkParametricManipulationFrame::update target frame failed to update.\n");
    return RkManipulationStatus::Failure;
  }
  if (result == RkManipulationStatus::Complete && index + 1 < count) {
    ++index;
    params.dataMap.setValue(m_parametricTag.value(), m_parametricValues[index]);
    RkManipulationFrameStateContainer nextState;
    if (!startTarget(time, params, sequence, sequenceState, frameIndex, nextState)) {
      Rk::Print::write(4, "RkParametricManipulationFrame::update failed to initialize the target frame.\n");
      return RkManipulationStatus::Failure;
    }
    state.setTargetFrameState(std::move(nextState));
    state.setParametricIndex(index);
    result = RkManipulationStatus::Transition;
  }
  const RkManipulationStatus::Enum event =
      updateEvent(time, params, state, result, "RkParametricManipulationFrame");
  if (event == RkManipulationStatus::Failure || event == result) return event;
  return result == RkManipulationStatus::Complete ? event : result;
}

RkManipulationFrameStateContainer RkParametricManipulationFrame::calculateEndState(
    const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex) const {
  RkManipulationFrameStateContainer container;
  State& state = container.setNewElement<State>();
  const RkManipulationFrame* target = m_targetFrame.element();
  if (!target) {
    Rk::Print::write(
        4, "RkParametricManipulationFrame::calculateEndState missing target frame container element.\n");
    return RkManipulationFrameStateContainer();
  }
  state.setTargetFrameState(target->calculateEndState(params, sequence, sequenceState, frameIndex));
  state.setParametricIndex(m_parametricValues.size() > 0 ? m_parametricValues.size() - 1 : 0);
  endEvent(params, state);
  return container;
}

std::string RkParametricManipulationFrame::statusString(const RkManipulationFrameState& frameState,
                                                        const std::string& prefix) const {
  const State& state = dynamic_cast<const State&>(frameState);
  const RkManipulationFrame* target = m_targetFrame.element();
  const RkManipulationFrameState* targetState = state.targetFrameState();
  const std::string text = target && targetState ? target->statusString(*targetState, prefix) : std::string();
  if (m_parametricTag.value().empty()) return text;
  const RkU32 index = state.parametricIndex();
  const std::string value = index < m_parametricValues.size()
                                ? boost::lexical_cast<std::string>(m_parametricValues[index])
                                : std::string();
  const std::string& tag = this->tag().value();
  if (tag.empty()) return m_parametricTag.value() + value + prefix + text;
  return tag + prefix + m_parametricTag.value() + value + prefix + text;
}
