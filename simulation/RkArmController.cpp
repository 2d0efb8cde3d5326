#include "simulation/RkArmController.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
// A joint this close to a limit counts as resting on it.
constexpr double kAtLimit = 1e-9;

// Rotation vector (axis times angle, in the base frame) that turns `current` into `goal`.
Eigen::Vector3d rotationError(const Eigen::Matrix3d& goal, const Eigen::Matrix3d& current) {
  Eigen::Quaterniond q(goal * current.transpose());
  if (q.w() < 0.0) q.coeffs() = -q.coeffs();
  const double s = q.vec().norm();
  if (s < 1e-12) return 2.0 * q.vec();
  return (2.0 * std::atan2(s, q.w()) / s) * q.vec();
}

bool isRigid(const Eigen::Isometry3d& t) {
  if (!t.matrix().allFinite()) return false;
  const Eigen::Matrix3d r = t.linear();
  return (r.transpose() * r - Eigen::Matrix3d::Identity()).norm() < 1e-6 && r.determinant() > 0.0;
}

int taskRows(RkArmController::EndEffectorKind kind) {
  return kind == RkArmController::EndEffectorKind::Frame ? 6 : 3;
}

}  // namespace

RkArmController::RkArmController(const RkKinematicChain& chain)
    : m_chain(chain),
      m_n(chain.jointCount()),
      m_lower(chain.lowerLimits()),
      m_upper(chain.upperLimits()),
      m_maxVelocity(chain.velocityLimits()),
      m_target(m_n),
      m_trial(m_n),
      m_random(20240611),
      m_linkJacobian(6, m_n),
      m_trialJacobian(6, m_n),
      m_normal(m_n, m_n),
      m_system(m_n, m_n),
      m_rhs(m_n),
      m_rhsLocked(m_n),
      m_dq(m_n),
      m_qNext(m_n),
      m_ldlt(m_n),
      m_locked(m_n, 0) {
  m_q = Eigen::VectorXd::Zero(m_n).cwiseMax(m_lower).cwiseMin(m_upper);
  m_qd = Eigen::VectorXd::Zero(m_n);
  m_posture = m_q;
}

bool RkArmController::setSettings(const Settings& s, std::string& error) {
  const auto positive = [](double v) { return v > 0.0; };  // false for NaN; +inf allowed
  const auto finitePositive = [](double v) { return v > 0.0 && std::isfinite(v); };
  const char* bad = nullptr;
  if (!finitePositive(s.gain))
    bad = "gain";
  else if (!(s.damping >= 0.0) || !std::isfinite(s.damping))
    bad = "damping";
  else if (!finitePositive(s.orientationWeight))
    bad = "orientationWeight";
  else if (!positive(s.maxLinearSpeed))
    bad = "maxLinearSpeed";
  else if (!positive(s.maxAngularSpeed))
    bad = "maxAngularSpeed";
  else if (!finitePositive(s.positionTolerance))
    bad = "positionTolerance";
  else if (!finitePositive(s.orientationTolerance))
    bad = "orientationTolerance";
  else if (!finitePositive(s.stallWindow))
    bad = "stallWindow";
  else if (!(s.minProgress >= 0.0) || !std::isfinite(s.minProgress))
    bad = "minProgress";
  else if (!(s.minProgressFraction >= 0.0 && s.minProgressFraction < 1.0))
    bad = "minProgressFraction";
  else if (!positive(s.timeout))
    bad = "timeout";
  else if (!(s.settledError >= 0.0) || !std::isfinite(s.settledError))
    bad = "settledError";
  else if (s.lookAheadCycles < 0)
    bad = "lookAheadCycles";
  else if (s.recoverySeeds < 0)
    bad = "recoverySeeds";
  if (bad) {
    error = std::string("RkArmController: setting ") + bad + " is out of range";
    return false;
  }
  m_settings = s;
  return true;
}

