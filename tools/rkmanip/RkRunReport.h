#pragma once
// rkmanip run --report: one self-contained HTML page of a run. The page carries the run, thinned for drawing,
// as JSON, and its own script draws from it the summary, the table of frames, SVG plots of positions, errors
// and the tool path, and a 3D replay of the arm with three.js, which the page inlines.
#include <fstream>
#include <string>

#include "tools/rkmanip/RkRunRecording.h"

class RkRunReport {
 public:
  struct Summary {
    std::string robot, task;
    std::string status;  // Complete, Failure or Stopped at --max-time
    std::string line;    // the run's closing line as the tool prints it
    std::string worst;   // the worst frame and its error; empty when no frame with a goal ended
    double simulatedTime = 0.0, wallTime = 0.0, rate = 0.0;
    long cycles = 0;
  };

  // Where three.js is read from: $RK_THREE_JS when set, else the path the tool was built with.
  static std::string threePath();
  // The page, with three.js's source inlined.
  static std::string page(const RkRunRecording& recording, const Summary& summary, const std::string& three);

  // Before the run: reads three.js and opens path for writing; false with error set to one line when either
  // fails.
  bool open(const std::string& path, std::string& error);
  // What the run's callbacks feed.
  RkRunRecording& recording() { return m_recording; }
  // After the run: writes the page; false with error set when it cannot be written.
  bool write(const Summary& summary, std::string& error);

 private:
  std::string m_path, m_three;
  std::ofstream m_out;
  RkRunRecording m_recording;
};
