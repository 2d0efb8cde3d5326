#include "manipulator/RkManipulatorActivePositionState.h"

#include "foundation/RkPrint.h"
#include "manipulator/RkIndividualManipulator.h"

namespace {
// What a state reads as before one is set: no joint positions, the base at the origin.
const RkPositionState& noPositionState() {
  static const RkPositionState state;
  return state;
}
}  // namespace

RkManipulatorActivePositionState::RkManipulatorActivePositionState(const RkIndividualManipulator& manipulator)
    : m_manipulator(&manipulator), m_positionState(&noPositionState()) {
  m_manipulatorFrame = m_manipulator->manipulatorFrame(*this);
}

RkBoolean RkManipulatorActivePositionState::setPositionState(const RkPositionState& state) {
  m_positionState = &state;
  m_manipulatorFrame = m_manipulator->manipulatorFrame(*this);
  return valid();
}

RkBoolean RkManipulatorActivePositionState::valid() const {
  return m_positionState->jointPositions().size() >= m_manipulator->links().size();
}

RkBoolean RkManipulatorActivePositionState::primaryFrame(RkU32 linkIndex,
                                                         RkCoordinateSystemTransformation& frame) const {
  return linkFrame("primaryFrame", linkIndex, frame);
}

RkBoolean RkManipulatorActivePositionState::dhFrame(RkU32 linkIndex,
                                                    RkCoordinateSystemTransformation& frame) const {
  if (!linkFrame("dhFrame", linkIndex, frame)) return false;
  frame = frame * m_manipulator->links()[linkIndex].dhOffset();
  return true;
}

RkU32 RkManipulatorActivePositionState::linkIndex(const RkManipulatorLink& link) const {
  const RkIndividualManipulator::LinkVector& links = m_manipulator->links();
  RkU32 index = 0;
  while (index < links.size() && &links[index] != &link) ++index;
  return index;
}

RkBoolean RkManipulatorActivePositionState::linkFrame(const char* caller, RkU32 linkIndex,
                                                      RkCoordinateSystemTransformation& frame) const {
  const RkIndividualManipulator::LinkVector& links = m_manipulator->links();
  const RkPositionState::RealVector& positions = m_positionState->jointPositions();
  const char* name = m_manipulator->name().c_str();
  if (linkIndex >= links.size()) {
    Rk::Print::write(4,
                     "RkManipulatorActivePositionState::%s: link index %u is beyond the %u links of \"%s\"\n",
                     caller, linkIndex, links.size(), name);
    return false;
  }
  if (!valid()) {
    Rk::Print::write(4,
                     "RkManipulatorActivePositionState::%s: manipulator \"%s\" has %u links but the state "
                     "gives %u joint positions\n",
                     caller, name, links.size(), positions.size());
    return false;
  }
  // From the link towards the base: each step puts the frame found so far in the parent's primary frame.
  // Parents come first, so the walk ends within linkIndex steps.
  RkCoordinateSystemTransformation inBase, inParent;
  RkU32 index = linkIndex;
  for (;;) {
    const RkManipulatorLink& link = links[index];
    const int parent = link.parentIndex();
    if (parent < -1 || parent >= static_cast<int>(index)) {
      Rk::Print::write(4,
                       "RkManipulatorActivePositionState::%s: link %u of manipulator \"%s\" has parent index "
                       "%d, which is neither -1 nor an earlier link\n",
                       caller, index, name, parent);
      return false;
    }
    if (!link.frameInParent(positions[index], inParent)) {
      Rk::Print::write(4,
                       "RkManipulatorActivePositionState::%s: link %u of manipulator \"%s\" has an unknown "
                       "joint type %d\n",
                       caller, index, name, static_cast<int>(link.jointType()));
      return false;
    }
    inBase = inParent * inBase;
    if (parent < 0) break;
    index = static_cast<RkU32>(parent);
  }
  frame = m_manipulatorFrame * inBase;
  return true;
}
