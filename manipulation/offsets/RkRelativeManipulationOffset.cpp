#include "offsets/RkRelativeManipulationOffset.h"

#include "foundation/RkPrint.h"
#include "manipulator/RkStatedSystem.h"
#include "offsets/RkManipulationOffsetState.h"
#include "sequencing/RkManipulationTokens.h"

namespace {
// Closeness of the axis tests: 1e-5 for orthogonality, 1e-6 for the strict settings' unit vectors.
const RkReal kOrthogonalityTolerance = 1e-5;
const RkReal kUnitAxisTolerance = 1e-6;
const RkVector kZero;
const RkVector kUnitAxes[3] = {RkVector::xVector(), RkVector::yVector(), RkVector::zVector()};

// Whether (first x second) x first is second, which holds only for a unit first axis orthogonal to second.
bool closesOnSecond(const RkVector& first, const RkVector& second) {
  return first.cross(second).cross(first).approxEq(second, kOrthogonalityTolerance);
}
}  // namespace

RkRelativeManipulationOffset::RkRelativeManipulationOffset() {
  for (RkXmlEnumType<RkU32>& source : m_axisSource) {
    source.registerValue(SystemFrame, RkManipulation::RkSystemFrameToken);
    source.registerValue(ObjectFrame, RkManipulation::RkObjectFrameToken);
    source.registerValue(UndefinedFrame, RkManipulation::RkUndefinedFrameToken);
  }
}

void RkRelativeManipulationOffset::registerComponents() {
  registerComponent(RkManipulation::RkRelativeOffsetToken, &m_relativeOffset,
                    "the goal relative to the manipulation frame (m, quaternion w x y z)");
  registerComponent(RkManipulation::RkManipulationFrameXAxisVector, &m_axisVector[0],
                    "x axis of the manipulation frame (unitless direction)");
  registerComponent(RkManipulation::RkManipulationFrameXAxisSourceFrame, &m_axisSource[0],
                    "frame the x axis is given in: systemFrame, objectFrame (the primary frame) or "
                    "undefinedFrame (cross product of the other two)");
  registerComponent(RkManipulation::RkManipulationFrameYAxisVector, &m_axisVector[1],
                    "y axis of the manipulation frame (unitless direction)");
  registerComponent(RkManipulation::RkManipulationFrameYAxisSourceFrame, &m_axisSource[1],
                    "frame the y axis is given in: systemFrame, objectFrame (the primary frame) or "
                    "undefinedFrame (cross product of the other two)");
  registerComponent(RkManipulation::RkManipulationFrameZAxisVector, &m_axisVector[2],
                    "z axis of the manipulation frame (unitless direction)");
  registerComponent(RkManipulation::RkManipulationFrameZAxisSourceFrame, &m_axisSource[2],
                    "frame the z axis is given in: systemFrame, objectFrame (the primary frame) or "
                    "undefinedFrame (cross product of the other two)");
}

const RkEndEffectorPlacement& RkRelativeManipulationOffset::currentOffsetTransformation(
    const RkManipulationOffsetState& state) const {
  return state.currentOffsetTransformation();
}

const RkEndEffectorPlacement& RkRelativeManipulationOffset::goalOffsetTransformation(
    const RkManipulationOffsetState& state) const {
  return state.goalOffsetTransformation();
}

void RkRelativeManipulationOffset::setObjectFrameAsManipulationFrame() {
  for (int axis = 0; axis < 3; ++axis) setAxis(axis, kUnitAxes[axis], ObjectFrame);
}

RkBoolean RkRelativeManipulationOffset::objectFrameAsManipulationFrame() const {
  return allAxesAre(ObjectFrame);
}

void RkRelativeManipulationOffset::setSystemFrameAsManipulationFrame() {
  for (int axis = 0; axis < 3; ++axis) setAxis(axis, kUnitAxes[axis], SystemFrame);
}

RkBoolean RkRelativeManipulationOffset::systemFrameAsManipulationFrame() const {
  return allAxesAre(SystemFrame);
}

RkBoolean RkRelativeManipulationOffset::allAxesAre(RkU32 source) const {
  for (const RkXmlEnumType<RkU32>& axisSource : m_axisSource) {
    if (axisSource != source) return false;
  }
  for (int axis = 0; axis < 3; ++axis) {
    if (!m_axisVector[axis].approxEq(kUnitAxes[axis], kUnitAxisTolerance)) return false;
  }
  return true;
}

