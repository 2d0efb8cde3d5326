#include "simulation/RkArmController.h"

#include <gtest/gtest.h>

#include "RkSimulationTestSupport.h"

namespace {

constexpr double kDt = 0.001;
using Kind = RkArmController::EndEffectorKind;

Eigen::VectorXd ur5eHome() {
  return (Eigen::VectorXd(6) << 0, -M_PI / 2, M_PI / 2, -M_PI / 2, -M_PI / 2, 0).finished();
}

Eigen::VectorXd pandaHome() {
  return (Eigen::VectorXd(7) << 0, -M_PI / 4, 0, -3 * M_PI / 4, 0, M_PI / 2, M_PI / 4).finished();
}

Eigen::Isometry3d translation(double x, double y, double z) {
  return Eigen::Isometry3d(Eigen::Translation3d(x, y, z));
}

// Joint positions and velocities within their limits; driven end effectors within the speed caps (1 % for
// the caps being held on the linearised motion); every end effector moving over the cycle as it reports,
// within 0.01 m/s and 0.02 rad/s (the velocity is the one at the cycle's end).
bool withinAllLimits(const RkArmController& controller, const std::vector<Eigen::Isometry3d>& before) {
  const RkKinematicChain& chain = controller.chain();
  const Eigen::VectorXd& q = controller.jointPositions();
  if ((q - q.cwiseMax(chain.lowerLimits()).cwiseMin(chain.upperLimits())).any()) return false;
  if ((controller.jointVelocities().cwiseAbs() - chain.velocityLimits()).maxCoeff() > 1e-9) return false;
  const RkArmController::Settings& settings = controller.settings();
  for (int i = 0; i < controller.endEffectorCount(); ++i) {
    const RkArmController::EndEffectorStatus& s = *controller.status(i);
    const Eigen::AngleAxisd turned(s.placement.linear() * before[i].linear().transpose());
    if ((s.placement.translation() - before[i].translation() - kDt * s.linearVelocity).norm() > 0.01 * kDt ||
        (turned.angle() * turned.axis() - kDt * s.angularVelocity).norm() > 0.02 * kDt)
      return false;
    if (!s.active || !s.hasGoal) continue;
    if (s.linearVelocity.norm() > 1.01 * settings.maxLinearSpeed) return false;
    if (s.kind == Kind::Frame && s.angularVelocity.norm() > 1.01 * settings.maxAngularSpeed) return false;
  }
  return true;
}

// Steps once and checks every limit.
bool stepWithinLimits(RkArmController& controller) {
  std::vector<Eigen::Isometry3d> before;
  for (int i = 0; i < controller.endEffectorCount(); ++i) before.push_back(controller.status(i)->placement);
  std::string error;
  return controller.step(kDt, error) && withinAllLimits(controller, before);
}

struct PlannedEffector {
  std::string link;
  Kind kind;
  Eigen::Isometry3d offset;
};

struct Outcome {
  int reached = 0;
  int slowest = 0;
  bool limitsHeld = true;
};

// For `goals` random joint positions in turn, starts at home and commands every end effector to its placement
// there; counts the goals that all end effectors reach within maxCycles.
Outcome reachRandomGoals(const RkKinematicChain& chain, const Eigen::VectorXd& home,
                         const std::vector<PlannedEffector>& effectors, int goals, int maxCycles,
                         unsigned seed) {
  std::mt19937 rng(seed);
  Outcome outcome;
  std::string error;
  for (int g = 0; g < goals; ++g) {
    RkArmController controller(chain);
    EXPECT_TRUE(controller.setJointPositions(home, error)) << error;
    const Eigen::VectorXd q = randomJoints(chain, rng);
    for (const PlannedEffector& planned : effectors) {
      const int index =
          controller.addEndEffector(planned.link + std::to_string(controller.endEffectorCount()),
                                    planned.link, planned.kind, error, planned.offset);
      Eigen::Isometry3d link;
      EXPECT_TRUE(chain.linkPlacement(q, planned.link, link));
      EXPECT_TRUE(controller.setGoal(index, link * planned.offset, error)) << error;
    }
    for (int cycle = 1; cycle <= maxCycles; ++cycle) {
      outcome.limitsHeld = stepWithinLimits(controller) && outcome.limitsHeld;
      bool achieved = true;
      for (int i = 0; i < controller.endEffectorCount(); ++i)
        achieved = achieved && controller.status(i)->placementAchieved;
      if (achieved) {
        ++outcome.reached;
        outcome.slowest = std::max(outcome.slowest, cycle);
        break;
      }
    }
  }
  return outcome;
}

}  // namespace

