// Builds a two-frame task, runs it on the simulated UR5e (or the URDF named) and prints each frame's goal.
#include <cstdio>

#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "frames/RkStandardManipulationFrame.h"
#include "offsets/RkConstantManipulationOffset.h"
#include "simulation/RkSimulatedTaskRunner.h"

// A frame that holds the tool, pointing down, at (x, y, z) for one second.
RkStandardManipulationFrame frame(const char* tag, double x, double y, double z) {
  RkConstantManipulationOffset goal;
  goal.setOffset(
      RkEndEffectorPlacement(RkCoordinateSystemTransformation(RkVector(x, y, z), RkOrientation(0, 1, 0, 0))));
  RkXmlVectorType<RkManipulationOffsetContainer> offsets(1);
  offsets[0].setElement(goal);
  RkManipulationTimeDurationTransitionEvent oneSecond;
  oneSecond.setTimeDuration(1.0);
  RkManipulationFrameTransitionEventContainer event;
  event.setElement(oneSecond);
  RkStandardManipulationFrame result;
  result.setTag(std::string(tag));
  result.setOffsetContainerVector(offsets);
  result.setTransitionEventContainer(event);
  return result;
}

int main(int argc, char** argv) {
  RkManipulationSequence pick;
  pick.add(frame("above the part", 0.45, 0.15, 0.35));
  pick.add(frame("at the part", 0.45, 0.15, 0.25));
  RkManipulationSequenceManager manager;
  manager.add("pick", pick);
  manager.setSequenceOrder(RkManipulationSequenceManager::SequenceOrder(1, std::string("pick")));
  RkSimulatedTaskRunner runner;
  std::string error;
  if (!runner.loadRobot(argc > 1 ? argv[1] : RK_UR5E_URDF, "", error)) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 2;
  }
  runner.setTransitionCallback([](const RkSimulatedTaskRunner& r) {
    if (!r.frameEnded()) return;
    const RkCoordinateSystemTransformation& p = r.commanded().offsetTransformations()[0];
    std::printf("%.3f s  %-15s commanded %.3f %.3f %.3f, orientation %.3f %.3f %.3f %.3f\n", r.time(),
                r.frameText().c_str(), p.translation().x(), p.translation().y(), p.translation().z(),
                p.orientation().w(), p.orientation().x(), p.orientation().y(), p.orientation().z());
  });
  return runner.run(manager) == RkManipulationStatus::Complete ? 0 : 1;
}
