#pragma once
// The checks of meaning a task passes before it runs: names that resolve, frames that can end, durations
// and placements that are finite numbers, as many goals as the arm has end effectors, goals the arm can
// reach, poses the pose set holds and data-map values a parametric frame publishes. Each finding names the
// file and the line of the element concerned.
#include <map>
#include <set>
#include <string>
#include <vector>

#include "foundation/RkTypes.h"
#include "tools/rkmanip/RkDiagnostics.h"
#include "tools/rkmanip/RkSourceComparison.h"

class RkXmlObject;
class RkCoordinateSystemTransformation;
class RkEndEffectorPlacement;
class RkManipulationFrame;
class RkManipulationFrameTransitionEvent;
class RkManipulationSequenceManager;
class RkManipulationActionDirectory;
class RkManipulationSequence;
class RkStandardManipulationFrame;
class RkManipulationOffset;
class RkPoseSet;
class RkSimulatedTaskRunner;

// The pose set a task's reference poses are looked up in.
struct RkPoseSource {
  const RkPoseSet* poses = nullptr;  // null when none is given
  std::string path;                  // the file it was read from
  bool required = false;             // whether a task that names poses is to run with it
};

class RkTaskChecks {
 public:
  typedef RkSourceComparison::Place Place;

  // robot: the simulated arm the task is to run on, named robotName in messages; null skips the checks
  // that need it.
  // actionPath: in a library of actions, the one action to check; empty to check every action.
  RkTaskChecks(const std::string& file, const RkSimulatedTaskRunner* robot, const std::string& robotName,
               RkDiagnostics& out, const RkPoseSource& poses = RkPoseSource(),
               const std::string& actionPath = std::string());
  // Checks a manager, a library of actions, an action container, a sequence, a frame, a constant offset or a
  // pose set standing at place; any other document has no checks of meaning.
  void check(const RkXmlObject& object, const Place& place);
  // Whether the object holds frames, whose checks need the robot.
  static bool needsRobot(const RkXmlObject& object);

 private:
  // The values each data-map name takes in the parametric frames around a frame.
  typedef std::map<std::string, std::vector<RkReal>> Published;
  // One goal an offset can give, and what it depends on ("", " at the pose "pick"", " with y=0.1").
  struct Goal {
    std::string how;
    const RkCoordinateSystemTransformation* base;
    RkReal shift[3];
  };

  void checkManager(const RkManipulationSequenceManager& manager, const Place& place);
  void checkDirectory(const RkManipulationActionDirectory& directory, const Place& place,
                      const std::string& prefix);
  void checkSequence(const RkManipulationSequence& sequence, const Place& place, const std::string& what,
                     const std::string& owner, const Published& published);
  void checkFrame(const RkManipulationFrame& frame, const Place& place, const std::string& what,
                  const Published& published);
  void checkEvent(const RkManipulationFrameTransitionEvent* event, const Place& place,
                  const std::string& what, bool required);
  void checkOffsets(const RkStandardManipulationFrame& frame, const Place& place, const std::string& what,
                    const Published& published);
  // The goals offset can give, after reporting what keeps it from starting.
  std::vector<Goal> checkOffset(const RkManipulationOffset& offset, const Place& place,
                                const std::string& what, RkU32 set, RkU32 endEffector,
                                const Published& published);
  void checkPlacement(const RkEndEffectorPlacement& goal, const Place& place, const std::string& what,
                      RkU32 set, RkU32 endEffector);
  void checkTransformation(const RkCoordinateSystemTransformation& goal, const Place& place,
                           const std::string& what, RkU32 set, RkU32 endEffector);
  void checkPoses(const RkPoseSet& poses, const Place& place);
  // Whether the arm reaches the goal, asked once per set, end effector and goal.
  bool reachable(RkU32 set, RkU32 endEffector, const RkCoordinateSystemTransformation& goal);
  // Every data-map name a parametric frame of object publishes.
  void collectPublished(const RkXmlObject& object);
  void collectPublished(const RkManipulationFrame& frame);

  std::string m_file;
  const RkSimulatedTaskRunner* m_robot;
  std::string m_robotName;
  RkDiagnostics& m_out;
  RkPoseSource m_poses;
  std::string m_actionPath;
  std::set<std::string> m_publishedAnywhere;
  std::map<std::vector<double>, bool> m_reachable;
};
