#pragma once
// The task rkmanip runs, seen from inside: every cycle it is handed the pose set given with --poses, and
// the state of the run stays in view, so that the tool can name the running frame down to the frames
// running inside it, tell which updates ended a frame at any depth, and say why a frame could not start;
// of a waypoint sequence, which waypoint runs, how close the end effector came to it and when it ended.
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "foundation/RkVector.h"
#include "sequencing/RkManipulationAction.h"
#include "sequencing/RkManipulationSequenceManager.h"

class RkPoseSet;
class RkSimulatedTaskRunner;
class RkParametricManipulationFrameState;
class RkWaypointSequence;

class RkObservedTask {
 public:
  // Runs the manager, or else the action; poses may be null. Both must outlive this object.
  RkObservedTask(const RkManipulationSequenceManager* manager, const RkManipulationAction* action,
                 const RkPoseSet* poses);
  ~RkObservedTask();

  RkManipulationStatus::Enum run(RkSimulatedTaskRunner& runner);

  // The running frame's text, the parts of the frames running inside it joined by " / "; for a frame that
  // could not start, the tags of the frames down to it.
  std::string text() const;
  // After an update: whether a frame ended in it at any depth, and whether a parametric frame stepped to its
  // next value in it (the run of the previous value having ended).
  bool frameEnded() const { return m_frameEnded; }
  bool valueStepped() const { return m_valueStepped; }
  // After an update that ended a frame: whether its placement-achieved event ended it.
  bool endedByPlacement() const { return m_endedByPlacement; }
  // After a Failure: a pose that a reference-pose offset of the failing frame names and the pose set lacks
  // (any such name when there is no pose set); empty when there is none.
  std::string missingPose() const;

  // The waypoint of a waypoint sequence that runs, or ran last.
  struct Waypoint {
    RkU32 index = 0;  // from 0
    std::string label;
    bool hasGoal = false;  // false until it has started
    RkVector goal;         // its end effector's goal position, after the pose set
    // Whether it hands over on the curve round its corner, inside its zone, rather than at its goal.
    bool roundsCorner = false;
    double zoneRadius = 0.0;
    // The least distance of the end effector from the goal at any update since the waypoint started.
    double closest = std::numeric_limits<double>::infinity();
  };
  bool runsWaypoints() const { return m_waypointSequence != nullptr; }
  const Waypoint& waypoint() const { return m_waypoint; }
  // After an update: whether it ended the running waypoint.
  bool waypointEnded() const { return m_waypointEnded; }

  // One frame running, outermost first; a frame that could not start has no state.
  struct Running {
    const RkManipulationFrame* frame;
    const RkManipulationFrameState* state;
    const RkManipulationSequenceState* sequenceState;  // of the sequence it runs in; null for a target
  };
  typedef std::vector<Running> Path;

 private:
  class Manager;
  class Action;
  friend class Manager;
  friend class Action;

  // The cycle's inputs with the pose set; the data map persists from cycle to cycle.
  const RkManipulationUpdateParams& withPoses(const RkManipulationUpdateParams& params);
  void before(const RkManipulationSequence* sequence, const RkManipulationActionState* state);
  void after(const RkManipulationSequence* sequence, const RkManipulationActionState* state);
  // Follows the running waypoint after an update that returned status.
  void followWaypoint(RkReal time, RkManipulationStatus::Enum status, const RkManipulationActionState& state);
  // The top sequence and its state, as they stand now.
  std::pair<const RkManipulationSequence*, const RkManipulationActionState*> top() const;

  std::unique_ptr<Manager> m_manager;
  std::unique_ptr<Action> m_action;
  const RkPoseSet* m_poses;
  RkManipulationUpdateParams m_params;
  const RkManipulationSequenceManagerState* m_managerState = nullptr;
  const RkManipulationActionState* m_actionState = nullptr;
  std::vector<std::pair<const RkParametricManipulationFrameState*, RkU32>> m_valuesBefore;
  Path m_path;
  bool m_frameEnded = false;
  bool m_valueStepped = false;
  bool m_endedByPlacement = false;
  const RkWaypointSequence* m_waypointSequence = nullptr;
  // A copy whose waypoints are started apart from the run, to read the goal each starts with.
  std::unique_ptr<RkWaypointSequence> m_waypointGoals;
  Waypoint m_waypoint;
  bool m_waypointFollowed = false;  // whether m_waypoint is one that has started
  bool m_waypointEnded = false;
};