TEST(RkArmController, ReachesRandomGoalsWithinLimits) {
  auto ur5e = loadUr5e();
  auto panda = loadPanda();
  ASSERT_TRUE(ur5e && panda);
  // 200 goals per arm, each to be reached within 1 mm and 1 mrad in at most 5000 cycles of 1 ms.
  const Outcome a = reachRandomGoals(*ur5e, ur5eHome(),
                                     {{"tool0", Kind::Frame, Eigen::Isometry3d::Identity()}}, 200, 5000, 1);
  const Outcome b = reachRandomGoals(
      *panda, pandaHome(), {{"panda_hand_tcp", Kind::Frame, Eigen::Isometry3d::Identity()}}, 200, 5000, 2);
  std::printf(
      "UR5e: %d/200 goals reached, the slowest in %d cycles; Panda: %d/200, the slowest in %d cycles\n",
      a.reached, a.slowest, b.reached, b.slowest);
  EXPECT_GE(a.reached, 190);
  EXPECT_GE(b.reached, 190);
  EXPECT_TRUE(a.limitsHeld && b.limitsHeld);
}

TEST(RkArmController, SeveralEndEffectorsConvergeTogether) {
  auto ur5e = loadUr5e();
  auto panda = loadPanda();
  ASSERT_TRUE(ur5e && panda);
  // The Panda's hand frame with a point by its elbow: 9 consistent task rows on 7 joints. The UR5e's tool
  // frame with a finger tip off the tool and a point by the forearm: 12 rows on 6 joints.
  const Outcome a = reachRandomGoals(*panda, pandaHome(),
                                     {{"panda_hand_tcp", Kind::Frame, Eigen::Isometry3d::Identity()},
                                      {"panda_link4", Kind::Point, translation(-0.04, 0.05, 0)}},
                                     20, 5000, 3);
  const Outcome b = reachRandomGoals(*ur5e, ur5eHome(),
                                     {{"tool0", Kind::Frame, Eigen::Isometry3d::Identity()},
                                      {"tool0", Kind::Point, translation(0.05, 0, 0.15)},
                                      {"forearm_link", Kind::Point, translation(-0.2, 0, 0.1)}},
                                     20, 5000, 4);
  std::printf(
      "Panda hand and elbow: %d/20 reached, the slowest in %d cycles; UR5e tool, finger and forearm: "
      "%d/20, the slowest in %d cycles\n",
      a.reached, a.slowest, b.reached, b.slowest);
  EXPECT_GE(a.reached, 19);
  EXPECT_GE(b.reached, 19);
  EXPECT_TRUE(a.limitsHeld && b.limitsHeld);

  // An inactive end effector is reported but not driven; a point ignores the goal's orientation.
  std::string error;
  RkArmController controller(*ur5e);
  ASSERT_TRUE(controller.setJointPositions(ur5eHome(), error));
  const int tip = controller.addEndEffector("tip", "tool0", Kind::Point, error);
  const int wrist = controller.addEndEffector("wrist", "wrist_1_link", Kind::Frame, error);
  Eigen::Isometry3d goal = controller.status(tip)->placement;
  goal.translation() += Eigen::Vector3d(-0.1, 0.05, 0.1);
  goal.linear() = Eigen::AngleAxisd(1.0, Eigen::Vector3d::UnitX()).toRotationMatrix();
  ASSERT_TRUE(controller.setGoal(tip, goal, error) && controller.setGoal(wrist, translation(5, 5, 5), error));
  ASSERT_TRUE(controller.setActive(wrist, false, error));
  for (int cycle = 0; cycle < 2000 && !controller.status(tip)->placementAchieved; ++cycle)
    ASSERT_TRUE(stepWithinLimits(controller));
  EXPECT_TRUE(controller.status(tip)->goalReached);
  EXPECT_FALSE(controller.status(wrist)->mayKeepConverging);
  EXPECT_GT(controller.status(wrist)->positionError, 5.0);
}

TEST(RkArmController, UnreachableGoalStopsConvergingAndTimeOutsHold) {
  auto ur5e = loadUr5e();
  ASSERT_TRUE(ur5e);
  std::string error;
  RkArmController controller(*ur5e);
  RkArmController::Settings settings;
  settings.timeout = 5.0;
  ASSERT_TRUE(controller.setSettings(settings, error)) << error;
  ASSERT_TRUE(controller.setJointPositions(ur5eHome(), error));
  const int tip = controller.addEndEffector("tip", "tool0", Kind::Frame, error);
  ASSERT_TRUE(controller.setGoal(tip, translation(3, 0, 0.5), error));
  int cycles = 0;
  for (; controller.status(tip)->mayKeepConverging && cycles < 6000; ++cycles)
    ASSERT_TRUE(stepWithinLimits(controller));
  EXPECT_LE(cycles * kDt, settings.timeout + kDt);
  EXPECT_GT(controller.status(tip)->positionError, 1.9);
  // It stays given up while the goal stays.
  for (int i = 0; i < 500; ++i) ASSERT_TRUE(stepWithinLimits(controller));
  EXPECT_FALSE(controller.status(tip)->mayKeepConverging);
  EXPECT_FALSE(controller.status(tip)->goalReached);

  // A new goal restarts the watch; a short time-out ends it while the arm still makes progress.
  settings.timeout = 0.05;
  ASSERT_TRUE(controller.setSettings(settings, error));
  ASSERT_TRUE(controller.setJointPositions(ur5eHome(), error));
  Eigen::Isometry3d near = controller.status(tip)->placement;
  near.translation().z() += 0.3;
  ASSERT_TRUE(controller.setGoal(tip, near, error));
  for (int i = 0; i < 60; ++i) {
    const double previous = controller.status(tip)->positionError;
    ASSERT_TRUE(stepWithinLimits(controller));
    EXPECT_LT(controller.status(tip)->positionError, previous);
    if (i == 40) {
      EXPECT_TRUE(controller.status(tip)->mayKeepConverging);
    }
  }
  EXPECT_FALSE(controller.status(tip)->mayKeepConverging);
  EXPECT_GT(controller.status(tip)->positionError, 0.01);
}

