// Reads arbitrary bytes as a sequence-manager task and, when it reads, runs it as a user would: init, then
// up to 50 updates on a small fake control system. Mid-run the state is written, read back into a fresh
// state, and both runs must go on identically (status, commanded placement, state) to the end; anything
// else aborts. Sanitizers catch memory and undefined-behaviour faults on the way.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "foundation/RkPrint.h"
#include "manipulation/support/RkFakeControlSystem.h"
#include "sequencing/RkManipulationSequenceManager.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

namespace {

// One run of a task: its own fake system (two point end effectors standing still), parameters and state.
struct Run {
  RkFakeControlSystem system;
  RkManipulationUpdateParams params;
  RkManipulationSequenceManagerState state;
  Run() {
    for (RkU32 i = 0; i < 2; ++i) {
      system.controller.actual[i] =
          RkCoordinateSystemTransformation(RkVector(0.4, 0.1 * i, 0.3), RkOrientation());
    }
    params = system.params();
  }
};

std::string written(const RkXmlObject& object) {
  std::string text;
  RkXmlWriter::writeString(object, text);
  return text;
}

[[noreturn]] void breach(const char* what, int cycle, const std::string& detail) {
  std::fprintf(stderr, "%s at cycle %d\n%s\n", what, cycle, detail.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  Rk::Print::setVerbosity(-1);
  // A document may name plug-in libraries; none is ever loaded here.
  unsetenv("RK_PLUGIN_PATH");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  RkManipulationSequenceManager manager;
  if (!RkXmlReader::readString(input, manager, "task.xml")) return 0;
  Run first;
  if (!manager.init(first.state)) return 0;
  // Where to checkpoint and how long a cycle is, both taken from the input so the fuzzer can steer them.
  const int checkpoint = static_cast<int>(size % 50);
  const RkReal step = 0.001 * (1 + static_cast<int>(size % 7) * 37);

  Run resumed;
  bool split = false;
  for (int cycle = 0; cycle < 50; ++cycle) {
    if (cycle == checkpoint) {
      const std::string saved = written(first.state);
      if (!RkXmlReader::readString(saved, resumed.state, "state.xml")) {
        breach("a state written mid-run does not read back", cycle, saved);
      }
      if (written(resumed.state) != saved) breach("a state read back writes differently", cycle, saved);
      // The data map is the caller's input, not part of the state: a resumed caller hands the same values.
      resumed.params.dataMap = first.params.dataMap;
      split = true;
    }
    const RkReal time = step * cycle;
    const RkManipulationStatus::Enum status = manager.update(time, first.params, first.state);
    if (split) {
      const RkManipulationStatus::Enum again = manager.update(time, resumed.params, resumed.state);
      if (again != status) {
        breach("the resumed run reports another status", cycle,
               std::to_string(status) + " against " + std::to_string(again));
      }
      const std::string placement = written(manager.endEffectorPlacement(first.state));
      if (written(manager.endEffectorPlacement(resumed.state)) != placement) {
        breach("the resumed run commands another placement", cycle, placement);
      }
      const std::string state = written(first.state);
      if (written(resumed.state) != state) breach("the resumed run's state differs", cycle, state);
    }
    if (status == RkManipulationStatus::Complete || status == RkManipulationStatus::Failure) break;
  }
  return 0;
}
