#include "waypoints/RkManipulationWaypoint.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "control/RkEndEffectorPlacement.h"
#include "control/RkEndEffectorSet.h"
#include "control/RkFrameEndEffector.h"
#include "control/RkManipulatorController.h"
#include "control/RkPointEndEffector.h"
#include "control/RkPositionControlSystem.h"
#include "foundation/RkPrint.h"
#include "sequencing/RkPoseSet.h"
#include "waypoints/RkBezierInterpolator.h"
#include "waypoints/RkWaypointSequence.h"

namespace {
// Below this placement error a waypoint that is not rounded off counts as reached.
const RkReal kReachedError = 1e-5;
const RkReal kNoCurve = -1.0;
}  // namespace

RkManipulationWaypoint::RkManipulationWaypoint() : m_zoneRadius(0.1), m_extendedZoneRadius(0.2) {
  m_interpolatorContainer.setElement(RkBezierInterpolator());
}

void RkManipulationWaypoint::registerComponents() {
  registerComponent(RkManipulation::RkStopPointToken, &m_stopPoint,
                    "true: the motion stops at this waypoint (no rounded corner)");
  registerComponent(RkManipulation::RkDesiredPlacementToken, &m_desiredPlacement,
                    "the goal placements of every end effector, in the system frame (m, quaternion w x y z)");
  registerComponent(
      RkManipulation::RkNameToken, &m_label,
      "a pose of the pose set whose placement the waypoint's end effector takes instead, or empty");
  registerComponent(RkManipulation::RkZoneRadiusToken, &m_zoneRadius,
                    "distance from the goal at which the corner towards the next waypoint begins, m; 0 "
                    "switches rounding off");
  registerComponent(RkManipulation::RkExtendedZoneRadiusToken, &m_extendedZoneRadius,
                    "the wider distance used to shape the rounded corner, m");
  registerComponent(RkManipulation::RkWaypointInterpolatorContainerToken, &m_interpolatorContainer,
                    "how the path to this waypoint is shaped and timed");
}

void RkManipulationWaypoint::findGoalToUse(const RkPoseSet* poseSet) const {
  m_working.goalToUse = m_desiredPlacement;
  if (!poseSet) return;
  if (const RkCoordinateSystemTransformation* pose = poseSet->poseMap().lookupPointer(m_label)) {
    m_working.goalToUse.setOffsetInRelative(m_working.endEffectorIndex,
                                            RkEndEffectorPlacement(*pose).placement());
  }
}

RkBoolean RkManipulationWaypoint::init(RkReal, const RkManipulationUpdateParams& params,
                                       const RkWaypointSequence& sequence,
                                       const RkWaypointSequenceState& state, RkU32 index) const {
  const RkManipulationWaypointVector& waypoints = sequence.waypoints();
  if (index >= waypoints.size()) return false;
  // Until this init succeeds, an update finds no goal and fails.
  m_working.goalToUse = RkManipulatorEndEffectorPlacement();
  m_working.previousWaypoint = m_working.nextWaypoint = nullptr;
  const RkU32 endEffectorIndex = sequence.endEffectorIndex();
  m_working.endEffectorIndex = endEffectorIndex;
  const RkEndEffectorSet& set = sequence.endEffectorSet(params, state);
  if (endEffectorIndex >= set.size()) {
    Rk::Print::writeFrom(__PRETTY_FUNCTION__, 4,
                         "RkManipulationWaypoint::init - invalid end-effector index.\n");
    return false;
  }
  const RkEndEffector* endEffector = set.endEffector(endEffectorIndex);
  if (!dynamic_cast<const RkPointEndEffector*>(endEffector) &&
      !dynamic_cast<const RkFrameEndEffector*>(endEffector)) {
    Rk::Print::writeFrom(__PRETTY_FUNCTION__, 4,
                         "RkManipulationWaypoint::init - only point or frame end-effector is supported.\n");
    return false;
  }
  const RkManipulationWaypoint* next = index + 1 < waypoints.size() ? &waypoints[index + 1] : nullptr;
  if (next) {
    // Its goal must be known before the corner towards it begins; it moves the same end effector.
    next->m_working.endEffectorIndex = endEffectorIndex;
    next->findGoalToUse(params.poseSet);
  }
  findGoalToUse(params.poseSet);
  for (const RkManipulationWaypoint* waypoint : {this, next}) {
    if (waypoint && !waypoint->hasGoalToUseFor(endEffectorIndex)) {
      Rk::Print::writeFrom(
          __PRETTY_FUNCTION__, 4,
          "RkManipulationWaypoint::init - waypoint %u has no desired placement for end-effector "
          "%u.\n",
          waypoint == this ? index : index + 1, endEffectorIndex);
      m_working.goalToUse = RkManipulatorEndEffectorPlacement();
      return false;
    }
  }
  m_working.previousWaypoint = index > 0 ? &waypoints[index - 1] : nullptr;
  m_working.nextWaypoint = next;
  m_working.goal = m_working.goalToUse;
  m_working.profiledPositionEndEffectorIndices.clear();
  m_working.blendStartTime = kNoCurve;
  m_working.cornerFlag = false;
  // A fresh curve of the same kind: a curve once given degenerate points stays invalid.
  if (const RkWaypointInterpolator* used = m_interpolatorContainer.element()) {
    const std::unique_ptr<RkXmlObject> fresh(used->newObject());
    m_interpolatorContainer.setElement(static_cast<const RkWaypointInterpolator&>(*fresh));
  }
  return true;
}