int RkArmController::addEndEffector(const std::string& name, const std::string& link, EndEffectorKind kind,
                                    std::string& error, const Eigen::Isometry3d& offset) {
  const int linkIndex = m_chain.linkIndex(link);
  if (linkIndex < 0) {
    error = "RkArmController: no link '" + link + "' on the chain from '" + m_chain.baseLink() + "' to '" +
            m_chain.tipLink() + "'";
    return -1;
  }
  if (name.empty() || endEffectorIndex(name) >= 0) {
    error = "RkArmController: end effector name '" + name + "' is empty or already used";
    return -1;
  }
  if (!isRigid(offset)) {
    error = "RkArmController: the offset of end effector '" + name + "' is not a rigid motion";
    return -1;
  }
  Effector effector;
  effector.status.name = name;
  effector.status.link = linkIndex;
  effector.status.kind = kind;
  effector.status.offset = offset;
  effector.jacobian.resize(6, m_n);
  updateKinematics(effector);
  m_effectors.push_back(std::move(effector));

  int rows = 0;
  for (const Effector& e : m_effectors) rows += taskRows(e.status.kind);
  m_taskJacobian.resize(rows, m_n);
  m_taskVelocity.resize(rows);
  return static_cast<int>(m_effectors.size()) - 1;
}

int RkArmController::endEffectorIndex(const std::string& name) const {
  for (size_t i = 0; i < m_effectors.size(); ++i)
    if (m_effectors[i].status.name == name) return static_cast<int>(i);
  return -1;
}

const RkArmController::EndEffectorStatus* RkArmController::status(int endEffector) const {
  return endEffector >= 0 && endEffector < endEffectorCount() ? &m_effectors[endEffector].status : nullptr;
}

bool RkArmController::setGoal(int endEffector, const Eigen::Isometry3d& goal, std::string& error) {
  if (endEffector < 0 || endEffector >= endEffectorCount()) {
    error = "RkArmController: no end effector " + std::to_string(endEffector);
    return false;
  }
  if (!isRigid(goal)) {
    error = "RkArmController: the goal of end effector '" + m_effectors[endEffector].status.name +
            "' is not a rigid placement";
    return false;
  }
  Effector& e = m_effectors[endEffector];
  const bool changed = !e.status.hasGoal || goal.matrix() != e.status.goal.matrix();
  e.status.goal = goal;
  e.status.hasGoal = true;
  if (changed) {
    e.status.goalReached = false;
    restartWatch(e);
    resetRecovery();
  }
  trackError(e);
  return true;
}

bool RkArmController::setActive(int endEffector, bool active, std::string& error) {
  if (endEffector < 0 || endEffector >= endEffectorCount()) {
    error = "RkArmController: no end effector " + std::to_string(endEffector);
    return false;
  }
  Effector& e = m_effectors[endEffector];
  if (active != e.status.active) {
    if (active) restartWatch(e);
    resetRecovery();
  }
  e.status.active = active;
  trackError(e);
  return true;
}

bool RkArmController::restartConvergenceWatch(int endEffector, std::string& error) {
  if (endEffector < 0 || endEffector >= endEffectorCount()) {
    error = "RkArmController: no end effector " + std::to_string(endEffector);
    return false;
  }
  restartWatch(m_effectors[endEffector]);
  trackError(m_effectors[endEffector]);
  return true;
}

bool RkArmController::setJointState(const Eigen::Ref<const Eigen::VectorXd>& q,
                                    const Eigen::Ref<const Eigen::VectorXd>& qd, std::string& error) {
  if (q.size() != m_n || qd.size() != m_n) {
    error = "RkArmController: the joint state needs " + std::to_string(m_n) + " values";
    return false;
  }
  for (int i = 0; i < m_n; ++i) {
    if (!(q(i) >= m_lower(i) - kAtLimit && q(i) <= m_upper(i) + kAtLimit)) {
      error = "RkArmController: joint '" + m_chain.jointNames()[i] + "' position " + std::to_string(q(i)) +
              " is outside its limits";
      return false;
    }
    if (!(std::abs(qd(i)) <= m_maxVelocity(i))) {
      error = "RkArmController: joint '" + m_chain.jointNames()[i] + "' velocity is outside its limit";
      return false;
    }
  }
  m_q = q.cwiseMax(m_lower).cwiseMin(m_upper);
  m_qd = qd;
  m_posture = m_q;
  resetRecovery();
  for (Effector& e : m_effectors) {
    updateKinematics(e);
    restartWatch(e);
    trackError(e);
  }
  return true;
}

