#pragma once
// What rkmanip run keeps of a run for its report: per cycle the commanded and actual positions of every
// driven end effector and the placement error, 60 times a simulated second the origins of the arm's links,
// all in the system frame, and
// each frame that ended with its times, error and goals. It is fed from the tool's callbacks, never from the
// library's update, so its growing storage costs the control cycle nothing.
#include <Eigen/Core>
#include <string>
#include <vector>

class RkSimulatedTaskRunner;

class RkRunRecording {
 public:
  struct Frame {
    std::string sequence;  // empty for an action
    std::string label;     // frame index and text, e.g. frame 2 "down to the part"
    double start = 0.0, end = 0.0;
    double position = 0.0, angle = 0.0;  // error at the end (m, rad)
    bool hasGoal = false;
    bool reached = false;
    std::vector<Eigen::Vector3d> goals;  // the commanded position of each end effector at the end
  };
  // One end effector's positions per cycle, by axis; NaN where nothing was commanded.
  struct Track {
    std::vector<double> commanded[3];
    std::vector<double> actual[3];
  };

  // After every cycle's step.
  void cycle(const RkSimulatedTaskRunner& runner);
  // When a frame ended; name as the tool prints it (sequence: frame N "text"). Its goals are what the last
  // update commanded, or, for the run of a parametric frame's previous value, what the cycle before it did.
  void frameEnded(const RkSimulatedTaskRunner& runner, const std::string& name, double time, double position,
                  double angle, bool hasGoal, bool reached, bool previousCycle);

  const std::vector<double>& times() const { return m_times; }
  const std::vector<Track>& tracks() const { return m_tracks; }
  const std::vector<double>& positionErrors() const { return m_positionErrors; }
  const std::vector<double>& angleErrors() const { return m_angleErrors; }
  // The cycles whose link origins were kept, and the origins of the i-th of them: links() points, base first.
  const std::vector<std::size_t>& originCycles() const { return m_originCycles; }
  std::size_t links() const { return m_links; }
  const double* origins(std::size_t i) const { return &m_origins[i * m_links * 3]; }
  const std::vector<Frame>& frames() const { return m_frames; }

 private:
  std::vector<double> m_times, m_positionErrors, m_angleErrors, m_origins;
  std::vector<std::size_t> m_originCycles;
  std::vector<Track> m_tracks;
  std::vector<Frame> m_frames;
  std::vector<Eigen::Vector3d> m_scratch;
  std::size_t m_links = 0;
};