TEST(RkArmController, JointRestingOnALimitDoesNotStallTheOthers) {
  // A planar three-joint arm whose first joint may only move within +-0.2 rad and starts on its upper limit.
  std::vector<RkKinematicChain::DhJoint> table(3);
  table[0].a = 0.4;
  table[1].a = 0.3;
  table[2].a = 0.2;
  table[0].lower = -0.2;
  table[0].upper = 0.2;
  for (auto& joint : table) joint.maxVelocity = 2.0;
  std::string error;
  auto arm = RkKinematicChain::fromDh(table, Eigen::Isometry3d::Identity(), Eigen::Isometry3d::Identity(),
                                      "planar", error);
  ASSERT_TRUE(arm) << error;
  // Goals are reachable with the first joint on its limit and the elbow on the start's side; the local step
  // alone must get there (recovery off), so the joint on its limit must not hold the others back.
  RkArmController::Settings settings;
  settings.recoverySeeds = 0;
  std::mt19937 rng(5);
  std::uniform_real_distribution<double> second(-1.5, 1.5), third(0.3, 2.0);
  int reached = 0;
  for (int g = 0; g < 50; ++g) {
    RkArmController controller(*arm);
    ASSERT_TRUE(controller.setSettings(settings, error));
    ASSERT_TRUE(controller.setJointPositions(Eigen::Vector3d(0.2, 0.0, 1.0), error));
    const int tip = controller.addEndEffector("tip", "tool", Kind::Point, error);
    Eigen::Isometry3d goal;
    ASSERT_TRUE(arm->tipPlacement(Eigen::Vector3d(0.2, second(rng), third(rng)), goal));
    ASSERT_TRUE(controller.setGoal(tip, goal, error));
    for (int cycle = 0; cycle < 3000 && !controller.status(tip)->placementAchieved; ++cycle)
      ASSERT_TRUE(stepWithinLimits(controller));
    reached += controller.status(tip)->placementAchieved;
  }
  EXPECT_EQ(reached, 50);
}

TEST(RkArmController, BadRequestsAreRefusedWithOneLine) {
  auto ur5e = loadUr5e();
  ASSERT_TRUE(ur5e);
  RkArmController controller(*ur5e);
  std::string error;
  const auto refused = [&error](bool ok) {
    const bool oneLine = !error.empty() && error.find('\n') == std::string::npos;
    error.clear();
    return !ok && oneLine;
  };
  Eigen::Isometry3d sheared = Eigen::Isometry3d::Identity();
  sheared.linear()(0, 1) = 0.3;
  EXPECT_TRUE(refused(controller.addEndEffector("x", "panda_hand", Kind::Frame, error) >= 0));
  const int tip = controller.addEndEffector("tip", "tool0", Kind::Frame, error);
  EXPECT_TRUE(refused(controller.addEndEffector("tip", "wrist_1_link", Kind::Point, error) >= 0));
  EXPECT_TRUE(refused(controller.setGoal(tip, sheared, error)));
  EXPECT_TRUE(refused(controller.setGoal(7, Eigen::Isometry3d::Identity(), error)));
  EXPECT_TRUE(refused(controller.setJointPositions(Eigen::VectorXd::Zero(5), error)));
  EXPECT_TRUE(refused(controller.setJointPositions(Eigen::VectorXd::Constant(6, std::nan("")), error)));
  EXPECT_TRUE(refused(controller.setJointPositions(Eigen::VectorXd::Constant(6, 7.0), error)));
  EXPECT_TRUE(refused(controller.step(std::nan(""), error)));
  RkArmController::Settings settings;
  settings.gain = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(refused(controller.setSettings(settings, error)));
  EXPECT_EQ(controller.status(2), nullptr);
  EXPECT_TRUE(controller.jointPositions().isZero() && controller.time() == 0.0);
}
