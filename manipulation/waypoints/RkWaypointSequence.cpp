#include "waypoints/RkWaypointSequence.h"

#include "control/RkControlTokens.h"
#include "control/RkManipulatorController.h"
#include "control/RkPositionControlSystem.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkManipulationListRunner.h"

const RkDataMap RkWaypointSequence::m_theNullDataMap;
const RkEndEffectorSet RkWaypointSequence::m_theNullEndEffectorSet;
const RkXmlVectorType<RkXmlBasicType<RkU32>> RkWaypointSequence::m_theNullU32Vector;

void RkWaypointSequence::registerComponents() {
  registerComponent(RkManipulation::RkManipulationWaypointVectorToken, &m_waypoints,
                    "the waypoints, visited in order");
  registerComponent(RkControl::RkActiveControlMethodToken, &m_controlMethodIndex,
                    "index of the control method the controller uses");
  registerComponent(
      RkControl::RkActiveEndEffectorSetToken, &m_endEffectorSetIndex,
      "index of the end-effector set the waypoints are for; 4294967295 means the controller's active set");
  registerComponent(RkControl::RkActiveControlDescriptionToken, &m_controlDescriptionIndex,
                    "index of the control description the controller uses");
  registerComponent(RkManipulation::RkEndEffectorIndexToken, &m_endEffectorIndex,
                    "index, from 0, of the end effector whose path is rounded and timed");
}

RkBoolean RkWaypointSequence::init(RkManipulationActionStateContainer& container) const {
  auto& state = container.setNewElement<RkWaypointSequenceState>();
  state.setCurrentWaypointIndex(0);
  state.setCurrentWaypointNeedsInit(true);
  state.setCurrentWaypointIsComplete(false);
  if (m_waypoints.size() > 0) return true;
  Rk::Print::write(4, "RkWaypointSequence::init missing manipulation waypoints.\n");
  return false;
}

namespace {

// The sequence's waypoints as a list for the list runner. A waypoint keeps its working values itself, so the
// sequence's state stands for every waypoint's state.
struct WaypointList {
  const RkWaypointSequence& sequence;
  RkWaypointSequenceState& state;
  RkReal time;
  const RkManipulationUpdateParams& params;

  const char* owner() const { return "RkWaypointSequence"; }
  const char* elementName() const { return "waypoint"; }
  const char* pastEndMessage() const {
    return "RkWaypointSequence::update waypoint %u is past the last waypoint (%u waypoints); init first.\n";
  }
  // Never printed: elementState is never null.
  const char* noStateMessage() const { return "RkWaypointSequence::update waypoint %d has no state.\n"; }
  RkU32 index() const { return state.currentWaypointIndex(); }
  void setIndex(RkU32 index) { state.setCurrentWaypointIndex(index); }
  bool needsInit() const { return state.currentWaypointNeedsInit(); }
  void setNeedsInit(bool needsInit) { state.setCurrentWaypointNeedsInit(needsInit); }
  bool isComplete() const { return state.currentWaypointIsComplete(); }
  void setComplete(bool complete) { state.setCurrentWaypointIsComplete(complete); }
  RkU32 count() const { return sequence.waypoints().size(); }
  const RkManipulationWaypoint* element(RkU32 index) const { return &sequence.waypoints()[index]; }
  bool stateAgrees(RkU32) const { return true; }
  bool start(const RkManipulationWaypoint& waypoint, RkU32 index) {
    return waypoint.init(time, params, sequence, state, index);
  }
  RkWaypointSequenceState* elementState(RkU32) { return &state; }
  RkManipulationStatus::Enum update(const RkManipulationWaypoint& waypoint, RkWaypointSequenceState&) {
    return waypoint.update(time, params, sequence, state, index());
  }
};

}  // namespace

RkManipulationStatus::Enum RkWaypointSequence::update(RkReal time, const RkManipulationUpdateParams& params,
                                                      RkManipulationActionState& actionState) const {
  WaypointList waypoints{*this, dynamic_cast<RkWaypointSequenceState&>(actionState), time, params};
  return RkManipulationListRunner::step(waypoints);
}

const RkEndEffectorSet& RkWaypointSequence::endEffectorSet(const RkManipulationUpdateParams& params,
                                                           const RkManipulationActionState&) const {
  const RkManipulatorController* controller =
      params.positionControlSystem
          ? params.positionControlSystem->manipulatorController(params.controllerIndex)
          : nullptr;
  if (!controller) return m_theNullEndEffectorSet;
  const RkXmlVectorType<RkEndEffectorSet>& sets = controller->endEffectorSets();
  RkU32 index = m_endEffectorSetIndex;
  if (index == kControllerActiveSet) index = controller->activeEndEffectorSetIndex();
  return index < sets.size() ? sets[index] : m_theNullEndEffectorSet;
}

const RkManipulatorEndEffectorPlacement& RkWaypointSequence::endEffectorPlacement(
    const RkManipulationActionState& state) const {
  const RkManipulationWaypoint* waypoint = currentWaypoint(state);
  return waypoint ? waypoint->desiredEndEffectorPlacement() : RkManipulatorEndEffectorPlacement::nullObject();
}

const RkXmlVectorType<RkXmlBasicType<RkU32>>& RkWaypointSequence::profiledPositionEndEffectorIndices(
    const RkManipulationActionState& state) const {
  const RkManipulationWaypoint* waypoint = currentWaypoint(state);
  return waypoint ? waypoint->profiledPositionEndEffectorIndices() : m_theNullU32Vector;
}

void RkWaypointSequence::insert(RkU32 index, const RkManipulationWaypoint& waypoint) {
  if (index >= m_waypoints.size()) {
    add(waypoint);
    return;
  }
  std::vector<RkManipulationWaypoint>& waypoints = m_waypoints.vectorContainer();
  waypoints.insert(waypoints.begin() + index, waypoint);
}

const RkManipulationWaypoint* RkWaypointSequence::currentWaypoint(
    const RkManipulationActionState& actionState) const {
  const RkU32 index = dynamic_cast<const RkWaypointSequenceState&>(actionState).currentWaypointIndex();
  return index < m_waypoints.size() ? &m_waypoints[index] : nullptr;
}

RkManipulationWaypoint* RkWaypointSequence::currentWaypoint(const RkManipulationActionState& actionState) {
  const RkU32 index = dynamic_cast<const RkWaypointSequenceState&>(actionState).currentWaypointIndex();
  return index < m_waypoints.size() ? &m_waypoints[index] : nullptr;
}
