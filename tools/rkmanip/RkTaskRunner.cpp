#include "tools/rkmanip/RkTaskRunner.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <memory>

#include "sequencing/RkManipulationSequenceManager.h"
#include "simulation/RkSimulatedSystem.h"
#include "xml/RkXmlReader.h"

namespace RkTaskRunner {
namespace {

const char* statusText(RkManipulationStatus::Enum status) {
  switch (status) {
    case RkManipulationStatus::Failure:
      return "Failure";
    case RkManipulationStatus::InProgress:
      return "InProgress";
    case RkManipulationStatus::Transition:
      return "Transition";
    default:
      return "Complete";
  }
}

void writePlacement(std::ostream& out, const RkCoordinateSystemTransformation& placement) {
  const RkVector& p = placement.translation();
  const RkOrientation& q = placement.orientation();
  char text[256];
  std::snprintf(text, sizeof text, ",%.9g,%.9g,%.9g,%.9g,%.9g,%.9g,%.9g", p.x(), p.y(), p.z(), q.w(), q.x(),
                q.y(), q.z());
  out << text;
}

// Position error between what the task commands and where the arm is, over every end effector.
double largestError(const RkManipulatorEndEffectorPlacement& commanded,
                    const RkManipulatorEndEffectorPlacement& actual) {
  double largest = 0.0;
  const auto& goals = commanded.offsetTransformations();
  const auto& reached = actual.offsetTransformations();
  for (RkU32 i = 0; i < goals.size() && i < reached.size(); ++i) {
    largest = std::max(largest, (goals[i].translation() - reached[i].translation()).norm());
  }
  return largest;
}

}  // namespace

int run(const RkTaskRunOptions& options, std::ostream& out) {
  RkManipulationSequenceManager manager;
  if (!RkXmlReader::readFile(options.taskPath, manager)) {
    out << "rkmanip run: " << options.taskPath << " could not be read\n";
    return 2;
  }
  std::string error;
  std::unique_ptr<RkKinematicChain> chain = RkKinematicChain::fromUrdfFile(options.robotPath, "", "", error);
  if (!chain) {
    out << "rkmanip run: " << error << "\n";
    return 2;
  }
  RkSimulatedEndEffectorSets sets;
  if (!RkSimulatedEndEffectorSets::forRobot(options.robotPath, chain->tipLink(), sets)) {
    out << "rkmanip run: " << RkSimulatedEndEffectorSets::fileFor(options.robotPath)
        << " could not be read\n";
    return 2;
  }
  RkSimulatedSystem system;
  if (system.addArm("arm", *chain, RkCoordinateSystemTransformation(), sets, error) < 0) {
    out << "rkmanip run: " << error << "\n";
    return 2;
  }
  std::ofstream trace;
  if (!options.tracePath.empty()) {
    trace.open(options.tracePath);
    if (!trace) {
      out << "rkmanip run: " << options.tracePath << " cannot be written\n";
      return 2;
    }
    trace << "time,status";
    for (RkU32 e = 0; e < system.currentEndEffectorPlacements()[0].offsetTransformations().size(); ++e) {
      for (const char* kind : {"commanded", "actual"}) {
        for (const char* axis : {"x", "y", "z", "qw", "qx", "qy", "qz"})
          trace << "," << kind << e << "_" << axis;
      }
    }
    trace << "\n";
  }

  RkManipulationUpdateParams params;
  params.statedSystem = &system;
  params.positionControlSystem = &system;
  RkManipulationSequenceManagerState state;
  if (!manager.init(state)) {
    out << "rkmanip run: the task cannot start\n";
    return 1;
  }
  const double dt = 1.0 / options.rate;
  long cycles = 0;
  double time = 0.0, settlingError = 0.0;
  RkManipulationStatus::Enum status = RkManipulationStatus::InProgress;
  RkManipulatorEndEffectorPlacement commanded;
  char line[512];
  for (; time <= options.maxTime; time = ++cycles * dt) {
    status = manager.update(time, params, state);
    if (status == RkManipulationStatus::Failure) break;
    // A frame that ends is measured against where the arm stands before the next goal is sent.
    if (status == RkManipulationStatus::Transition || status == RkManipulationStatus::Complete) {
      if (cycles > 0)
        settlingError =
            std::max(settlingError, largestError(commanded, system.currentEndEffectorPlacements()[0]));
      const RkU32 index = state.currentSequenceIndex();
      const std::string sequence =
          index < manager.sequenceOrder().size() ? manager.sequenceOrder()[index].value() : std::string();
      std::snprintf(line, sizeof line, "%10.3f s  %-10s  %s  %s\n", time, statusText(status),
                    sequence.c_str(), manager.statusString(state, "").c_str());
      // Flushed, so that the lines interleave with the library's own diagnostics on stderr.
      out << line << std::flush;
    }
    if (status == RkManipulationStatus::Complete) break;
    commanded = manager.endEffectorPlacement(state);
    if (!system.command(0, commanded, error) || !system.step(dt, error)) {
      out << "rkmanip run: the simulated arm refused a step: " << error << "\n";
      status = RkManipulationStatus::Failure;
      break;
    }
    if (trace) {
      trace << time << "," << statusText(status);
      const auto& goals = commanded.offsetTransformations();
      const auto& actual = system.currentEndEffectorPlacements()[0].offsetTransformations();
      for (RkU32 e = 0; e < actual.size(); ++e) {
        writePlacement(trace, e < goals.size() ? goals[e] : actual[e]);
        writePlacement(trace, actual[e]);
      }
      trace << "\n";
    }
  }
  const bool timedOut = status != RkManipulationStatus::Complete && status != RkManipulationStatus::Failure;
  std::snprintf(
      line, sizeof line,
      "%s after %.3f s simulated, %ld cycles at %g Hz; largest placement error at a frame's end %.3g m\n",
      timedOut ? "Stopped at --max-time" : statusText(status), time, cycles, options.rate, settlingError);
  out << line;
  return status == RkManipulationStatus::Complete ? 0 : 1;
}

}  // namespace RkTaskRunner