bool RkArmController::setJointPositions(const Eigen::Ref<const Eigen::VectorXd>& q, std::string& error) {
  return setJointState(q, Eigen::VectorXd::Zero(m_n), error);
}

void RkArmController::effectorKinematics(const Effector& e, const Eigen::VectorXd& q,
                                         Eigen::Isometry3d& placement, Eigen::MatrixXd& jacobian) {
  Eigen::Isometry3d linkPlacement;
  m_chain.linkPlacementAndJacobian(q, e.status.link, linkPlacement, m_linkJacobian);
  placement = linkPlacement * e.status.offset;
  jacobian = m_linkJacobian;
  // Moving the reference point from the link origin to the end effector: v_p = v_o + w x r.
  const Eigen::Vector3d r = linkPlacement.linear() * e.status.offset.translation();
  if (!r.isZero(0.0)) {
    for (int j = 0; j < m_n; ++j) {
      const Eigen::Vector3d w = jacobian.block<3, 1>(3, j);
      jacobian.block<3, 1>(0, j) += w.cross(r);
    }
  }
}

void RkArmController::updateKinematics(Effector& e) {
  effectorKinematics(e, m_q, e.status.placement, e.jacobian);
  e.status.linearVelocity.noalias() = e.jacobian.topRows<3>() * m_qd;
  e.status.angularVelocity.noalias() = e.jacobian.bottomRows<3>() * m_qd;
}

void RkArmController::restartWatch(Effector& e) {
  e.bestError = kInfinity;
  e.bestTime = m_time;
  e.goalTime = m_time;
  e.stalled = false;
}

void RkArmController::resetRecovery() {
  m_searched = false;
  m_approaching = false;
}

void RkArmController::trackError(Effector& e) {
  EndEffectorStatus& s = e.status;
  if (!s.hasGoal) {
    s.positionError = s.orientationError = 0.0;
    s.placementAchieved = false;
    // Nothing commanded, so nothing has failed: a client may wait for the first goal.
    s.mayKeepConverging = s.active;
    return;
  }
  s.positionError = (s.goal.translation() - s.placement.translation()).norm();
  s.orientationError =
      s.kind == EndEffectorKind::Frame ? rotationError(s.goal.linear(), s.placement.linear()).norm() : 0.0;
  s.placementAchieved = s.positionError <= m_settings.positionTolerance &&
                        s.orientationError <= m_settings.orientationTolerance;
  s.goalReached = s.goalReached || s.placementAchieved;
  const double combined = s.positionError + m_settings.orientationWeight * s.orientationError;
  // Progress is judged against what the controller asks for over a window: the exponential approach, or the
  // capped speed when that is less. Within the tolerances the error must keep shrinking at that rate alone,
  // however small it is.
  const double rate = std::min(m_settings.gain, 1.0 / m_lastDt);
  const double speed =
      m_settings.maxLinearSpeed +
      (s.kind == EndEffectorKind::Frame ? m_settings.orientationWeight * m_settings.maxAngularSpeed : 0.0);
  const double expected = std::min(e.bestError * (1.0 - std::exp(-rate * m_settings.stallWindow)),
                                   speed * m_settings.stallWindow);
  const double needed = s.placementAchieved
                            ? m_settings.minProgressFraction * expected
                            : std::max(m_settings.minProgress, m_settings.minProgressFraction * expected);
  if (m_approaching && driven(e)) {
    // The joint-space approach always progresses; the Cartesian watch starts afresh when it ends.
    e.bestError = kInfinity;
    e.bestTime = m_time;
  } else if (std::isinf(e.bestError) || combined < e.bestError - needed) {
    e.bestError = combined;
    e.bestTime = m_time;
  }
  // A stall holds until the goal changes, so that a client deciding to give up does not see it flicker.
  if (m_time - e.bestTime > m_settings.stallWindow) e.stalled = true;
  s.mayKeepConverging = s.active && (combined <= m_settings.settledError ||
                                     (m_time - e.goalTime <= m_settings.timeout && !e.stalled));
}

