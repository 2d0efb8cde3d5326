#pragma once
// rkmanip run: a task on the simulated arm, as fast as the machine allows, in simulated time.
#include <ostream>
#include <string>

struct RkTaskRunOptions {
  std::string taskPath;
  std::string robotPath;
  double rate = 1000.0;    // control cycles per simulated second
  double maxTime = 600.0;  // simulated seconds before the run is stopped
  std::string tracePath;   // CSV of commanded and actual placements per cycle; empty for none
};

namespace RkTaskRunner {
// 0 when the task completes, 1 on Failure or when it runs past maxTime, 2 when the task or robot cannot be
// read.
int run(const RkTaskRunOptions& options, std::ostream& out);
}  // namespace RkTaskRunner
