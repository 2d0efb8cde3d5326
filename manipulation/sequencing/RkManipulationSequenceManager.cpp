#include "sequencing/RkManipulationSequenceManager.h"

#include "control/RkEndEffectorSet.h"
#include "control/RkManipulatorEndEffectorPlacement.h"
#include "foundation/RkPrint.h"
#include "sequencing/RkManipulationHandOver.h"
#include "sequencing/RkManipulationNullObjects.h"
#include "sequencing/RkManipulationTokens.h"

void RkManipulationSequenceManager::registerComponents() {
  registerComponent(RkManipulation::RkSequenceOrderToken, &m_sequenceOrder);
  registerComponent(RkManipulation::RkSequenceMapToken, &m_sequenceMap);
}

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

bool RkManipulationSequenceManager::running(const RkManipulationSequenceManagerState& state,
                                            const RkManipulationSequence*& sequence,
                                            const RkManipulationActionState*& sequenceState) const {
  sequence = currentSequence(state);
  sequenceState = state.currentSequenceStateContainer().element();
  return sequence && sequenceState;
}

const RkManipulatorEndEffectorPlacement& RkManipulationSequenceManager::endEffectorPlacement(
    const RkManipulationSequenceManagerState& state) const {
  const RkManipulationSequence* sequence;
  const RkManipulationActionState* sequenceState;
  return running(state, sequence, sequenceState) ? sequence->endEffectorPlacement(*sequenceState)
                                                 : RkManipulatorEndEffectorPlacement::nullObject();
}

const RkDataMap& RkManipulationSequenceManager::dataMap(
    const RkManipulationSequenceManagerState& state) const {
  const RkManipulationSequence* sequence;
  const RkManipulationActionState* sequenceState;
  return running(state, sequence, sequenceState) ? sequence->dataMap(*sequenceState)
                                                 : RkManipulationNullObjects::dataMap();
}

RkU32 RkManipulationSequenceManager::activeControlDescription(
    const RkManipulationSequenceManagerState& state) const {
  const RkManipulationSequence* sequence;
  const RkManipulationActionState* sequenceState;
  return running(state, sequence, sequenceState) ? sequence->activeControlDescription(*sequenceState) : 0;
}

RkU32 RkManipulationSequenceManager::activeEndEffectorSet(
    const RkManipulationSequenceManagerState& state) const {
  const RkManipulationSequence* sequence;
  const RkManipulationActionState* sequenceState;
  return running(state, sequence, sequenceState) ? sequence->activeEndEffectorSet(*sequenceState) : 0;
}

RkU32 RkManipulationSequenceManager::activeControlMethod(
    const RkManipulationSequenceManagerState& state) const {
  const RkManipulationSequence* sequence;
  const RkManipulationActionState* sequenceState;
  return running(state, sequence, sequenceState) ? sequence->activeControlMethod(*sequenceState) : 0;
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

RkManipulationStatus::Enum RkManipulationSequenceManager::update(
    RkReal time, const RkManipulationUpdateParams& params, RkManipulationSequenceManagerState& state) const {
  if (state.currentSequenceIsComplete()) {
    state.setCurrentSequenceIndex(state.currentSequenceIndex() + 1);
    state.setCurrentSequenceNeedsInit(true);
    state.setCurrentSequenceIsComplete(false);
  }
  const RkU32 index = state.currentSequenceIndex();
  if (index >= m_sequenceOrder.size()) {
    Rk::Print::write(
        4,
        "RkManipulationSequenceManager::update sequence %d is past the end of the order (%u names); "
        "init first.\n",
        static_cast<int>(index), m_sequenceOrder.size());
    return RkManipulationStatus::Failure;
  }
  const RkManipulationSequence* sequence = currentSequence(state);
  if (!sequence) {
    Rk::Print::write(
        4, "RkManipulationSequenceManager::update sequence %d (\"%s\") is not in the sequence map.\n",
        static_cast<int>(index), m_sequenceOrder[index].value().c_str());
    return RkManipulationStatus::Failure;
  }
  const bool startedNow = state.currentSequenceNeedsInit();
  if (startedNow) {
    state.setCurrentSequenceNeedsInit(false);
    RkManipulationActionStateContainer container;
    if (!sequence->init(container)) {
      Rk::Print::write(4, "RkManipulationSequenceManager::update unable to initialize sequence %d.\n",
                       static_cast<int>(index));
      return RkManipulationStatus::Failure;
    }
    state.currentSequenceStateContainer() = container;
  }
  RkManipulationActionState* sequenceState = state.currentSequenceStateContainer().element();
  if (!sequenceState) {
    Rk::Print::write(4, "RkManipulationSequenceManager::update sequence %d has no state; init first.\n",
                     static_cast<int>(index));
    return RkManipulationStatus::Failure;
  }
  const RkManipulationStatus::Enum result = sequence->update(time, params, *sequenceState);
  if (result == RkManipulationStatus::Failure) {
    Rk::Print::write(4, "RkManipulationSequenceManager::update unable to update sequence %d.\n",
                     static_cast<int>(index));
    return RkManipulationStatus::Failure;
  }
  bool sequenceComplete = false;
  const RkManipulationStatus::Enum status = RkManipulationHandOver::report(
      result, startedNow, index + 1 < m_sequenceOrder.size(), sequenceComplete);
  if (sequenceComplete) state.setCurrentSequenceIsComplete(true);
  return status;
}

std::string RkManipulationSequenceManager::statusString(const RkManipulationSequenceManagerState& state,
                                                        const std::string& prefix) const {
  const RkManipulationSequence* sequence;
  const RkManipulationActionState* sequenceState;
  return running(state, sequence, sequenceState) ? sequence->statusString(*sequenceState, prefix)
                                                 : std::string();
}
