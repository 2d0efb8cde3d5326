#pragma once
// A simulated position controller for one arm. Each end effector is a point or a frame fixed to a link of
// the arm's chain; the client commands a placement for each, and every step() moves the joints one damped
// least-squares step towards all active goals at once, within Cartesian speed caps and joint velocity and
// position limits. Placements are in the chain's base frame.
//
// That local approach can stall short of a far goal, at a singularity or against a joint limit. The first
// time it stalls after a goal change, the controller searches for joint positions within the limits that
// achieve every driven goal (damped Newton iterations from the current, the last set and then seeded random
// joint positions) and, if it finds some, moves there in joint space, under the same speed limits, before
// resuming the Cartesian approach. That one step takes up to about a millisecond for a six-joint arm.
//
// step() does not allocate once the end effectors are added.
#include <Eigen/Cholesky>
#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "simulation/RkKinematicChain.h"

class RkArmController {
 public:
  enum class EndEffectorKind {
    Point,  // position only
    Frame   // position and orientation
  };

  struct Settings {
    // Fraction of the placement error the controller asks to remove per second (capped at once per cycle).
    double gain = 50.0;
    // Damping of the least-squares step, in metres; trades accuracy near singularities for bounded speeds.
    double damping = 0.02;
    // Length (m) that one radian of orientation error weighs against position error in the stacked task.
    double orientationWeight = 0.2;
    // Cartesian speed caps of each commanded end effector (m/s, rad/s).
    double maxLinearSpeed = 1.0;
    double maxAngularSpeed = 2.0;
    // A placement is achieved when within both tolerances (m, rad).
    double positionTolerance = 1e-3;
    double orientationTolerance = 1e-3;
    // Convergence stalls when, within stallWindow (s), the error (position + orientationWeight * angle) has
    // fallen by less than minProgressFraction of what the controller asked for (the exponential approach at
    // `gain`, or the capped speeds when slower), and, outside the tolerances, by less than minProgress (m).
    // It times out `timeout` seconds after the goal last changed or the end effector was last activated.
    double stallWindow = 0.1;
    double minProgress = 1e-4;
    double minProgressFraction = 0.3;
    double timeout = 10.0;
    // An error (m, as above) this small leaves nothing to converge: neither stall nor time-out applies.
    double settledError = 1e-6;
    // Cycles a command takes to act, counted in lookAheadTime().
    int lookAheadCycles = 1;
    // Starting joint positions the recovery search tries when the approach stalls; 0 turns recovery off.
    int recoverySeeds = 48;
  };

  // What the controller knows about one end effector after the last step (or change of state).
  struct EndEffectorStatus {
    std::string name;
    int link = -1;  // index in the chain's linkNames()
    EndEffectorKind kind = EndEffectorKind::Frame;
    Eigen::Isometry3d offset = Eigen::Isometry3d::Identity();  // the end effector in its link's frame
    bool active = true;
    bool hasGoal = false;
    Eigen::Isometry3d goal = Eigen::Isometry3d::Identity();
    Eigen::Isometry3d placement = Eigen::Isometry3d::Identity();
    Eigen::Vector3d linearVelocity = Eigen::Vector3d::Zero();
    Eigen::Vector3d angularVelocity = Eigen::Vector3d::Zero();
    double positionError = 0.0;      // m, to the goal
    double orientationError = 0.0;   // rad, to the goal; 0 for a point
    bool placementAchieved = false;  // both errors within tolerance now
    bool goalReached = false;        // achieved at least once since the goal last changed
    // Active, and without a goal yet, settled at it, or still making progress and not timed out.
    bool mayKeepConverging = false;
  };

  // The controller keeps its own copy of the chain; the joints start at zero, clamped into their limits.
  explicit RkArmController(const RkKinematicChain& chain);

  const RkKinematicChain& chain() const { return m_chain; }
  const Settings& settings() const { return m_settings; }
  // False (nothing changed) when a value is out of range: gains, speeds, tolerances and times must be
  // positive, damping and minProgress non-negative, minProgressFraction in [0, 1), lookAheadCycles and
  // recoverySeeds at least 0.
  bool setSettings(const Settings& settings, std::string& error);

  // Adds an end effector on link `link` of the chain, at `offset` in that link's frame; active, no goal.
  // Returns its index, or -1 with error set when the link is not on the chain or the name is taken.
  int addEndEffector(const std::string& name, const std::string& link, EndEffectorKind kind,
                     std::string& error, const Eigen::Isometry3d& offset = Eigen::Isometry3d::Identity());
  int endEffectorCount() const { return static_cast<int>(m_effectors.size()); }
  int endEffectorIndex(const std::string& name) const;
  // Null when the index is out of range; valid until the next addEndEffector.
  const EndEffectorStatus* status(int endEffector) const;