RkBoolean RkManipulationWaypoint::hasGoalToUseFor(RkU32 endEffectorIndex) const {
  return endEffectorIndex < m_working.goalToUse.offsetTransformations().size();
}

void RkManipulationWaypoint::setUpCorner(RkReal time, const RkCoordinateSystemTransformation& actual,
                                         const RkVector& linearVelocity, RkReal maximumAcceleration,
                                         RkWaypointInterpolator& interpolator) const {
  const RkU32 endEffectorIndex = m_working.endEffectorIndex;
  const RkCoordinateSystemTransformation& goal =
      m_working.goalToUse.offsetTransformations()[endEffectorIndex];
  const RkCoordinateSystemTransformation& nextGoal =
      m_working.nextWaypoint->m_working.goalToUse.offsetTransformations()[endEffectorIndex];
  const RkVector& corner = goal.translation();
  // As far beyond the goal, towards the next goal, as the end effector is from it now.
  const RkVector exit =
      corner + (nextGoal.translation() - corner).normalized() * (actual.translation() - corner).norm();
  interpolator.setPoints(actual.translation(), corner, exit);
  const RkReal speed = linearVelocity.norm();
  interpolator.setSpeeds(speed, speed);
  interpolator.setMaxAcceleration(maximumAcceleration);
  m_working.blendStartTime = time;
  m_working.profiledPositionEndEffectorIndices.clear();
  m_working.profiledPositionEndEffectorIndices.pushBack(endEffectorIndex);
  interpolator.setStartTime(time);
  const RkReal legLength = (nextGoal.translation() - corner).norm();
  const RkReal zoneRadius = m_zoneRadius;
  const RkOrientation exitOrientation =
      legLength < zoneRadius
          ? nextGoal.orientation()
          : RkOrientation::interpolation(goal.orientation(), nextGoal.orientation(), zoneRadius / legLength);
  interpolator.setOrientations(actual.orientation(), goal.orientation(), exitOrientation);
}

void RkManipulationWaypoint::pullBackGoal(const RkVector& actualPosition) const {
  const RkU32 endEffectorIndex = m_working.endEffectorIndex;
  const RkCoordinateSystemTransformation& goal =
      m_working.goalToUse.offsetTransformations()[endEffectorIndex];
  const RkVector& corner = goal.translation();
  const RkVector approach = (corner - actualPosition).normalized();
  const RkVector departure =
      (m_working.nextWaypoint->m_working.goalToUse.offsetTransformations()[endEffectorIndex].translation() -
       corner)
          .normalized();
  // 0 when the path runs straight on, pi when it turns right back.
  const RkReal angle = std::acos(std::clamp(approach.dot(departure), -1.0, 1.0));
  const RkReal shift = m_zoneRadius * 0.5 * angle / M_PI;
  m_working.goal.setOffsetInRelative(
      endEffectorIndex, RkCoordinateSystemTransformation(corner - approach * shift, goal.orientation()));
  m_working.cornerFlag = true;
}

