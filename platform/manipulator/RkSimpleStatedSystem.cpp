#include "manipulator/RkSimpleStatedSystem.h"

#include "foundation/RkPrint.h"

RkU32 RkSimpleStatedSystem::addManipulator(const RkIndividualManipulator& manipulator,
                                           const RkPositionState& state) {
  m_manipulators.pushBack(manipulator);
  m_positionStates.pushBack(state);
  return m_manipulators.size() - 1;
}

RkBoolean RkSimpleStatedSystem::setPositionState(RkU32 index, const RkPositionState& state) {
  if (index >= m_positionStates.size()) {
    Rk::Print::write(4, "RkSimpleStatedSystem::setPositionState: index %u is beyond the %u manipulators\n",
                     index, m_positionStates.size());
    return false;
  }
  m_positionStates[index] = state;
  return true;
}
