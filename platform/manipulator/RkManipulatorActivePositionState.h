#pragma once
// A position state applied to one manipulator: its frame and its links' frames in the system frame for that
// state. It refers to the state it is given and computes a link's frames when asked, walking from the base
// to the link, so building one, setting it and asking it allocate nothing: a control cycle may make a fresh
// one every time.
#include "common/RkCoordinateSystemTransformation.h"
#include "manipulator/RkPositionState.h"

class RkIndividualManipulator;
class RkManipulatorLink;

class RkManipulatorActivePositionState {
 public:
  // The manipulator must outlive this object.
  explicit RkManipulatorActivePositionState(const RkIndividualManipulator& manipulator);

  const RkIndividualManipulator& manipulator() const { return *m_manipulator; }
  // The state last set, or a default state before the first.
  const RkPositionState& positionState() const { return *m_positionState; }

  // Applies state, which must outlive its use here, and computes the manipulator's frame for it. False when
  // the state gives fewer joint positions than the manipulator has links: the link frames are then refused.
  // Joint positions beyond the links (a gripper's fingers, say) are kept but move no link.
  RkBoolean setPositionState(const RkPositionState& state);
  // True when the last state set gives a position to every link.
  RkBoolean valid() const;

  // The manipulator's own frame in the system frame.
  const RkCoordinateSystemTransformation& manipulatorFrame() const { return m_manipulatorFrame; }
  // Sets frame to link linkIndex's primary or DH frame in the system frame. False, with one printed line and
  // frame unchanged, when there is no such link, the state does not fit, a link on the way hangs from
  // neither the base nor an earlier link, or a joint type is unknown.
  RkBoolean primaryFrame(RkU32 linkIndex, RkCoordinateSystemTransformation& frame) const;
  RkBoolean dhFrame(RkU32 linkIndex, RkCoordinateSystemTransformation& frame) const;
  // The index of link among the manipulator's links (the same object, not an equal one), or the link count
  // when it is not one of them.
  RkU32 linkIndex(const RkManipulatorLink& link) const;

 private:
  RkBoolean linkFrame(const char* caller, RkU32 linkIndex, RkCoordinateSystemTransformation& frame) const;

  const RkIndividualManipulator* m_manipulator;
  const RkPositionState* m_positionState;
  RkCoordinateSystemTransformation m_manipulatorFrame;
};