int RkArmController::stackTask(const Effector& e, const Eigen::Isometry3d& placement,
                               const Eigen::MatrixXd& jacobian, double rate, bool capped, int row) {
  const EndEffectorStatus& s = e.status;
  const bool frame = s.kind == EndEffectorKind::Frame;
  const Eigen::Vector3d linear = rate * (s.goal.translation() - placement.translation());
  const Eigen::Vector3d angular =
      frame ? Eigen::Vector3d(rate * rotationError(s.goal.linear(), placement.linear()))
            : Eigen::Vector3d::Zero();
  // One scale for both parts keeps the end effector on a straight, synchronised path to its goal.
  double scale = 1.0;
  if (capped && linear.norm() > m_settings.maxLinearSpeed) scale = m_settings.maxLinearSpeed / linear.norm();
  if (capped && scale * angular.norm() > m_settings.maxAngularSpeed)
    scale = m_settings.maxAngularSpeed / angular.norm();
  m_taskJacobian.middleRows<3>(row) = jacobian.topRows<3>();
  m_taskVelocity.segment<3>(row) = scale * linear;
  row += 3;
  if (frame) {
    const double weight = m_settings.orientationWeight;
    m_taskJacobian.middleRows<3>(row) = weight * jacobian.bottomRows<3>();
    m_taskVelocity.segment<3>(row) = (weight * scale) * angular;
    row += 3;
  }
  return row;
}

void RkArmController::solveStep(const Eigen::VectorXd& q, int rows, double damping2) {
  const auto J = m_taskJacobian.topRows(rows);
  m_normal.noalias() = J.transpose().lazyProduct(J);
  m_normal.diagonal().array() += damping2;
  m_rhs.noalias() = J.transpose().lazyProduct(m_taskVelocity.head(rows));
  std::fill(m_locked.begin(), m_locked.end(), 0);
  for (int pass = 0; pass <= m_n; ++pass) {
    m_system = m_normal;
    m_rhsLocked = m_rhs;
    for (int i = 0; i < m_n; ++i) {
      if (!m_locked[i]) continue;
      m_system.row(i).setZero();
      m_system.col(i).setZero();
      m_system(i, i) = 1.0;
      m_rhsLocked(i) = 0.0;
    }
    m_ldlt.compute(m_system);
    m_dq = m_ldlt.solve(m_rhsLocked);
    bool lockedMore = false;
    for (int i = 0; i < m_n; ++i) {
      if (m_locked[i]) continue;
      if ((q(i) >= m_upper(i) - kAtLimit && m_dq(i) > 0.0) ||
          (q(i) <= m_lower(i) + kAtLimit && m_dq(i) < 0.0)) {
        m_locked[i] = 1;
        lockedMore = true;
      }
    }
    if (!lockedMore) break;
  }
  if (!m_dq.allFinite()) m_dq.setZero();
}

