#pragma once
// A stated system that simply holds its lists, for tests and for clients that fill the states themselves.
#include "manipulator/RkStatedSystem.h"

class RkSimpleStatedSystem : public RkStatedSystem {
 public:
  RkSimpleStatedSystem() = default;

  const RkXmlVectorType<RkIndividualManipulator>& manipulators() const override { return m_manipulators; }
  const RkXmlVectorType<RkPositionState>& positionStates() const override { return m_positionStates; }

  // Appends a manipulator with its state; returns its index.
  RkU32 addManipulator(const RkIndividualManipulator& manipulator, const RkPositionState& state);
  // Replaces the state of manipulator index; false, with one printed line, when there is no such manipulator.
  RkBoolean setPositionState(RkU32 index, const RkPositionState& state);

 private:
  RkXmlVectorType<RkIndividualManipulator> m_manipulators;
  RkXmlVectorType<RkPositionState> m_positionStates;
};
