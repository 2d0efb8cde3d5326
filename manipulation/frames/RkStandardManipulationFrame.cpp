#include "frames/RkStandardManipulationFrame.h"

#include <utility>

#include "control/RkControlTokens.h"
#include "control/RkEndEffectorPlacement.h"
#include "control/RkEndEffectorSet.h"
#include "control/RkManipulatorController.h"
#include "control/RkPositionControlSystem.h"
#include "events/RkManipulationFrameTransitionEventState.h"
#include "foundation/RkPrint.h"
#include "frames/RkManipulationFrameStateContainer.h"
#include "offsets/RkManipulationOffset.h"
#include "offsets/RkManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"

void RkStandardManipulationFrame::registerComponents() {
  RkManipulationFrame::registerComponents();
  registerComponent(RkControl::RkActiveControlDescriptionToken, &m_activeControlDescription,
                    "index of the control description the controller uses while the frame runs");
  registerComponent(
      RkControl::RkActiveEndEffectorSetToken, &m_activeEndEffectorSet,
      "index of the end-effector set the offsets are for; 4294967295 means the controller's active set");
  registerComponent(RkControl::RkActiveControlMethodToken, &m_activeControlMethod,
                    "index of the control method the controller uses while the frame runs");
  registerComponent(RkManipulation::RkManipulationOffsetContainerVectorToken, &m_offsetContainerVector,
                    "one offset per end effector of the set, in end-effector order");
  registerComponent(RkManipulation::RkManipulationFrameTransitionEventContainerToken,
                    &m_transitionEventContainer, "the event that ends the frame");
  registerComponent(RkFoundCommon::RkDataMapToken, &m_dataMap,
                    "named values the frame publishes for the offsets and events it holds");
}

const RkXmlVectorType<RkManipulationOffsetContainer>& RkStandardManipulationFrame::offsetContainerVector(
    const RkManipulationFrameState&) const {
  return m_offsetContainerVector;
}

const RkDataMap& RkStandardManipulationFrame::dataMap(const RkManipulationFrameState&) const {
  return m_dataMap;
}

RkU32 RkStandardManipulationFrame::activeControlDescription(const RkManipulationFrameState&) const {
  return m_activeControlDescription;
}

RkU32 RkStandardManipulationFrame::activeEndEffectorSet(const RkManipulationFrameState&) const {
  return m_activeEndEffectorSet;
}

RkU32 RkStandardManipulationFrame::activeControlMethod(const RkManipulationFrameState&) const {
  return m_activeControlMethod;
}

const RkManipulationFrameTransitionEventContainer& RkStandardManipulationFrame::transitionEventContainer(
    const RkManipulationFrameState&) const {
  return m_transitionEventContainer;
}

std::string RkStandardManipulationFrame::statusString(const RkManipulationFrameState&,
                                                      const std::string&) const {
  return tag().value();
}

const RkManipulatorEndEffectorPlacement& RkStandardManipulationFrame::currentEndEffectorPlacement(
    const RkManipulationFrameState& state) const {
  return state.currentEndEffectorPlacement();
}

const RkManipulatorEndEffectorPlacement& RkStandardManipulationFrame::goalEndEffectorPlacement(
    const RkManipulationFrameState& state) const {
  return state.goalEndEffectorPlacement();
}

void RkStandardManipulationFrame::findDataMapReferences(std::map<std::string, RkReal>& references) const {
  for (RkU32 i = 0; i < m_offsetContainerVector.size(); ++i) {
    const RkManipulationOffset* offset = m_offsetContainerVector[i].element();
    if (!offset) continue;
    std::map<std::string, RkReal> offsetReferences;
    offset->findDataMapReferences(offsetReferences);
    references.insert(offsetReferences.begin(), offsetReferences.end());
  }
}

const RkEndEffectorSet& RkStandardManipulationFrame::endEffectorSet(
    const RkManipulationUpdateParams& params, const RkManipulationFrameState& state) const {
  const RkManipulatorController* controller =
      params.positionControlSystem
          ? params.positionControlSystem->manipulatorController(params.controllerIndex)
          : nullptr;
  if (!controller) return RkEndEffectorSet::nullObject();
  const RkXmlVectorType<RkEndEffectorSet>& sets = controller->endEffectorSets();
  RkU32 index = activeEndEffectorSet(state);
  if (index == kControllerActiveSet) index = controller->activeEndEffectorSetIndex();
  return index < sets.size() ? sets[index] : RkEndEffectorSet::nullObject();
}