void RkArmController::limitSpeeds() {
  double scale = 1.0;
  for (int i = 0; i < m_n; ++i)
    if (std::abs(m_dq(i)) * scale > m_maxVelocity(i)) scale = m_maxVelocity(i) / std::abs(m_dq(i));
  for (const Effector& e : m_effectors) {
    if (!driven(e)) continue;
    const double linear = (e.jacobian.topRows<3>() * m_dq).norm();
    if (linear * scale > m_settings.maxLinearSpeed) scale = m_settings.maxLinearSpeed / linear;
    if (e.status.kind != EndEffectorKind::Frame) continue;
    const double angular = (e.jacobian.bottomRows<3>() * m_dq).norm();
    if (angular * scale > m_settings.maxAngularSpeed) scale = m_settings.maxAngularSpeed / angular;
  }
  m_dq *= std::isfinite(scale) ? scale : 0.0;
}

bool RkArmController::searchConfiguration(bool firstFound) {
  constexpr int kIterations = 60;
  constexpr double kMaxJointStep = 0.5;  // rad (or m) per iteration, to keep each linearisation honest
  const std::vector<RkKinematicChain::JointType>& types = m_chain.jointTypes();
  double bestDuration = kInfinity;
  for (int seed = 0; seed < m_settings.recoverySeeds; ++seed) {
    if (seed == 0) {
      m_trial = m_q;
    } else if (seed == 1) {
      m_trial = m_posture;
    } else {
      for (int i = 0; i < m_n; ++i) {
        const double lo = std::isinf(m_lower(i)) ? -M_PI : m_lower(i);
        const double hi = std::isinf(m_upper(i)) ? M_PI : m_upper(i);
        m_trial(i) = lo + (hi - lo) * std::uniform_real_distribution<double>(0.0, 1.0)(m_random);
      }
    }
    double previous = kInfinity;
    int idle = 0;  // iterations in a row that gained less than 2 %: a seed that settles short is dropped
    for (int iteration = 0; iteration < kIterations && idle < 5; ++iteration) {
      int rows = 0;
      bool achieved = true;
      for (const Effector& e : m_effectors) {
        if (!driven(e)) continue;
        Eigen::Isometry3d placement;
        effectorKinematics(e, m_trial, placement, m_trialJacobian);
        // A tenth of the tolerances, so that the Cartesian approach finishes at once from there.
        const double position = (e.status.goal.translation() - placement.translation()).norm();
        const double angle = e.status.kind == EndEffectorKind::Frame
                                 ? rotationError(e.status.goal.linear(), placement.linear()).norm()
                                 : 0.0;
        achieved = achieved && position <= 0.1 * m_settings.positionTolerance &&
                   angle <= 0.1 * m_settings.orientationTolerance;
        rows = stackTask(e, placement, m_trialJacobian, 1.0, false, rows);
      }
      const double residual = m_taskVelocity.head(rows).squaredNorm();
      idle = residual > 0.98 * previous ? idle + 1 : 0;
      previous = residual;
      if (achieved) {
        // A revolute joint reaches the same placement a turn away: take the turn nearest the current
        // position.
        double duration = 0.0;
        for (int i = 0; i < m_n; ++i) {
          if (types[i] != RkKinematicChain::JointType::Prismatic) {
            const double turns = std::round((m_q(i) - m_trial(i)) / (2 * M_PI));
            const double shifted = m_trial(i) + turns * 2 * M_PI;
            if (shifted >= m_lower(i) && shifted <= m_upper(i)) m_trial(i) = shifted;
          }
          duration = std::max(duration, std::abs(m_trial(i) - m_q(i)) / m_maxVelocity(i));
        }
        // The Cartesian caps usually bound the move more than the joints do; the Jacobian here gives an
        // estimate.
        m_dq = m_trial - m_q;
        for (const Effector& e : m_effectors) {
          if (!driven(e)) continue;
          duration = std::max(duration, (e.jacobian.topRows<3>() * m_dq).norm() / m_settings.maxLinearSpeed);
          if (e.status.kind == EndEffectorKind::Frame)
            duration =
                std::max(duration, (e.jacobian.bottomRows<3>() * m_dq).norm() / m_settings.maxAngularSpeed);
        }
        if (duration < bestDuration) {
          bestDuration = duration;
          m_target = m_trial;
        }
        if (firstFound) return true;
        break;
      }
      // Levenberg-Marquardt damping, vanishing with the error, converges fast near singular solutions too.
      solveStep(m_trial, rows, residual + 1e-6);
      const double largest = m_dq.cwiseAbs().maxCoeff();
      if (largest > kMaxJointStep) m_dq *= kMaxJointStep / largest;
      m_trial = (m_trial + m_dq).cwiseMax(m_lower).cwiseMin(m_upper);
    }
  }
  return bestDuration < kInfinity;
}

