#include "sequencing/RkManipulationSequenceManager.h"

#include "control/RkEndEffectorSet.h"
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "foundation/RkPrint.h"
#include "sequencing/RkManipulationListRunner.h"
#include "sequencing/RkManipulationNullObjects.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationSequenceManager::add(const std::string& name, const RkManipulationSequence& sequence) {
  m_sequenceMap.add(RkXmlBasicType<std::string>(name), sequence);
}

void RkManipulationSequenceManager::remove(const std::string& name) {
  m_sequenceMap.erase(RkXmlBasicType<std::string>(name));
}

const RkManipulationSequence* RkManipulationSequenceManager::currentSequence(
    const RkManipulationSequenceManagerState& state) const {
  const RkU32 index = state.currentSequenceIndex();
  return index < m_sequenceOrder.size() ? m_sequenceMap.find(m_sequenceOrder[index].value()) : nullptr;
}

RkManipulationSequence* RkManipulationSequenceManager::currentSequence(
    const RkManipulationSequenceManagerState& state) {
  return const_cast<RkManipulationSequence*>(
      static_cast<const RkManipulationSequenceManager*>(this)->currentSequence(state));
}

template <class Query, class Fallback>
decltype(auto) RkManipulationSequenceManager::askRunningSequence(
    const RkManipulationSequenceManagerState& state, Query query, Fallback&& fallback) const {
  return RkManipulationListRunner::ask(currentSequence(state),
                                       state.currentSequenceStateContainer().element(), query,
                                       std::forward<Fallback>(fallback));
}

const RkManipulatorEndEffectorPlacement& RkManipulationSequenceManager::endEffectorPlacement(
    const RkManipulationSequenceManagerState& state) const {
  return askRunningSequence(
      state,
      [](const auto& sequence, const auto& sequenceState) -> const RkManipulatorEndEffectorPlacement& {
        return sequence.endEffectorPlacement(sequenceState);
      },
      RkManipulatorEndEffectorPlacement::nullObject());
}

const RkDataMap& RkManipulationSequenceManager::dataMap(
    const RkManipulationSequenceManagerState& state) const {
  return askRunningSequence(
      state,
      [](const auto& sequence, const auto& sequenceState) -> const RkDataMap& {
        return sequence.dataMap(sequenceState);
      },
      RkManipulationNullObjects::dataMap());
}

RkU32 RkManipulationSequenceManager::activeControlDescription(
    const RkManipulationSequenceManagerState& state) const {
  return askRunningSequence(
      state,
      [](const auto& sequence, const auto& sequenceState) {
        return sequence.activeControlDescription(sequenceState);
      },
      0u);
}

RkU32 RkManipulationSequenceManager::activeEndEffectorSet(
    const RkManipulationSequenceManagerState& state) const {
  return askRunningSequence(
      state,
      [](const auto& sequence, const auto& sequenceState) {
        return sequence.activeEndEffectorSet(sequenceState);
      },
      0u);
}

RkU32 RkManipulationSequenceManager::activeControlMethod(
    const RkManipulationSequenceManagerState& state) const {
  return askRunningSequence(
      state,
      [](const auto& sequence, const auto& sequenceState) {
        return sequence.activeControlMethod(sequenceState);
      },
      0u);
}

RkManipulationSequenceManagerState RkManipulationSequenceManager::calculateEndState(
    const RkManipulationUpdateParams& params) const {
  RkManipulationSequenceManagerState state;
  if (m_sequenceOrder.size() == 0) {
    Rk::Print::write(4, "RkManipulationSequenceManager::calculateEndState sequence order is empty.\n");
    return state;
  }
  state.setCurrentSequenceIndex(m_sequenceOrder.size() - 1);
  state.setCurrentSequenceNeedsInit(false);
  state.setCurrentSequenceIsComplete(true);
  const RkManipulationSequence* last = currentSequence(state);
  if (!last) {
    Rk::Print::write(
        4, "RkManipulationSequenceManager::calculateEndState sequence \"%s\" is not in the sequence map.\n",
        m_sequenceOrder[m_sequenceOrder.size() - 1].value().c_str());
    return state;
  }
  state.currentSequenceStateContainer().setElement(last->calculateEndState(params));
  return state;
}

RkBoolean RkManipulationSequenceManager::init(RkManipulationSequenceManagerState& state) const {
  state.clear();
  if (m_sequenceOrder.size() == 0) {
    Rk::Print::write(4, "RkManipulationSequenceManager::init sequence order is empty.\n");
    return false;
  }
  if (m_sequenceMap.size() == 0) {
    Rk::Print::write(4, "RkManipulationSequenceManager::init sequence map is empty.\n");
    return false;
  }
  state.setCurrentSequenceNeedsInit(true);
  return true;
}

namespace {

// The manager's order of sequences as a list for the list runner.
struct SequenceList {
  const RkManipulationSequenceManager& manager;
  RkManipulationSequenceManagerState& state;
  RkReal time;
  const RkManipulationUpdateParams& params;

  const char* owner() const { return "RkManipulationSequenceManager"; }
  const char* elementName() const { return "sequence"; }
  const char* pastEndMessage() const {
    return "RkManipulationSequenceManager::update sequence %u is past the end of the order (%u names); init "
           "first.\n";
  }
  const char* noStateMessage() const {
    return "RkManipulationSequenceManager::update sequence %d has no state; init first.\n";
  }
  RkU32 index() const { return state.currentSequenceIndex(); }
  void setIndex(RkU32 index) { state.setCurrentSequenceIndex(index); }
  bool needsInit() const { return state.currentSequenceNeedsInit(); }
  void setNeedsInit(bool needsInit) { state.setCurrentSequenceNeedsInit(needsInit); }
  bool isComplete() const { return state.currentSequenceIsComplete(); }
  void setComplete(bool complete) { state.setCurrentSequenceIsComplete(complete); }
  RkU32 count() const { return manager.sequenceOrder().size(); }
  // Only the running sequence's state is kept, so there is nothing to check it against.
  bool stateAgrees(RkU32) const { return true; }
  const RkManipulationSequence* element(RkU32 index) const {
    const RkManipulationSequence* sequence = manager.currentSequence(state);
    if (!sequence) {
      Rk::Print::write(
          4, "RkManipulationSequenceManager::update sequence %u (\"%s\") is not in the sequence map.\n",
          index, manager.sequenceOrder()[index].value().c_str());
    }
    return sequence;
  }
  bool start(const RkManipulationSequence& sequence, RkU32) {
    RkManipulationActionStateContainer container;
    if (!sequence.init(container)) return false;
    state.currentSequenceStateContainer() = std::move(container);
    return true;
  }
  RkManipulationActionState* elementState(RkU32) { return state.currentSequenceStateContainer().element(); }
  RkManipulationStatus::Enum update(const RkManipulationSequence& sequence,
                                    RkManipulationActionState& sequenceState) {
    return sequence.update(time, params, sequenceState);
  }
};

}  // namespace

RkManipulationStatus::Enum RkManipulationSequenceManager::update(
    RkReal time, const RkManipulationUpdateParams& params, RkManipulationSequenceManagerState& state) const {
  SequenceList sequences{*this, state, time, params};
  return RkManipulationListRunner::step(sequences);
}

std::string RkManipulationSequenceManager::statusString(const RkManipulationSequenceManagerState& state,
                                                        const std::string& prefix) const {
  return askRunningSequence(
      state,
      [&prefix](const auto& sequence, const auto& sequenceState) {
        return sequence.statusString(sequenceState, prefix);
      },
      std::string());
}