RkBoolean RkStandardManipulationFrame::init(RkReal time, const RkManipulationUpdateParams& params,
                                            const RkManipulationSequence& sequence,
                                            const RkManipulationSequenceState& sequenceState,
                                            RkU32 frameIndex,
                                            RkManipulationFrameStateContainer& stateContainer) const {
  auto& state = stateContainer.setNewElement<RkStandardManipulationFrameState>();
  const RkU32 count = m_offsetContainerVector.size();
  // Every state is built where it stays: one allocation for the offsets' containers, one per placement list.
  RkXmlVectorType<RkManipulationOffsetStateContainer>& offsetStates = state.offsetStatesInPlace();
  offsetStates.resize(count);
  RkManipulatorEndEffectorPlacement::TransformationVector current, goal;
  current.reserve(count);
  goal.reserve(count);
  for (RkU32 i = 0; i < count; ++i) {
    const RkManipulationOffset* offset = m_offsetContainerVector[i].element();
    if (!offset) {
      Rk::Print::write(4, "RkStandardManipulationFrame::init missing offset container element.\n");
      return false;
    }
    if (!offset->init(time, params, sequence, sequenceState, frameIndex, i, offsetStates[i])) {
      Rk::Print::write(4, "RkStandardManipulationFrame::init manipulation offset failed to initialize.\n");
      return false;
    }
    const RkManipulationOffsetState& offsetState = *offsetStates[i].element();
    current.pushBack(offset->currentOffsetTransformation(offsetState).placement());
    goal.pushBack(offset->goalOffsetTransformation(offsetState).placement());
  }
  state.currentPlacementInPlace().setOffsetTransformations(std::move(current));
  state.goalPlacementInPlace().setOffsetTransformations(std::move(goal));
  const RkManipulationFrameTransitionEvent* event = m_transitionEventContainer.element();
  if (!event) {
    Rk::Print::write(4, "RkStandardManipulationFrame::init missing transition event.\n");
    return false;
  }
  if (!event->init(time, params, *this, state.transitionEventStateInPlace())) {
    Rk::Print::write(4, "RkStandardManipulationFrame::init transition event failed to initialize.\n");
    return false;
  }
  return true;
}

namespace {
// The first result that is not Complete wins.
void combine(RkManipulationStatus::Enum& status, RkManipulationStatus::Enum result) {
  if (status == RkManipulationStatus::Complete && result != status) status = result;
}
}  // namespace

RkManipulationStatus::Enum RkStandardManipulationFrame::update(
    RkReal time, const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex,
    RkManipulationFrameState& frameState) const {
  auto& state = dynamic_cast<RkStandardManipulationFrameState&>(frameState);
  RkManipulationStatus::Enum status = RkManipulationStatus::Complete;
  const RkU32 count = m_offsetContainerVector.size();
  for (RkU32 i = 0; i < count; ++i) {
    const RkManipulationOffset* offset = m_offsetContainerVector[i].element();
    RkManipulationOffsetState* offsetState = state.offsetState(i);
    if (!offset || !offsetState) {
      Rk::Print::write(4, "RkStandardManipulationFrame::update missing offset container element.\n");
      return RkManipulationStatus::Failure;
    }
    const RkManipulationStatus::Enum result =
        offset->update(time, params, sequence, sequenceState, frameIndex, i, *offsetState);
    if (result == RkManipulationStatus::Failure) {
      Rk::Print::write(4, "RkStandardManipulationFrame::update manipulation offset failed to update.\n");
      return RkManipulationStatus::Failure;
    }
    combine(status, result);
  }
  // Only once every offset has updated: a failing cycle leaves the previous cycle's placements. Filled in
  // place, keeping the size init gave them, so a running frame allocates nothing.
  RkManipulatorEndEffectorPlacement& current = state.currentPlacementInPlace();
  RkManipulatorEndEffectorPlacement& goal = state.goalPlacementInPlace();
  if (current.offsetTransformations().size() != count) {
    current.setOffsetTransformations(RkManipulatorEndEffectorPlacement::TransformationVector(count));
  }
  if (goal.offsetTransformations().size() != count) {
    goal.setOffsetTransformations(RkManipulatorEndEffectorPlacement::TransformationVector(count));
  }
  for (RkU32 i = 0; i < count; ++i) {
    const RkManipulationOffset& offset = *m_offsetContainerVector[i].element();
    const RkManipulationOffsetState& offsetState = *state.offsetState(i);
    current.setOffsetInRelative(i, offset.currentOffsetTransformation(offsetState).placement());
    goal.setOffsetInRelative(i, offset.goalOffsetTransformation(offsetState).placement());
  }
  const RkManipulationFrameTransitionEvent* event = m_transitionEventContainer.element();
  RkManipulationFrameTransitionEventState* eventState = state.transitionEventState();
  if (!event || !eventState) {
    Rk::Print::write(4, "RkStandardManipulationFrame::update missing transition event.\n");
    return RkManipulationStatus::Failure;
  }
  const RkManipulationStatus::Enum result = event->update(time, params, *this, frameState, *eventState);
  if (result == RkManipulationStatus::Failure) {
    Rk::Print::write(4, "RkStandardManipulationFrame::update transition event failed to update.\n");
    return RkManipulationStatus::Failure;
  }
  combine(status, result);
  return status;
}

