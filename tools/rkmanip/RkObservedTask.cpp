#include "tools/rkmanip/RkObservedTask.h"

#include <algorithm>
#include <cmath>

#include "control/RkPositionControlSystem.h"
#include "events/RkManipulationPlacementAchievedTransitionEvent.h"
#include "frames/RkParametricManipulationFrame.h"
#include "frames/RkStandardManipulationFrame.h"
#include "frames/RkSubsequenceManipulationFrame.h"
#include "offsets/RkParametricTranslationManipulationOffset.h"
#include "offsets/RkReferencePoseManipulationOffset.h"
#include "sequencing/RkManipulationActionStateContainer.h"
#include "sequencing/RkPoseSet.h"
#include "simulation/RkSimulatedTaskRunner.h"
#include "waypoints/RkWaypointSequence.h"
#include "xml/RkXmlTokens.h"

namespace {

const RkToken kObservedActionToken = RkXml::qualifiedToken("observedAction");
const char* const kSeparator = " / ";

// The frames running in sequence, as its state stands, outermost first.
void walk(const RkManipulationSequence* sequence, const RkManipulationActionState* actionState,
          RkObservedTask::Path& path) {
  path.clear();
  const auto* sequenceState = dynamic_cast<const RkManipulationSequenceState*>(actionState);
  while (sequence && sequenceState) {
    const RkManipulationFrame* frame = sequence->currentFrame(*sequenceState);
    const RkManipulationFrameState* state = sequenceState->currentFrameState();
    const RkManipulationSequenceState* owner = sequenceState;
    sequence = nullptr;
    sequenceState = nullptr;
    for (; frame; owner = nullptr) {
      path.push_back({frame, state, owner});
      if (!state) break;
      if (const auto* parametric = dynamic_cast<const RkParametricManipulationFrame*>(frame)) {
        frame = parametric->targetFrame().element();
        state = dynamic_cast<const RkParametricManipulationFrameState&>(*state).targetFrameState();
      } else if (const auto* subsequence = dynamic_cast<const RkSubsequenceManipulationFrame*>(frame)) {
        sequence = &subsequence->subsequence();
        sequenceState = dynamic_cast<const RkManipulationSequenceState*>(
            dynamic_cast<const RkSubsequenceManipulationFrameState&>(*state).subsequenceState());
        break;
      } else {
        break;
      }
    }
  }
}

// The first reference pose that offset, or the offsets it wraps, names and poses lacks; null when none.
const std::string* missingPoseOf(const RkManipulationOffset* offset, const RkPoseSet* poses) {
  if (const auto* reference = dynamic_cast<const RkReferencePoseManipulationOffset*>(offset)) {
    const bool found = poses && poses->poseMap().find(reference->poseName());
    return found ? nullptr : &reference->poseName();
  }
  if (const auto* parametric = dynamic_cast<const RkParametricTranslationManipulationOffset*>(offset)) {
    return missingPoseOf(parametric->targetOffset().element(), poses);
  }
  return nullptr;
}

// The same, for the offsets of frame or of the frame it runs for each value.
const std::string* missingPoseOf(const RkManipulationFrame* frame, const RkPoseSet* poses) {
  if (const auto* parametric = dynamic_cast<const RkParametricManipulationFrame*>(frame)) {
    return missingPoseOf(parametric->targetFrame().element(), poses);
  }
  const auto* standard = dynamic_cast<const RkStandardManipulationFrame*>(frame);
  if (!standard) return nullptr;
  const auto& offsets = standard->offsetContainerVector(RkStandardManipulationFrameState());
  for (RkU32 i = 0; i < offsets.size(); ++i) {
    if (const std::string* name = missingPoseOf(offsets[i].element(), poses)) return name;
  }
  return nullptr;
}

}  // namespace

// The manager, seen from inside: each update hands on the pose set and is looked at before and after.
class RkObservedTask::Manager : public RkManipulationSequenceManager {
 public:
  Manager(const RkManipulationSequenceManager& manager, RkObservedTask& observer)
      : RkManipulationSequenceManager(manager), m_observer(observer) {}
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    RkManipulationSequenceManagerState& state) const override {
    m_observer.m_managerState = &state;
    m_observer.before(currentSequence(state), state.currentSequenceStateContainer().element());
    const RkManipulationStatus::Enum status =
        RkManipulationSequenceManager::update(time, m_observer.withPoses(params), state);
    m_observer.after(currentSequence(state), state.currentSequenceStateContainer().element());
    return status;
  }

 private:
  RkObservedTask& m_observer;
};