RkManipulationStatus::Enum RkManipulationWaypoint::update(RkReal time,
                                                          const RkManipulationUpdateParams& params,
                                                          const RkWaypointSequence& sequence,
                                                          const RkWaypointSequenceState& state, RkU32) const {
  RkWaypointInterpolator* interpolator = m_interpolatorContainer.element();
  if (!interpolator) return RkManipulationStatus::Failure;
  const RkU32 endEffectorIndex = m_working.endEffectorIndex;
  const RkEndEffectorSet& set = sequence.endEffectorSet(params, state);
  RkPositionControlSystem* system = params.positionControlSystem;
  RkManipulatorController* controller =
      system ? system->manipulatorController(params.controllerIndex) : nullptr;
  RkCoordinateSystemTransformation actual;
  const RkManipulationWaypoint* next = m_working.nextWaypoint;
  if (!controller || endEffectorIndex >= set.size() || !hasGoalToUseFor(endEffectorIndex) ||
      (next && !next->hasGoalToUseFor(endEffectorIndex)) ||
      !system->actualPlacement(params.controllerIndex, endEffectorIndex, actual)) {
    Rk::Print::write(
        4, "RkManipulationWaypoint::update end-effector %u has no actual placement or goal; init first.\n",
        endEffectorIndex);
    return RkManipulationStatus::Failure;
  }
  const RkCoordinateSystemTransformation& goal =
      m_working.goalToUse.offsetTransformations()[endEffectorIndex];
  const bool roundsCorner = next && !m_stopPoint.value() && m_zoneRadius.value() != 0.0;
  if (roundsCorner && m_working.blendStartTime == kNoCurve) {
    if (actual.translation().approxEq(goal.translation(), m_zoneRadius)) {
      RkVector linear, angular;
      // A curve started at rest would never advance: wait until the end effector moves.
      if (controller->endEffectorVelocity(endEffectorIndex, linear, angular) && linear.norm() > 0.0) {
        setUpCorner(time, actual, linear, set.endEffector(endEffectorIndex)->maximumAcceleration(),
                    *interpolator);
      }
    } else if (!m_working.cornerFlag) {
      pullBackGoal(actual.translation());
    }
  }
  if (roundsCorner && m_working.blendStartTime != kNoCurve) {
    const RkReal ahead = time + system->lookAheadTime();
    RkVector position, velocity;
    if (!interpolator->interpolate(ahead, position, velocity)) {
      // The curve is over: head for the next goal while the sequence moves on to its waypoint.
      m_working.goal = next->m_working.goalToUse;
      m_working.blendStartTime = kNoCurve;
      m_working.profiledPositionEndEffectorIndices.clear();
      m_working.cornerFlag = false;
      controller->notifyGoalReached(endEffectorIndex);
      return RkManipulationStatus::Complete;
    }
    RkOrientation orientation = goal.orientation();
    interpolator->interpolate(ahead, orientation);
    m_working.goal.setOffsetInRelative(endEffectorIndex,
                                       RkCoordinateSystemTransformation(position, orientation));
  } else if (set.endEffector(endEffectorIndex)->placementError(actual, goal) < kReachedError) {
    controller->notifyGoalReached(endEffectorIndex);
    return RkManipulationStatus::Complete;
  }
  if (controller->mayKeepConverging(endEffectorIndex)) return RkManipulationStatus::InProgress;
  Rk::Print::write(4, "RkManipulationWaypoint::update convergence failed.\n");
  return RkManipulationStatus::Failure;
}
