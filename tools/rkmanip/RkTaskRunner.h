#pragma once
// rkmanip run: a task on the simulated arm, as fast as the machine allows, in simulated time. The task is
// read strictly and checked first, with the pose set it takes its named poses from; the run reports where
// each end effector starts, how close each frame came to its goal when it ended (a frame run inside another
// too, and each value of a parametric frame), and the worst frame.
#include <ostream>
#include <string>

struct RkTaskRunOptions {
  std::string taskPath;
  std::string robotPath;
  std::string tipLink;              // empty: from the robot's set-up, or its single deepest link
  double rate = 1000.0;             // control cycles per simulated second
  double maxTime = 600.0;           // simulated seconds before the run is stopped
  double positionTolerance = 1e-3;  // a frame's goal is reached within these (m, rad)
  double angleTolerance = 1e-3;
  bool lenient = false;         // run a document with problems, saying so
  bool strict = false;          // warnings refuse the run too
  bool requireReached = false;  // a frame that ends short of its goal fails the run
  std::string tracePath;        // CSV of commanded and actual placements per cycle; empty for none
  std::string reportPath;       // HTML report of the run, with plots and a 3D replay; empty for none
  std::string posesPath;        // the pose set handed to every cycle; empty for none
  std::string actionPath;       // the action to run of a library of actions; empty for any other task
};

namespace RkTaskRunner {
// 0 when the task completes (with every frame reached, under requireReached); 1 on Failure, at maxTime or
// for a frame not reached under requireReached; 2 when the task or robot cannot be read, or the task has
// problems and is not run leniently, or a library's action path names nothing. Progress goes to progress when
// it is a terminal.
int run(const RkTaskRunOptions& options, std::ostream& out, std::ostream& progress, bool progressIsTerminal);
}  // namespace RkTaskRunner
