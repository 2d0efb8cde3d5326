#include "sequencing/RkManipulationSequence.h"

#include "control/RkEndEffectorSet.h"
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "foundation/RkPrint.h"
#include "frames/RkManipulationFrame.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkManipulationHandOver.h"
#include "sequencing/RkManipulationNullObjects.h"
#include "sequencing/RkManipulationTokens.h"

const RkXmlVectorType<RkXmlBasicType<RkU32>> RkManipulationSequence::m_theNullU32Vector;

void RkManipulationSequence::registerComponents() {
  registerComponent(RkManipulation::RkManipulationFrameContainerVectorToken, &m_frameContainerVector);
}

RkBoolean RkManipulationSequence::init(RkManipulationActionStateContainer& container) const {
  container.setElement(RkManipulationSequenceState());
  auto& state = dynamic_cast<RkManipulationSequenceState&>(*container.element());
  state.clear();
  state.setCurrentFrameIndex(0);
  state.setCurrentFrameNeedsInit(true);
  state.setCurrentFrameIsComplete(false);
  if (m_frameContainerVector.size() == 0) {
    Rk::Print::write(4, "RkManipulationSequence::init missing manipulation frames.\n");
    return false;
  }
  return true;
}

RkManipulationStatus::Enum RkManipulationSequence::update(RkReal time,
                                                          const RkManipulationUpdateParams& params,
                                                          RkManipulationActionState& actionState) const {
  auto& state = dynamic_cast<RkManipulationSequenceState&>(actionState);
  if (state.currentFrameIsComplete()) {
    state.setCurrentFrameIndex(state.currentFrameIndex() + 1);
    state.setCurrentFrameNeedsInit(true);
    state.setCurrentFrameIsComplete(false);
  }
  const RkU32 index = state.currentFrameIndex();
  if (index >= m_frameContainerVector.size()) {
    Rk::Print::write(
        4, "RkManipulationSequence::update frame %d is past the last frame (%u frames); init first.\n",
        static_cast<int>(index), m_frameContainerVector.size());
    return RkManipulationStatus::Failure;
  }
  const RkManipulationFrame* frame = m_frameContainerVector[index].element();
  if (!frame) {
    Rk::Print::write(4, "RkManipulationSequence::update frame %d does not have a valid element.\n",
                     static_cast<int>(index));
    return RkManipulationStatus::Failure;
  }
  const bool startedNow = state.currentFrameNeedsInit();
  if (startedNow) {
    state.setCurrentFrameNeedsInit(false);
    RkManipulationFrameStateContainer container;
    if (!frame->init(time, params, *this, state, index, container)) {
      Rk::Print::write(4, "RkManipulationSequence::update unable to initialize frame %d.\n",
                       static_cast<int>(index));
      return RkManipulationStatus::Failure;
    }
    state.add(container);
  }
  RkManipulationFrameState* frameState = state.currentFrameState();
  if (!frameState) {
    Rk::Print::write(4, "RkManipulationSequence::update frame %d does not have a valid state.\n",
                     static_cast<int>(index));
    return RkManipulationStatus::Failure;
  }
  const RkManipulationStatus::Enum result = frame->update(time, params, *this, state, index, *frameState);
  if (result == RkManipulationStatus::Failure) {
    Rk::Print::write(4, "RkManipulationSequence::update unable to update frame %d.\n",
                     static_cast<int>(index));
    return RkManipulationStatus::Failure;
  }
  bool frameComplete = false;
  const RkManipulationStatus::Enum status = RkManipulationHandOver::report(
      result, startedNow, index + 1 < m_frameContainerVector.size(), frameComplete);
  if (frameComplete) state.setCurrentFrameIsComplete(true);
  return status;
}

const RkManipulationFrame* RkManipulationSequence::currentFrame(
    const RkManipulationActionState& actionState) const {
  const auto& state = dynamic_cast<const RkManipulationSequenceState&>(actionState);
  const RkU32 index = state.currentFrameIndex();
  return index < m_frameContainerVector.size() ? m_frameContainerVector[index].element() : nullptr;
}

RkManipulationFrame* RkManipulationSequence::currentFrame(const RkManipulationActionState& actionState) {
  const auto& state = dynamic_cast<const RkManipulationSequenceState&>(actionState);
  const RkU32 index = state.currentFrameIndex();
  return index < m_frameContainerVector.size() ? m_frameContainerVector[index].element() : nullptr;
}