bool RkArmController::canReach(int endEffector, const Eigen::Isometry3d& goal) const {
  if (endEffector < 0 || endEffector >= endEffectorCount() || !isRigid(goal)) return false;
  RkArmController probe(*this);
  probe.m_settings.recoverySeeds = std::max(probe.m_settings.recoverySeeds, Settings().recoverySeeds);
  for (Effector& e : probe.m_effectors) e.status.active = false;
  Effector& target = probe.m_effectors[endEffector];
  target.status.active = true;
  target.status.hasGoal = true;
  target.status.goal = goal;
  return probe.searchConfiguration(true);
}

void RkArmController::recoverIfStalled() {
  if (m_searched || m_approaching || m_settings.recoverySeeds == 0) return;
  bool stalled = false;
  for (const Effector& e : m_effectors) {
    if (driven(e) && !e.status.placementAchieved && e.stalled && m_time - e.goalTime <= m_settings.timeout)
      stalled = true;
  }
  if (!stalled) return;
  m_searched = true;
  if (!searchConfiguration()) return;
  m_approaching = true;
  for (Effector& e : m_effectors) {
    if (!driven(e)) continue;
    e.bestError = kInfinity;
    e.bestTime = m_time;
    e.stalled = false;
  }
}

bool RkArmController::step(double dt, std::string& error) {
  if (!(dt > 0.0) || !std::isfinite(dt)) {
    error = "RkArmController: the cycle time must be a positive finite number of seconds";
    return false;
  }
  m_lastDt = dt;
  const double rate = std::min(m_settings.gain, 1.0 / dt);

  if (m_approaching) {
    m_dq = rate * (m_target - m_q);
    limitSpeeds();
  } else {
    int rows = 0;
    for (const Effector& e : m_effectors)
      if (driven(e)) rows = stackTask(e, e.status.placement, e.jacobian, rate, true, rows);
    if (rows > 0) {
      solveStep(m_q, rows, m_settings.damping * m_settings.damping);
      limitSpeeds();
    } else {
      m_dq.setZero();
    }
  }

  // A joint that would pass a limit within the cycle shortens the whole step, so that the motion keeps its
  // direction (clamping that joint alone could undo a cancellation between joints and overshoot the caps).
  double reach = 1.0;
  for (int i = 0; i < m_n; ++i) {
    const double move = dt * m_dq(i);
    if (m_q(i) + move > m_upper(i) && move > 0.0) reach = std::min(reach, (m_upper(i) - m_q(i)) / move);
    if (m_q(i) + move < m_lower(i) && move < 0.0) reach = std::min(reach, (m_lower(i) - m_q(i)) / move);
  }
  m_qNext = (m_q + (reach * dt) * m_dq).cwiseMax(m_lower).cwiseMin(m_upper);
  m_qd = (m_qNext - m_q) / dt;
  m_q = m_qNext;
  m_time += dt;
  // The approach ends close enough to its target for the Cartesian step to take over.
  if (m_approaching && (m_target - m_q).cwiseAbs().maxCoeff() < 1e-3) m_approaching = false;
  for (Effector& e : m_effectors) updateKinematics(e);
  for (Effector& e : m_effectors) trackError(e);
  recoverIfStalled();
  if (m_approaching)
    for (Effector& e : m_effectors) trackError(e);
  return true;
}
