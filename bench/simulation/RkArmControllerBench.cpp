// Kinematics and controller cycle costs of the reference simulated arms. The budget of one controller cycle
// (forward kinematics, Jacobian, damped least-squares step, limits) for the UR5e is 5 us.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "simulation/RkArmController.h"

namespace {

RkKinematicChain load(const char* file, const char* base, const char* tip) {
  std::string error;
  auto chain = RkKinematicChain::fromUrdfFile(std::string(RK_ROBOTS_DIR) + "/" + file, base, tip, error);
  if (!chain) {
    std::fprintf(stderr, "%s\n", error.c_str());
    std::exit(1);
  }
  return *chain;
}

const RkKinematicChain& ur5e() {
  static const RkKinematicChain chain = load("ur5e.urdf", "base_link", "tool0");
  return chain;
}

const RkKinematicChain& panda() {
  static const RkKinematicChain chain = load("panda.urdf", "panda_link0", "panda_hand_tcp");
  return chain;
}

Eigen::VectorXd home(const RkKinematicChain& chain) {
  Eigen::VectorXd q(chain.jointCount());
  if (chain.jointCount() == 6)
    q << 0, -M_PI / 2, M_PI / 2, -M_PI / 2, -M_PI / 2, 0;
  else
    q << 0, -M_PI / 4, 0, -3 * M_PI / 4, 0, M_PI / 2, M_PI / 4;
  return q;
}

void BM_Ur5eTipPlacement(benchmark::State& state) {
  const RkKinematicChain chain = ur5e();
  Eigen::VectorXd q = home(chain);
  Eigen::Isometry3d tip;
  for (auto _ : state) {
    q(0) += 1e-6;  // a new configuration every time
    chain.tipPlacement(q, tip);
    benchmark::DoNotOptimize(tip);
  }
}
BENCHMARK(BM_Ur5eTipPlacement);

void BM_Ur5eTipJacobian(benchmark::State& state) {
  const RkKinematicChain chain = ur5e();
  Eigen::VectorXd q = home(chain);
  Eigen::MatrixXd jacobian(6, 6);
  for (auto _ : state) {
    q(0) += 1e-6;
    chain.tipJacobian(q, jacobian);
    benchmark::DoNotOptimize(jacobian.data());
  }
}
BENCHMARK(BM_Ur5eTipJacobian);

// Both at once, in the single pass the controller uses.
void BM_Ur5eTipPlacementAndJacobian(benchmark::State& state) {
  const RkKinematicChain chain = ur5e();
  Eigen::VectorXd q = home(chain);
  Eigen::Isometry3d tip;
  Eigen::MatrixXd jacobian(6, 6);
  const int link = static_cast<int>(chain.linkNames().size()) - 1;
  for (auto _ : state) {
    q(0) += 1e-6;
    chain.linkPlacementAndJacobian(q, link, tip, jacobian);
    benchmark::DoNotOptimize(jacobian.data());
    benchmark::DoNotOptimize(tip);
  }
}
BENCHMARK(BM_Ur5eTipPlacementAndJacobian);

// One controller cycle with the arm moving: every end effector goes back and forth between its placements
// at two joint configurations (about 20 cm and 0.5 rad apart at the tool), the goals switching every 400
// cycles.
void controllerCycle(benchmark::State& state, const RkKinematicChain& chain, const char* tip,
                     bool extraPoints) {
  std::string error;
  RkArmController controller(chain);
  const Eigen::VectorXd qa = home(chain);
  Eigen::VectorXd qb = qa;
  qb.head(4) += Eigen::Vector4d(0.25, -0.2, 0.25, 0.3);
  qb(qb.size() - 1) += 0.4;
  controller.setJointPositions(qa, error);
  std::vector<int> effectors{
      controller.addEndEffector("tool", tip, RkArmController::EndEffectorKind::Frame, error)};
  if (extraPoints) {
    // A finger tip off the tool and a point on the forearm.
    effectors.push_back(controller.addEndEffector("finger", tip, RkArmController::EndEffectorKind::Point,
                                                  error,
                                                  Eigen::Isometry3d(Eigen::Translation3d(0.05, 0, 0.1))));
    effectors.push_back(controller.addEndEffector("forearm", chain.linkNames()[4],
                                                  RkArmController::EndEffectorKind::Point, error));
  }
  std::vector<Eigen::Isometry3d> goalsA, goalsB;
  for (int e : effectors) {
    const RkArmController::EndEffectorStatus& s = *controller.status(e);
    Eigen::Isometry3d link;
    chain.linkPlacement(qa, s.link, link);
    goalsA.push_back(link * s.offset);
    chain.linkPlacement(qb, s.link, link);
    goalsB.push_back(link * s.offset);
  }
  long cycle = 0, switches = 0, reached = 0;
  for (auto _ : state) {
    if (cycle++ % 400 == 0) {
      // Whether the goals just left were all reached in time, to show that the cycles measured are real
      // moves.
      bool all = true;
      for (int e : effectors) all = all && controller.status(e)->placementAchieved;
      if (switches++ > 0) reached += all;
      for (size_t i = 0; i < effectors.size(); ++i)
        controller.setGoal(effectors[i], (cycle / 400) % 2 ? goalsB[i] : goalsA[i], error);
    }
    controller.step(0.001, error);
    benchmark::DoNotOptimize(controller.jointPositions().data());
  }
  state.counters["goalsReached"] = switches > 1 ? double(reached) / double(switches - 1) : 0.0;
}

void BM_Ur5eControllerCycle(benchmark::State& state) {
  controllerCycle(state, ur5e(), "tool0", false);
}
BENCHMARK(BM_Ur5eControllerCycle);

void BM_PandaControllerCycle(benchmark::State& state) {
  controllerCycle(state, panda(), "panda_hand_tcp", false);
}
BENCHMARK(BM_PandaControllerCycle);

void BM_Ur5eControllerCycleThreeEndEffectors(benchmark::State& state) {
  controllerCycle(state, ur5e(), "tool0", true);
}
BENCHMARK(BM_Ur5eControllerCycleThreeEndEffectors);

// One second of cycles towards an unreachable goal: the approach stalls and the recovery search runs once,
// in full since it finds nothing.
void BM_Ur5eUnreachableGoalSecond(benchmark::State& state) {
  const RkKinematicChain& chain = ur5e();
  std::string error;
  for (auto _ : state) {
    state.PauseTiming();
    RkArmController controller(chain);
    controller.setJointPositions(home(chain), error);
    const int tool =
        controller.addEndEffector("tool", "tool0", RkArmController::EndEffectorKind::Frame, error);
    controller.setGoal(tool, Eigen::Isometry3d(Eigen::Translation3d(3, 0, 0.5)), error);
    state.ResumeTiming();
    for (int i = 0; i < 1000; ++i) controller.step(0.001, error);
    benchmark::DoNotOptimize(controller.jointPositions().data());
  }
}
BENCHMARK(BM_Ur5eUnreachableGoalSecond)->Unit(benchmark::kMillisecond);

}  // namespace