namespace {
// The running frame and its state, both present, or false.
bool runningFrame(const RkManipulationSequence& sequence, const RkManipulationActionState& actionState,
                  const RkManipulationFrame*& frame, const RkManipulationFrameState*& frameState) {
  frame = sequence.currentFrame(actionState);
  frameState = dynamic_cast<const RkManipulationSequenceState&>(actionState).currentFrameState();
  return frame && frameState;
}
}  // namespace

RkU32 RkManipulationSequence::activeControlDescription(const RkManipulationActionState& state) const {
  const RkManipulationFrame* frame;
  const RkManipulationFrameState* frameState;
  return runningFrame(*this, state, frame, frameState) ? frame->activeControlDescription(*frameState) : 0;
}

RkU32 RkManipulationSequence::activeControlMethod(const RkManipulationActionState& state) const {
  const RkManipulationFrame* frame;
  const RkManipulationFrameState* frameState;
  return runningFrame(*this, state, frame, frameState) ? frame->activeControlMethod(*frameState) : 0;
}

RkU32 RkManipulationSequence::activeEndEffectorSet(const RkManipulationActionState& state) const {
  const RkManipulationFrame* frame;
  const RkManipulationFrameState* frameState;
  return runningFrame(*this, state, frame, frameState) ? frame->activeEndEffectorSet(*frameState) : 0;
}

const RkDataMap& RkManipulationSequence::dataMap(const RkManipulationActionState& state) const {
  const RkManipulationFrame* frame;
  const RkManipulationFrameState* frameState;
  return runningFrame(*this, state, frame, frameState) ? frame->dataMap(*frameState)
                                                       : RkManipulationNullObjects::dataMap();
}

const RkEndEffectorSet& RkManipulationSequence::endEffectorSet(const RkManipulationUpdateParams& params,
                                                               const RkManipulationActionState& state) const {
  const RkManipulationFrame* frame;
  const RkManipulationFrameState* frameState;
  return runningFrame(*this, state, frame, frameState) ? frame->endEffectorSet(params, *frameState)
                                                       : RkEndEffectorSet::nullObject();
}

const RkManipulatorEndEffectorPlacement& RkManipulationSequence::endEffectorPlacement(
    const RkManipulationActionState& state) const {
  const RkManipulationFrame* frame;
  const RkManipulationFrameState* frameState;
  return runningFrame(*this, state, frame, frameState) ? frame->currentEndEffectorPlacement(*frameState)
                                                       : RkManipulatorEndEffectorPlacement::nullObject();
}

std::string RkManipulationSequence::statusString(const RkManipulationActionState& state,
                                                 const std::string& prefix) const {
  const RkManipulationFrame* frame;
  const RkManipulationFrameState* frameState;
  return runningFrame(*this, state, frame, frameState) ? frame->statusString(*frameState, prefix)
                                                       : std::string();
}

const RkXmlVectorType<RkXmlBasicType<RkU32>>& RkManipulationSequence::profiledPositionEndEffectorIndices(
    const RkManipulationActionState&) const {
  return m_theNullU32Vector;
}

void RkManipulationSequence::findDataMapReferences(std::map<std::string, RkReal>& references) const {
  for (RkU32 i = 0; i < m_frameContainerVector.size(); ++i) {
    const RkManipulationFrame* frame = m_frameContainerVector[i].element();
    if (!frame) continue;
    std::map<std::string, RkReal> frameReferences;
    frame->findDataMapReferences(frameReferences);
    // insert keeps a name already present: the earliest frame wins.
    references.insert(frameReferences.begin(), frameReferences.end());
  }
}

void RkManipulationSequence::add(const RkManipulationFrame& frame) {
  RkManipulationFrameContainer container;
  container.setElement(frame);
  add(container);
}

void RkManipulationSequence::add(const RkManipulationFrameContainer& container) {
  m_frameContainerVector.pushBack(container);
}

void RkManipulationSequence::deleteFrame(RkU32 index) {
  m_frameContainerVector.erase(index);
}

RkManipulationSequenceState RkManipulationSequence::calculateEndState(
    const RkManipulationUpdateParams& params) const {
  RkManipulationSequenceState state;
  for (RkU32 i = 0; i < m_frameContainerVector.size(); ++i) {
    state.setCurrentFrameIndex(i);
    const RkManipulationFrame* frame = m_frameContainerVector[i].element();
    // An empty frame container leaves an empty state in its slot, keeping entry i for frame i.
    state.add(frame ? frame->calculateEndState(params, *this, state, i)
                    : RkManipulationFrameStateContainer());
  }
  state.setCurrentFrameNeedsInit(false);
  state.setCurrentFrameIsComplete(true);
  return state;
}
