#pragma once
// Runs a manipulation task on one simulated arm in simulated time, as fast as the machine allows. Each
// cycle it updates the task at the cycle's time, commands the arm with the placements the task gives and
// moves the arm by one cycle; one callback sees every cycle, another every transition.
//
//   RkSimulatedTaskRunner runner;
//   std::string error;
//   if (!runner.loadRobot("ur5e.urdf", "", error)) return 2;
//   runner.setTransitionCallback([](const RkSimulatedTaskRunner& r) { if (r.frameEnded()) ...; });
//   const RkManipulationStatus::Enum status = runner.run(manager);
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "sequencing/RkManipulationAction.h"
#include "sequencing/RkManipulationSequenceManager.h"
#include "simulation/RkSimulatedSystem.h"

class RkSimulatedTaskRunner {
 public:
  typedef std::function<void(const RkSimulatedTaskRunner&)> Callback;

  RkSimulatedTaskRunner();
  ~RkSimulatedTaskRunner();

  // Loads a URDF robot and its set-up (ROBOT.endeffectors.xml beside it, when there) as arm 0, its base at
  // the origin. The chain ends at tipLink; when that is empty, at the one set-up end-effector link whose
  // chain holds all the others, or else at the URDF's single deepest link. False with error set on failure.
  bool loadRobot(const std::string& urdfPath, const std::string& tipLink, std::string& error);
  // Valid once loadRobot succeeded.
  const RkKinematicChain& chain() const { return *m_chain; }
  const RkSimulatedEndEffectorSets& setUp() const { return m_setUp; }
  RkSimulatedSystem& system() { return *m_system; }
  const RkSimulatedSystem& system() const { return *m_system; }

  // Control cycles per simulated second (default 1000) and the simulated time after which a run stops
  // (default 600 s); false, nothing changed, unless positive and finite, or finite and not negative.
  bool setRate(double cyclesPerSecond);
  bool setMaxTime(double seconds);
  double rate() const { return m_rate; }
  void setCycleCallback(Callback callback) { m_onCycle = std::move(callback); }
  void setTransitionCallback(Callback callback) { m_onTransition = std::move(callback); }

  // Runs from time 0 until the task completes or fails, or the maximum time has passed: returns Complete,
  // Failure, or InProgress when stopped at the maximum time.
  RkManipulationStatus::Enum run(const RkManipulationSequenceManager& manager);
  RkManipulationStatus::Enum run(const RkManipulationAction& action);

  // In a callback, or after a run: the time of the last update, the cycles stepped and its status.
  double time() const { return m_time; }
  long cycles() const { return m_cycles; }
  RkManipulationStatus::Enum status() const { return m_status; }
  // What the task commands in the last update, and where the arm's driven end effectors stand: in a
  // transition callback before this cycle's step (where the ending frame left them), else after it.
  const RkManipulatorEndEffectorPlacement& commanded() const { return *m_commanded; }
  const RkManipulatorEndEffectorPlacement& actual() const;
  // The running sequence's name in the manager's order (empty for an action), the running frame's index
  // and its status text (a standard frame's tag).
  std::string sequenceName() const;
  RkU32 frameIndex() const;
  std::string frameText() const;
  // In a transition callback: whether the running frame (of a waypoint sequence, the running waypoint)
  // ended in this update, rather than started.
  bool frameEnded() const { return m_frameEnded; }
  // Why the last run stopped with Failure when the task itself did not fail; empty otherwise.
  const std::string& failure() const { return m_failure; }

  // The largest position distance (length unit) and angle (rad) between commanded() and actual(), over
  // the end effectors the commanded placement names, a point end effector's angle left out: both 0 when it
  // names none, NaN when a commanded value is not a number.
  void placementError(double& position, double& angle) const;

 private:
  class Task;
  class ManagerTask;
  class ActionTask;
  RkManipulationStatus::Enum runTask(std::unique_ptr<Task> task);

  std::unique_ptr<RkKinematicChain> m_chain;
  RkSimulatedEndEffectorSets m_setUp;
  std::unique_ptr<RkSimulatedSystem> m_system;
  std::vector<char> m_pointEndEffector;  // per end effector of the active set
  RkManipulationUpdateParams m_params;
  double m_rate = 1000.0;
  double m_maxTime = 600.0;
  Callback m_onCycle, m_onTransition;
  std::unique_ptr<Task> m_task;
  double m_time = 0.0;
  long m_cycles = 0;
  RkManipulationStatus::Enum m_status = RkManipulationStatus::InProgress;
  const RkManipulatorEndEffectorPlacement* m_commanded;
  bool m_frameEnded = false;
  std::string m_failure;
};