// An action, seen from inside in the same way; every other question goes to the action itself.
class RkObservedTask::Action : public RkXmlConcreteClass<Action, RkManipulationAction, kObservedActionToken> {
 public:
  Action() = default;
  Action(const RkManipulationAction& action, RkObservedTask& observer)
      : m_action(&action), m_observer(&observer) {}
  const RkManipulationAction& action() const { return *m_action; }

  RkBoolean init(RkManipulationActionStateContainer& container) const override {
    return m_action->init(container);
  }
  RkManipulationStatus::Enum update(RkReal time, const RkManipulationUpdateParams& params,
                                    RkManipulationActionState& state) const override {
    const auto* sequence = dynamic_cast<const RkManipulationSequence*>(m_action);
    m_observer->m_actionState = &state;
    m_observer->before(sequence, &state);
    const RkManipulationStatus::Enum status = m_action->update(time, m_observer->withPoses(params), state);
    m_observer->after(sequence, &state);
    if (m_observer->runsWaypoints()) m_observer->followWaypoint(time, status, state);
    return status;
  }
  RkU32 activeControlDescription(const RkManipulationActionState& state) const override {
    return m_action->activeControlDescription(state);
  }
  RkU32 activeControlMethod(const RkManipulationActionState& state) const override {
    return m_action->activeControlMethod(state);
  }
  RkU32 activeEndEffectorSet(const RkManipulationActionState& state) const override {
    return m_action->activeEndEffectorSet(state);
  }
  const RkDataMap& dataMap(const RkManipulationActionState& state) const override {
    return m_action->dataMap(state);
  }
  void findDataMapReferences(std::map<std::string, RkReal>& references) const override {
    m_action->findDataMapReferences(references);
  }
  const RkEndEffectorSet& endEffectorSet(const RkManipulationUpdateParams& params,
                                         const RkManipulationActionState& state) const override {
    return m_action->endEffectorSet(params, state);
  }
  const RkManipulatorEndEffectorPlacement& endEffectorPlacement(
      const RkManipulationActionState& state) const override {
    return m_action->endEffectorPlacement(state);
  }
  std::string statusString(const RkManipulationActionState& state, const std::string& prefix) const override {
    return m_action->statusString(state, prefix);
  }
  const RkXmlVectorType<RkXmlBasicType<RkU32>>& profiledPositionEndEffectorIndices(
      const RkManipulationActionState& state) const override {
    return m_action->profiledPositionEndEffectorIndices(state);
  }

 private:
  const RkManipulationAction* m_action = nullptr;
  RkObservedTask* m_observer = nullptr;
};

RkObservedTask::RkObservedTask(const RkManipulationSequenceManager* manager,
                               const RkManipulationAction* action, const RkPoseSet* poses)
    : m_poses(poses) {
  if (manager) {
    m_manager.reset(new Manager(*manager, *this));
  } else if (action) {
    m_action.reset(new Action(*action, *this));
    m_waypointSequence = dynamic_cast<const RkWaypointSequence*>(action);
    if (m_waypointSequence) m_waypointGoals.reset(new RkWaypointSequence(*m_waypointSequence));
  }
}

RkObservedTask::~RkObservedTask() = default;

RkManipulationStatus::Enum RkObservedTask::run(RkSimulatedTaskRunner& runner) {
  if (m_manager) return runner.run(*m_manager);
  return runner.run(*m_action);
}

const RkManipulationUpdateParams& RkObservedTask::withPoses(const RkManipulationUpdateParams& params) {
  m_params.statedSystem = params.statedSystem;
  m_params.manipulatorIndex = params.manipulatorIndex;
  m_params.positionControlSystem = params.positionControlSystem;
  m_params.controllerIndex = params.controllerIndex;
  m_params.poseSet = m_poses;
  return m_params;
}

void RkObservedTask::before(const RkManipulationSequence* sequence, const RkManipulationActionState* state) {
  walk(sequence, state, m_path);
  m_valuesBefore.clear();
  for (const Running& running : m_path) {
    if (const auto* values = dynamic_cast<const RkParametricManipulationFrameState*>(running.state))
      m_valuesBefore.emplace_back(values, values->parametricIndex());
  }
}