RkManipulationFrameStateContainer RkStandardManipulationFrame::calculateEndState(
    const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex) const {
  RkManipulationFrameStateContainer container;
  auto& state = container.setNewElement<RkStandardManipulationFrameState>();
  const RkU32 count = m_offsetContainerVector.size();
  RkXmlVectorType<RkManipulationOffsetStateContainer> offsetStates;
  RkManipulatorEndEffectorPlacement::TransformationVector goal;
  for (RkU32 i = 0; i < count; ++i) {
    const RkManipulationOffset* offset = m_offsetContainerVector[i].element();
    if (!offset) {
      Rk::Print::write(4,
                       "RkStandardManipulationFrame::calculateEndState missing offset container element.\n");
      return RkManipulationFrameStateContainer();
    }
    offsetStates.pushBack(offset->calculateEndState(params, sequence, sequenceState, frameIndex, i));
    const RkManipulationOffsetState* endState = offsetStates[i].element();
    goal.pushBack(endState ? offset->goalOffsetTransformation(*endState).placement()
                           : RkCoordinateSystemTransformation());
  }
  state.setOffsetStateContainerVector(offsetStates);
  state.goalPlacementInPlace().setOffsetTransformations(goal);
  state.setCurrentEndEffectorPlacement(state.goalEndEffectorPlacement());
  const RkManipulationFrameTransitionEvent* event = m_transitionEventContainer.element();
  if (!event) {
    Rk::Print::write(4, "RkStandardManipulationFrame::calculateEndState missing transition event.\n");
    return RkManipulationFrameStateContainer();
  }
  state.setTransitionEventStateContainer(event->calculateEndState(params, *this));
  return container;
}

RkBoolean RkStandardManipulationFrame::replaceManipulationOffset(
    const RkManipulationUpdateParams& params, const RkManipulationSequence& sequence,
    const RkManipulationSequenceState& sequenceState, RkU32 frameIndex, RkU32 offsetIndex,
    const RkManipulationOffset& newOffset, const RkManipulationOffsetState& oldOffsetState,
    RkManipulationOffsetState& newOffsetState) {
  if (offsetIndex >= m_offsetContainerVector.size()) {
    Rk::Print::write(5, "RkStandardManipulationFrame::replaceManipulationOffset invalid offset index %d.\n",
                     static_cast<int>(offsetIndex));
    return false;
  }
  RkManipulationOffsetContainer& container = m_offsetContainerVector[offsetIndex];
  if (const RkManipulationOffset* oldOffset = container.element()) {
    const RkEndEffectorPlacement standing = oldOffset->calculateOffsetTransformationInSystemFrame(
        params, sequence, sequenceState, frameIndex, offsetIndex, oldOffsetState);
    container.setElement(newOffset);
    container.element()->setFromOffsetTransformationInSystemFrame(standing, params, sequence, sequenceState,
                                                                  frameIndex, offsetIndex, newOffsetState);
  } else {
    container.setElement(newOffset);
  }
  return true;
}
