#include "sequencing/RkManipulationSequence.h"

#include "control/RkEndEffectorSet.h"
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "foundation/RkPrint.h"
#include "frames/RkManipulationFrame.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkManipulationListRunner.h"
#include "sequencing/RkManipulationNullObjects.h"
#include "sequencing/RkManipulationTokens.h"

const RkXmlVectorType<RkXmlBasicType<RkU32>> RkManipulationSequence::m_theNullU32Vector;

RkBoolean RkManipulationSequence::init(RkManipulationActionStateContainer& container) const {
  auto& state = container.setNewElement<RkManipulationSequenceState>();
  state.clear();
  state.setCurrentFrameIndex(0);
  state.setCurrentFrameNeedsInit(true);
  state.setCurrentFrameIsComplete(false);
  if (m_frameContainerVector.size() == 0) {
    Rk::Print::write(4, "RkManipulationSequence::init missing manipulation frames.\n");
    return false;
  }
  state.reserveFrames(m_frameContainerVector.size());
  return true;
}

namespace {

// The sequence's frames as a list for the list runner.
struct FrameList {
  const RkManipulationSequence& sequence;
  RkManipulationSequenceState& state;
  RkReal time;
  const RkManipulationUpdateParams& params;

  const char* owner() const { return "RkManipulationSequence"; }
  const char* elementName() const { return "frame"; }
  const char* pastEndMessage() const {
    return "RkManipulationSequence::update frame %u is past the last frame (%u frames); init first.\n";
  }
  const char* noStateMessage() const {
    return "RkManipulationSequence::update frame %d does not have a valid state.\n";
  }
  RkU32 index() const { return state.currentFrameIndex(); }
  void setIndex(RkU32 index) { state.setCurrentFrameIndex(index); }
  bool needsInit() const { return state.currentFrameNeedsInit(); }
  void setNeedsInit(bool needsInit) { state.setCurrentFrameNeedsInit(needsInit); }
  bool isComplete() const { return state.currentFrameIsComplete(); }
  void setComplete(bool complete) { state.setCurrentFrameIsComplete(complete); }
  RkU32 count() const { return sequence.manipulationFrameContainerVector().size(); }
  const RkManipulationFrame* element(RkU32 index) const {
    const RkManipulationFrame* frame = sequence.manipulationFrameContainerVector()[index].element();
    if (!frame) {
      Rk::Print::write(4, "RkManipulationSequence::update frame %d does not have a valid element.\n",
                       static_cast<int>(index));
    }
    return frame;
  }
  // Frame i's state stands at entry i: before frame i starts the vector holds i states, after it i + 1.
  bool stateAgrees(RkU32 index) const {
    const RkU32 held = state.manipulationFrameStateContainerVector().size();
    const RkU32 expected = needsInit() ? index : index + 1;
    if (held <= expected) return true;
    Rk::Print::write(4,
                     "RkManipulationSequence::update frame %u %s but the state holds %u frame states; the "
                     "state is damaged.\n",
                     index, needsInit() ? "needs init" : "is running", held);
    return false;
  }
  bool start(const RkManipulationFrame& frame, RkU32 index) {
    RkManipulationFrameStateContainer container;
    if (!frame.init(time, params, sequence, state, index, container)) return false;
    state.add(std::move(container));
    return true;
  }
  RkManipulationFrameState* elementState(RkU32) { return state.currentFrameState(); }
  RkManipulationStatus::Enum update(const RkManipulationFrame& frame, RkManipulationFrameState& frameState) {
    return frame.update(time, params, sequence, state, index(), frameState);
  }
};

}  // namespace

RkManipulationStatus::Enum RkManipulationSequence::update(RkReal time,
                                                          const RkManipulationUpdateParams& params,
                                                          RkManipulationActionState& actionState) const {
  FrameList frames{*this, dynamic_cast<RkManipulationSequenceState&>(actionState), time, params};
  return RkManipulationListRunner::step(frames);
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

template <class Query, class Fallback>
decltype(auto) RkManipulationSequence::askRunningFrame(const RkManipulationActionState& state, Query query,
                                                       Fallback&& fallback) const {
  return RkManipulationListRunner::ask(
      currentFrame(state), dynamic_cast<const RkManipulationSequenceState&>(state).currentFrameState(), query,
      std::forward<Fallback>(fallback));
}

RkU32 RkManipulationSequence::activeControlDescription(const RkManipulationActionState& state) const {
  return askRunningFrame(
      state,
      [](const auto& frame, const auto& frameState) { return frame.activeControlDescription(frameState); },
      0u);
}

RkU32 RkManipulationSequence::activeControlMethod(const RkManipulationActionState& state) const {
  return askRunningFrame(
      state, [](const auto& frame, const auto& frameState) { return frame.activeControlMethod(frameState); },
      0u);
}

RkU32 RkManipulationSequence::activeEndEffectorSet(const RkManipulationActionState& state) const {
  return askRunningFrame(
      state, [](const auto& frame, const auto& frameState) { return frame.activeEndEffectorSet(frameState); },
      0u);
}

const RkDataMap& RkManipulationSequence::dataMap(const RkManipulationActionState& state) const {
  return askRunningFrame(
      state,
      [](const auto& frame, const auto& frameState) -> const RkDataMap& { return frame.dataMap(frameState); },
      RkManipulationNullObjects::dataMap());
}

const RkEndEffectorSet& RkManipulationSequence::endEffectorSet(const RkManipulationUpdateParams& params,
                                                               const RkManipulationActionState& state) const {
  return askRunningFrame(
      state,
      [&params](const auto& frame, const auto& frameState) -> const RkEndEffectorSet& {
        return frame.endEffectorSet(params, frameState);
      },
      RkEndEffectorSet::nullObject());
}

const RkManipulatorEndEffectorPlacement& RkManipulationSequence::endEffectorPlacement(
    const RkManipulationActionState& state) const {
  return askRunningFrame(
      state,
      [](const auto& frame, const auto& frameState) -> const RkManipulatorEndEffectorPlacement& {
        return frame.currentEndEffectorPlacement(frameState);
      },
      RkManipulatorEndEffectorPlacement::nullObject());
}

std::string RkManipulationSequence::statusString(const RkManipulationActionState& state,
                                                 const std::string& prefix) const {
  return askRunningFrame(
      state,
      [&prefix](const auto& frame, const auto& frameState) { return frame.statusString(frameState, prefix); },
      std::string());
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