void RkObservedTask::after(const RkManipulationSequence* sequence, const RkManipulationActionState* state) {
  walk(sequence, state, m_path);
  m_frameEnded = std::any_of(m_path.begin(), m_path.end(), [](const Running& running) {
    return running.sequenceState && running.sequenceState->currentFrameIsComplete();
  });
  m_endedByPlacement = std::any_of(m_path.begin(), m_path.end(), [](const Running& running) {
    const auto* frame = dynamic_cast<const RkStandardManipulationFrame*>(running.frame);
    return running.sequenceState && running.sequenceState->currentFrameIsComplete() && frame &&
           running.state &&
           dynamic_cast<const RkManipulationPlacementAchievedTransitionEvent*>(
               frame->transitionEventContainer(*running.state).element());
  });
  m_valueStepped = std::any_of(m_path.begin(), m_path.end(), [this](const Running& running) {
    const auto* values = dynamic_cast<const RkParametricManipulationFrameState*>(running.state);
    return values && std::any_of(m_valuesBefore.begin(), m_valuesBefore.end(), [values](const auto& before) {
             return before.first == values && before.second < values->parametricIndex();
           });
  });
}

void RkObservedTask::followWaypoint(RkReal time, RkManipulationStatus::Enum status,
                                    const RkManipulationActionState& actionState) {
  const auto& state = dynamic_cast<const RkWaypointSequenceState&>(actionState);
  const RkU32 index = state.currentWaypointIndex();
  m_waypointEnded = status != RkManipulationStatus::Failure && state.currentWaypointIsComplete();
  if (status == RkManipulationStatus::Failure || index >= m_waypointGoals->waypoints().size()) return;
  const RkU32 endEffectorIndex = m_waypointSequence->endEffectorIndex();
  if (!m_waypointFollowed || index != m_waypoint.index) {
    m_waypointFollowed = true;
    // It started in this update, so its copy starts alike: same inputs, same pose set.
    const RkManipulationWaypoint& waypoint = m_waypointGoals->waypoints()[index];
    RkWaypointSequenceState copyState(state);
    m_waypoint = Waypoint();
    m_waypoint.index = index;
    m_waypoint.label = waypoint.label().value();
    m_waypoint.roundsCorner = index + 1 < m_waypointGoals->waypoints().size() && !waypoint.stopPoint() &&
                              waypoint.zoneRadius() != 0.0;
    m_waypoint.zoneRadius = waypoint.zoneRadius();
    if (waypoint.init(time, m_params, *m_waypointGoals, copyState, index)) {
      m_waypoint.hasGoal = true;
      m_waypoint.goal =
          waypoint.desiredEndEffectorPlacement().offsetTransformations()[endEffectorIndex].translation();
    }
  }
  RkCoordinateSystemTransformation actual;
  if (m_waypoint.hasGoal && m_params.positionControlSystem &&
      m_params.positionControlSystem->actualPlacement(m_params.controllerIndex, endEffectorIndex, actual)) {
    const double distance = (actual.translation() - m_waypoint.goal).norm();
    // Once not a number, it stays so: it must not pass for close.
    if (!std::isnan(m_waypoint.closest) && !(m_waypoint.closest <= distance)) m_waypoint.closest = distance;
  }
}

std::pair<const RkManipulationSequence*, const RkManipulationActionState*> RkObservedTask::top() const {
  if (m_manager && m_managerState) {
    return {m_manager->currentSequence(*m_managerState),
            m_managerState->currentSequenceStateContainer().element()};
  }
  if (m_action && m_actionState) {
    return {dynamic_cast<const RkManipulationSequence*>(&m_action->action()), m_actionState};
  }
  return {nullptr, nullptr};
}

std::string RkObservedTask::text() const {
  std::string text;
  if (m_manager && m_managerState) text = m_manager->statusString(*m_managerState, kSeparator);
  if (m_action && m_actionState) text = m_action->statusString(*m_actionState, kSeparator);
  if (!text.empty()) return text;
  // A frame that could not start tells nothing: its tags tell where it stands.
  Path path;
  const auto running = top();
  walk(running.first, running.second, path);
  for (const Running& frame : path) {
    const std::string& tag = frame.frame->tag().value();
    if (!tag.empty()) text += (text.empty() ? "" : kSeparator) + tag;
  }
  return text;
}

std::string RkObservedTask::missingPose() const {
  Path path;
  const auto running = top();
  walk(running.first, running.second, path);
  if (path.empty()) return std::string();
  const std::string* name = missingPoseOf(path.back().frame, m_poses);
  return name ? *name : std::string();
}
