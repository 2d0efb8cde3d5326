// The update of a link-relative offset on the simulated UR5e: the arm's link frame for its current joint
// positions, the manipulation frame and the goal, every cycle. Counts the allocations of the timed updates,
// which must be none.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "manipulation/support/RkAllocationCounter.h"
#include "offsets/RkLinkRelativeManipulationOffset.h"
#include "sequencing/RkManipulationSequence.h"
#include "simulation/RkSimulatedSystem.h"

namespace {

void BM_Ur5eLinkRelativeOffsetUpdate(benchmark::State& bench) {
  std::string error;
  const auto chain =
      RkKinematicChain::fromUrdfFile(std::string(RK_ROBOTS_DIR) + "/ur5e.urdf", "base_link", "tool0", error);
  RkSimulatedSystem system;
  if (!chain || system.addArm("ur5e", *chain, RkCoordinateSystemTransformation(),
                              RkSimulatedEndEffectorSets::tipFrame("tool0"), error) != 0) {
    std::fprintf(stderr, "%s\n", error.c_str());
    std::exit(1);
  }
  Eigen::VectorXd q(6);
  q << 0.1, -M_PI / 2, M_PI / 2, -M_PI / 2, -M_PI / 2, 0.2;
  system.armController(0).setJointPositions(q, error);
  system.step(0.001, error);

  RkManipulationUpdateParams params;
  params.statedSystem = &system;
  params.positionControlSystem = &system;
  const RkManipulationSequence sequence;
  const RkManipulationSequenceState sequenceState;
  // 10 cm out along the tool's z axis, with the y axis left to the cross product.
  RkLinkRelativeManipulationOffset offset;
  offset.setLinkIdentifier("tool0");
  offset.setManipulationFrameXAxis(RkVector::xVector(), RkRelativeManipulationOffset::ObjectFrame);
  offset.setManipulationFrameZAxis(RkVector::zVector(), RkRelativeManipulationOffset::ObjectFrame);
  offset.setRelativeOffset(RkCoordinateSystemTransformation(RkVector(0, 0, 0.1), RkOrientation()));
  RkManipulationOffsetStateContainer container;
  if (!offset.init(0.0, params, sequence, sequenceState, 0, 0, container)) std::exit(1);
  RkManipulationOffsetState& state = *container.element();

  long updates = 0, failures = 0;
  RkAllocationCounter::start();
  for (auto _ : bench) {
    failures += offset.update(0.001 * updates++, params, sequence, sequenceState, 0, 0, state) ==
                RkManipulationStatus::Failure;
    benchmark::DoNotOptimize(&state);
  }
  const long allocations = RkAllocationCounter::stop();
  bench.counters["allocations"] = static_cast<double>(allocations);
  bench.counters["failures"] = static_cast<double>(failures);
}
BENCHMARK(BM_Ur5eLinkRelativeOffsetUpdate);

}  // namespace