  // Commands a placement (for a point, only its translation counts). A goal different from the previous one
  // restarts the convergence watch and clears goalReached.
  bool setGoal(int endEffector, const Eigen::Isometry3d& goal, std::string& error);
  // Inactive end effectors are reported but not driven.
  bool setActive(int endEffector, bool active, std::string& error);
  // Starts an end effector's convergence watch afresh, as a new goal does.
  bool restartConvergenceWatch(int endEffector, std::string& error);

  // Sets the joint state: positions within the limits, velocities within theirs. The velocities are reported
  // (and give the end effectors' velocities) until the next step replaces them; setJointPositions zeroes
  // them.
  bool setJointState(const Eigen::Ref<const Eigen::VectorXd>& q, const Eigen::Ref<const Eigen::VectorXd>& qd,
                     std::string& error);
  bool setJointPositions(const Eigen::Ref<const Eigen::VectorXd>& q, std::string& error);
  const Eigen::VectorXd& jointPositions() const { return m_q; }
  const Eigen::VectorXd& jointVelocities() const { return m_qd; }

  // Moves the arm by one cycle of dt seconds; false when dt is not a positive finite number.
  bool step(double dt, std::string& error);
  // Whether joint positions within the limits put end effector `endEffector` at `goal` (a point: its
  // position), searched as the stall recovery searches, on a copy of this controller, which stays as it is.
  bool canReach(int endEffector, const Eigen::Isometry3d& goal) const;

  // Time simulated since construction (s).
  double time() const { return m_time; }
  // How far ahead of the current time a goal generator should aim so that the end effector keeps up with a
  // goal that moves on steadily: lookAheadCycles cycles for a command to act, plus the time by which an
  // approach that removes `gain` of the error per second (at most all of it in one cycle) trails such a goal.
  // The last cycle time is 1 ms before the first step.
  double lookAheadTime() const {
    return m_settings.lookAheadCycles * m_lastDt + 1.0 / std::min(m_settings.gain, 1.0 / m_lastDt);
  }

 private:
  struct Effector {
    EndEffectorStatus status;
    Eigen::MatrixXd jacobian;  // 6 x n, of the end effector itself (offset included)
    double bestError = 0.0;    // convergence watch: the lowest error seen...
    double bestTime = 0.0;     // ...and when it last improved enough (see Settings)
    double goalTime = 0.0;
    bool stalled = false;  // since the goal last changed
  };

  bool driven(const Effector& e) const { return e.status.active && e.status.hasGoal; }
  // Placement and Jacobian of an end effector at joint positions q (uses m_linkJacobian).
  void effectorKinematics(const Effector& e, const Eigen::VectorXd& q, Eigen::Isometry3d& placement,
                          Eigen::MatrixXd& jacobian);
  void updateKinematics(Effector& e);
  // Appends the weighted task rows of e (Jacobian and rate * error, capped when `capped`) from row `row`;
  // returns the next free row.
  int stackTask(const Effector& e, const Eigen::Isometry3d& placement, const Eigen::MatrixXd& jacobian,
                double rate, bool capped, int row);
  // Damped least-squares joint velocity m_dq for the first `rows` stacked rows at joint positions q; a joint
  // resting on a limit and pushed outwards is taken out and the rest solved again.
  void solveStep(const Eigen::VectorXd& q, int rows, double damping2);
  // Scales m_dq as a whole to the joint velocity limits and to the Cartesian speed caps of the driven end
  // effectors.
  void limitSpeeds();
  void trackError(Effector& e);
  void restartWatch(Effector& e);
  void resetRecovery();
  // When the Cartesian approach has stalled short of the goals, looks for joint positions within the limits
  // that achieve every driven goal and, if found, moves there in joint space.
  void recoverIfStalled();
  // Sets m_target to joint positions that achieve every driven goal, the quickest to reach of those found,
  // or the first found when firstFound; false when none is found.
  bool searchConfiguration(bool firstFound = false);

  RkKinematicChain m_chain;
  Settings m_settings;
  std::vector<Effector> m_effectors;
  int m_n;
  Eigen::VectorXd m_q, m_qd, m_lower, m_upper, m_maxVelocity;
  Eigen::VectorXd m_posture;  // the joint positions last set, the second seed of the recovery search
  double m_time = 0.0;
  double m_lastDt = 0.001;

  // Recovery: one search per goal change; while approaching, the arm moves straight to m_target in joint
  // space.
  bool m_searched = false;
  bool m_approaching = false;
  Eigen::VectorXd m_target, m_trial;
  std::mt19937 m_random;

  // Scratch, sized when end effectors are added so that step() does not allocate.
  Eigen::MatrixXd m_linkJacobian, m_trialJacobian;  // 6 x n
  Eigen::MatrixXd m_taskJacobian;                   // rows of every end effector x n
  Eigen::VectorXd m_taskVelocity;
  Eigen::MatrixXd m_normal, m_system;  // n x n
  Eigen::VectorXd m_rhs, m_rhsLocked, m_dq, m_qNext;
  Eigen::LDLT<Eigen::MatrixXd> m_ldlt;
  std::vector<char> m_locked;
};
