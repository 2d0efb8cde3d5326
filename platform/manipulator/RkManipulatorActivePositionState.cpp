#include "manipulator/RkManipulatorActivePositionState.h"

#include "foundation/RkPrint.h"
#include "manipulator/RkIndividualManipulator.h"

RkManipulatorActivePositionState::RkManipulatorActivePositionState(const RkIndividualManipulator& manipulator)
    : m_manipulator(&manipulator), m_valid(false) {}

RkBoolean RkManipulatorActivePositionState::setPositionState(const RkPositionState& state) {
  m_positionState = state;
  m_valid = false;
  m_manipulatorFrame = m_manipulator->manipulatorFrame(*this);
  const RkIndividualManipulator::LinkVector& links = m_manipulator->links();
  const RkU32 count = links.size();
  const RkPositionState::RealVector& positions = m_positionState.jointPositions();
  const char* name = m_manipulator->name().c_str();
  if (positions.size() < count) {
    Rk::Print::write(
        4,
        "RkManipulatorActivePositionState::setPositionState: manipulator \"%s\" has %u links but the "
        "state gives %u joint positions\n",
        name, count, positions.size());
    return false;
  }
  m_primaryFrames.resize(count);
  m_dhFrames.resize(count);
  RkCoordinateSystemTransformation inParent;
  for (RkU32 i = 0; i < count; ++i) {
    const RkManipulatorLink& link = links[i];
    const int parent = link.parentIndex();
    // Parents come first, so each frame builds on one already computed.
    if (parent < -1 || parent >= static_cast<int>(i)) {
      Rk::Print::write(
          4,
          "RkManipulatorActivePositionState::setPositionState: link %u of manipulator \"%s\" has "
          "parent index %d, which is neither -1 nor an earlier link\n",
          i, name, parent);
      return false;
    }
    if (!link.frameInParent(positions[i], inParent)) {
      Rk::Print::write(
          4,
          "RkManipulatorActivePositionState::setPositionState: link %u of manipulator \"%s\" has an "
          "unknown joint type %d\n",
          i, name, static_cast<int>(link.jointType()));
      return false;
    }
    m_primaryFrames[i] = (parent < 0 ? m_manipulatorFrame : m_primaryFrames[parent]) * inParent;
    m_dhFrames[i] = m_primaryFrames[i] * link.dhOffset();
  }
  m_valid = true;
  return true;
}

const RkCoordinateSystemTransformation* RkManipulatorActivePositionState::primaryFrame(
    RkU32 linkIndex) const {
  return frame("primaryFrame", m_primaryFrames, linkIndex);
}

const RkCoordinateSystemTransformation* RkManipulatorActivePositionState::dhFrame(RkU32 linkIndex) const {
  return frame("dhFrame", m_dhFrames, linkIndex);
}

const RkCoordinateSystemTransformation* RkManipulatorActivePositionState::frame(
    const char* caller, const std::vector<RkCoordinateSystemTransformation>& frames, RkU32 linkIndex) const {
  if (!m_valid) {
    Rk::Print::write(4, "RkManipulatorActivePositionState::%s: no frames computed for manipulator \"%s\"\n",
                     caller, m_manipulator->name().c_str());
    return nullptr;
  }
  if (linkIndex >= frames.size()) {
    Rk::Print::write(
        4, "RkManipulatorActivePositionState::%s: link index %u is beyond the %zu links of \"%s\"\n", caller,
        linkIndex, frames.size(), m_manipulator->name().c_str());
    return nullptr;
  }
  return &frames[linkIndex];
}
