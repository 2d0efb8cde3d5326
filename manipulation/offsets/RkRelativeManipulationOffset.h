#pragma once
// The base of the offsets that place an end effector relative to a primary frame (an earlier goal, a link,
// the manipulator): the manipulation frame is built from the primary frame and three axes, each given in the
// system frame, in the primary frame (object frame) or left undefined, and the goal is that frame composed
// with the relative offset. Subclasses supply the primary frame.
#include <string>

#include "common/RkCoordinateSystemTransformation.h"
#include "control/RkEndEffectorPlacement.h"
#include "offsets/RkManipulationOffset.h"
#include "xml/RkXmlEnumType.h"
#include "xml/RkXmlVector.h"

class RkIndividualManipulator;
class RkPositionState;

class RkRelativeManipulationOffset : public RkManipulationOffset {
 public:
  // The frame an axis vector is given in; an undefined axis is the cross product of the other two.
  enum SourceFrame : RkU32 { UndefinedFrame = 0, SystemFrame = 1, ObjectFrame = 2 };

  RkRelativeManipulationOffset();

  const RkEndEffectorPlacement& currentOffsetTransformation(
      const RkManipulationOffsetState& state) const override;
  const RkEndEffectorPlacement& goalOffsetTransformation(
      const RkManipulationOffsetState& state) const override;

  virtual const RkCoordinateSystemTransformation& relativeOffset() const { return m_relativeOffset; }
  virtual void setRelativeOffset(const RkCoordinateSystemTransformation& offset) {
    m_relativeOffset = offset;
  }
  // The manipulation frame as the primary frame itself, or as the system frame's axes at its origin.
  virtual void setObjectFrameAsManipulationFrame();
  virtual RkBoolean objectFrameAsManipulationFrame() const;
  virtual void setSystemFrameAsManipulationFrame();
  virtual RkBoolean systemFrameAsManipulationFrame() const;
  // Per axis: the vector, its source frame, and both at once. A source of 3 or more is ignored.
  virtual const RkXmlVector& manipulationFrameXAxisVector() const { return m_axisVector[0]; }
  virtual void setManipulationFrameXAxisVector(const RkXmlVector& vector) { m_axisVector[0] = vector; }
  virtual RkU32 manipulationFrameXAxisSourceFrame() const { return m_axisSource[0]; }
  virtual void setManipulationFrameXAxisSourceFrame(RkU32 source) { setSource(0, source); }
  virtual void setManipulationFrameXAxis(const RkXmlVector& vector, RkU32 source) {
    setAxis(0, vector, source);
  }
  virtual const RkXmlVector& manipulationFrameYAxisVector() const { return m_axisVector[1]; }
  virtual void setManipulationFrameYAxisVector(const RkXmlVector& vector) { m_axisVector[1] = vector; }
  virtual RkU32 manipulationFrameYAxisSourceFrame() const { return m_axisSource[1]; }
  virtual void setManipulationFrameYAxisSourceFrame(RkU32 source) { setSource(1, source); }
  virtual void setManipulationFrameYAxis(const RkXmlVector& vector, RkU32 source) {
    setAxis(1, vector, source);
  }
  virtual const RkXmlVector& manipulationFrameZAxisVector() const { return m_axisVector[2]; }
  virtual void setManipulationFrameZAxisVector(const RkXmlVector& vector) { m_axisVector[2] = vector; }
  virtual RkU32 manipulationFrameZAxisSourceFrame() const { return m_axisSource[2]; }
  virtual void setManipulationFrameZAxisSourceFrame(RkU32 source) { setSource(2, source); }
  virtual void setManipulationFrameZAxis(const RkXmlVector& vector, RkU32 source) {
    setAxis(2, vector, source);
  }
  // Empty when the axes describe a usable frame, otherwise what is wrong with them.
  virtual std::string validManipulationFrame() const;
  // The manipulation frame for primaryFrame, in the system frame; the axes are used as they stand.
  virtual RkCoordinateSystemTransformation calculateManipulationFrame(
      const RkCoordinateSystemTransformation& primaryFrame) const;

  // The goal for primaryFrame: the relative offset in the manipulation frame. Real-time safe.
  RkEndEffectorPlacement goalFromPrimaryFrame(const RkCoordinateSystemTransformation& primaryFrame) const;
  // The relative offset that makes the goal for primaryFrame equal to goal.
  RkCoordinateSystemTransformation relativeOffsetFor(
      const RkCoordinateSystemTransformation& goal,
      const RkCoordinateSystemTransformation& primaryFrame) const;

 protected:
  void registerComponents() override;
  // The manipulator the update parameters select, with its position state; null, with one line naming
  // caller, when the stated system has none at the manipulator index. Real-time safe. The kinds that follow
  // the arm apply the state to an active position state made afresh every cycle: it only refers to the
  // state and computes frames on demand, so it allocates nothing and nothing is kept between cycles.
  static const RkIndividualManipulator* selectedManipulator(const char* caller,
                                                            const RkManipulationUpdateParams& params,
                                                            const RkPositionState*& positionState);

 private:
  void setSource(int axis, RkU32 source);
  void setAxis(int axis, const RkXmlVector& vector, RkU32 source);
  RkBoolean allAxesAre(RkU32 source) const;

  RkCoordinateSystemTransformation m_relativeOffset;
  RkXmlVector m_axisVector[3];
  RkXmlEnumType<RkU32> m_axisSource[3];
};
