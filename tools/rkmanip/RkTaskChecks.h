#pragma once
// The checks of meaning a task passes before it runs: names that resolve, frames that can end, durations
// and placements that are finite numbers, as many goals as the arm has end effectors, goals the arm can
// reach. Each finding names the file and the line of the element concerned.
#include <map>
#include <string>
#include <vector>

#include "foundation/RkTypes.h"
#include "tools/rkmanip/RkDiagnostics.h"
#include "tools/rkmanip/RkSourceComparison.h"

class RkXmlObject;
class RkCoordinateSystemTransformation;
class RkEndEffectorPlacement;
class RkManipulationSequenceManager;
class RkManipulationSequence;
class RkStandardManipulationFrame;
class RkManipulationOffset;
class RkSimulatedTaskRunner;

class RkTaskChecks {
 public:
  typedef RkSourceComparison::Place Place;

  // robot: the simulated arm the task is to run on, named robotName in messages; null skips the checks
  // that need it.
  RkTaskChecks(const std::string& file, const RkSimulatedTaskRunner* robot, const std::string& robotName,
               RkDiagnostics& out);
  // Checks a manager, an action container, a sequence, a standard frame or a constant offset standing at
  // place; any other document has no checks of meaning.
  void check(const RkXmlObject& object, const Place& place);
  // Whether the object holds frames, whose checks need the robot.
  static bool needsRobot(const RkXmlObject& object);

 private:
  void checkManager(const RkManipulationSequenceManager& manager, const Place& place);
  void checkSequence(const RkManipulationSequence& sequence, const Place& place, const std::string& name);
  void checkFrame(const RkStandardManipulationFrame& frame, const Place& place, const std::string& what);
  void checkEvent(const RkStandardManipulationFrame& frame, const Place& place, const std::string& what);
  void checkOffsets(const RkStandardManipulationFrame& frame, const Place& place, const std::string& what);
  void checkPlacement(const RkEndEffectorPlacement& goal, const Place& place, const std::string& what,
                      RkU32 set, RkU32 endEffector);
  // Whether the arm reaches the goal, asked once per set, end effector and goal.
  bool reachable(RkU32 set, RkU32 endEffector, const RkCoordinateSystemTransformation& goal);

  std::string m_file;
  const RkSimulatedTaskRunner* m_robot;
  std::string m_robotName;
  RkDiagnostics& m_out;
  std::map<std::vector<double>, bool> m_reachable;
};
