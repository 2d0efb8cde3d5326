#pragma once
// A position state applied to one manipulator: every link's frames in the system frame for that state,
// computed when the state is set. Reused from cycle to cycle, it allocates only when first set (or when the
// manipulator gains links).
#include <vector>

#include "common/RkCoordinateSystemTransformation.h"
#include "manipulator/RkPositionState.h"

class RkIndividualManipulator;

class RkManipulatorActivePositionState {
 public:
  // The manipulator must outlive this object; changes to it show at the next setPositionState.
  explicit RkManipulatorActivePositionState(const RkIndividualManipulator& manipulator);

  const RkIndividualManipulator& manipulator() const { return *m_manipulator; }
  const RkPositionState& positionState() const { return m_positionState; }

  // Takes state and computes the frames of every link for it. False, with one printed line and no frame
  // available, when state has fewer joint positions than the manipulator has links, when a link's parent
  // is not an earlier link or the base, or when a joint type is unknown. Joint positions beyond the links
  // (a gripper's fingers, say) are kept but move no link.
  RkBoolean setPositionState(const RkPositionState& state);
  // True when the last setPositionState computed the frames.
  RkBoolean valid() const { return m_valid; }

  // The manipulator's own frame in the system frame.
  const RkCoordinateSystemTransformation& manipulatorFrame() const { return m_manipulatorFrame; }
  // The frames of link linkIndex in the system frame, or null (with one printed line) when there is no such
  // link or no frame was computed.
  const RkCoordinateSystemTransformation* primaryFrame(RkU32 linkIndex) const;
  const RkCoordinateSystemTransformation* dhFrame(RkU32 linkIndex) const;

 private:
  const RkCoordinateSystemTransformation* frame(const char* caller,
                                                const std::vector<RkCoordinateSystemTransformation>& frames,
                                                RkU32 linkIndex) const;

  const RkIndividualManipulator* m_manipulator;
  RkPositionState m_positionState;
  bool m_valid;
  RkCoordinateSystemTransformation m_manipulatorFrame;
  std::vector<RkCoordinateSystemTransformation> m_primaryFrames;
  std::vector<RkCoordinateSystemTransformation> m_dhFrames;
};