void RkRelativeManipulationOffset::setSource(int axis, RkU32 source) {
  if (source < 3) m_axisSource[axis].setValue(source);
}

void RkRelativeManipulationOffset::setAxis(int axis, const RkXmlVector& vector, RkU32 source) {
  if (source >= 3) return;
  m_axisVector[axis] = vector;
  m_axisSource[axis].setValue(source);
}

std::string RkRelativeManipulationOffset::validManipulationFrame() const {
  const RkU32 sx = m_axisSource[0], sy = m_axisSource[1], sz = m_axisSource[2];
  const RkVector &x = m_axisVector[0], &y = m_axisVector[1], &z = m_axisVector[2];
  if ((sx == UndefinedFrame) + (sy == UndefinedFrame) + (sz == UndefinedFrame) >= 2) {
    return "more than one axis is undefined";
  }
  if (sx != UndefinedFrame && sy != UndefinedFrame) {
    if (sz == UndefinedFrame) {
      if (x == kZero || y == kZero) return "zero vector axis";
      if (sx != sy) return "";
      return closesOnSecond(x, y) ? "" : "nonorthogonality detected";
    }
    if (sx != sy || sy != sz) return "three defined axes require the same source frame";
    if (x == kZero || y == kZero || z == kZero) return "zero vector axis";
    const RkBoolean rightHanded = x.cross(y).approxEq(z, kOrthogonalityTolerance) &&
                                  z.cross(x).approxEq(y, kOrthogonalityTolerance) &&
                                  y.cross(z).approxEq(x, kOrthogonalityTolerance);
    return rightHanded ? "" : "nonorthogonality detected";
  }
  if (sx != UndefinedFrame) {
    if (x == kZero || z == kZero) return "zero vector axis";
    if (sx != sz) return "";
    return closesOnSecond(z, x) ? "" : "nonorthogonality detected";
  }
  if (y == kZero || z == kZero) return "zero vector axis";
  if (sy != sz) return "";
  return closesOnSecond(y, z) ? "" : "nonorthogonality detected";
}

RkCoordinateSystemTransformation RkRelativeManipulationOffset::calculateManipulationFrame(
    const RkCoordinateSystemTransformation& primaryFrame) const {
  RkVector axes[3];
  for (int axis = 0; axis < 3; ++axis) {
    axes[axis] = m_axisSource[axis] == ObjectFrame ? primaryFrame.orientation() * m_axisVector[axis]
                                                   : RkVector(m_axisVector[axis]);
  }
  const bool defined[3] = {m_axisSource[0] != UndefinedFrame, m_axisSource[1] != UndefinedFrame,
                           m_axisSource[2] != UndefinedFrame};
  if (defined[0] && defined[1] && !defined[2]) {
    axes[2] = axes[0].cross(axes[1]);
  } else if (defined[0] && defined[2] && !defined[1]) {
    axes[1] = axes[2].cross(axes[0]);
  } else if (defined[1] && defined[2] && !defined[0]) {
    axes[0] = axes[1].cross(axes[2]);
  }
  RkOrientation rows;
  rows.setFromDcmRows(axes[0], axes[1], axes[2]);
  return RkCoordinateSystemTransformation(primaryFrame.translation(), rows.inverse());
}

RkEndEffectorPlacement RkRelativeManipulationOffset::goalFromPrimaryFrame(
    const RkCoordinateSystemTransformation& primaryFrame) const {
  return RkEndEffectorPlacement(calculateManipulationFrame(primaryFrame) * m_relativeOffset);
}

RkCoordinateSystemTransformation RkRelativeManipulationOffset::relativeOffsetFor(
    const RkCoordinateSystemTransformation& goal,
    const RkCoordinateSystemTransformation& primaryFrame) const {
  return calculateManipulationFrame(primaryFrame).inverse() * goal;
}

const RkIndividualManipulator* RkRelativeManipulationOffset::selectedManipulator(
    const char* caller, const RkManipulationUpdateParams& params, const RkPositionState*& positionState) {
  const RkStatedSystem* system = params.statedSystem;
  const RkU32 index = params.manipulatorIndex;
  if (!system || index >= system->manipulators().size() || index >= system->positionStates().size()) {
    Rk::Print::write(4, "%s no manipulator with a position state at index %u in the stated system.\n", caller,
                     index);
    return nullptr;
  }
  positionState = &system->positionStates()[index];
  return &system->manipulators()[index];
}
