#include "tools/rkmanip/RkRunRecording.h"

#include <cmath>

#include "simulation/RkSimulatedTaskRunner.h"

void RkRunRecording::cycle(const RkSimulatedTaskRunner& runner) {
  m_times.push_back(runner.time());
  double position = 0.0, angle = 0.0;
  runner.placementError(position, angle);
  m_positionErrors.push_back(position);
  m_angleErrors.push_back(angle);
  const auto& goals = runner.commanded().offsetTransformations();
  const auto& actual = runner.actual().offsetTransformations();
  if (m_tracks.size() < actual.size()) m_tracks.resize(actual.size());
  for (std::size_t e = 0; e < m_tracks.size(); ++e) {
    Track& track = m_tracks[e];
    for (int axis = 0; axis < 3; ++axis) {
      track.commanded[axis].resize(m_times.size() - 1, NAN);
      track.actual[axis].resize(m_times.size() - 1, NAN);
      track.commanded[axis].push_back(e < goals.size() ? goals[e].translation().eigen()[axis] : NAN);
      track.actual[axis].push_back(e < actual.size() ? actual[e].translation().eigen()[axis] : NAN);
    }
  }
  // The arm's posture is worked out only as often as a replay shows it.
  if (!m_originCycles.empty() && runner.time() - m_times[m_originCycles.back()] < 1.0 / 60) return;
  m_originCycles.push_back(m_times.size() - 1);
  runner.system().linkOrigins(0, m_scratch);
  if (m_links == 0) m_links = m_scratch.size();
  for (std::size_t i = 0; i < m_links; ++i)
    for (int axis = 0; axis < 3; ++axis) m_origins.push_back(i < m_scratch.size() ? m_scratch[i][axis] : NAN);
}

void RkRunRecording::frameEnded(const RkSimulatedTaskRunner& runner, const std::string& name, double time,
                                double position, double angle, bool hasGoal, bool reached,
                                bool previousCycle) {
  Frame frame;
  frame.sequence = runner.sequenceName();
  const std::string prefix = frame.sequence + ": ";
  frame.label = !frame.sequence.empty() && name.compare(0, prefix.size(), prefix) == 0
                    ? name.substr(prefix.size())
                    : name;
  frame.start = m_frames.empty() ? 0.0 : m_frames.back().end;
  frame.end = time;
  frame.position = position;
  frame.angle = angle;
  frame.hasGoal = hasGoal;
  frame.reached = reached;
  if (hasGoal && previousCycle && !m_times.empty()) {
    for (const Track& track : m_tracks) {
      frame.goals.emplace_back(track.commanded[0].back(), track.commanded[1].back(),
                               track.commanded[2].back());
    }
  } else if (hasGoal) {
    const auto& goals = runner.commanded().offsetTransformations();
    for (RkU32 e = 0; e < goals.size(); ++e) frame.goals.push_back(goals[e].translation().eigen());
  }
  m_frames.push_back(frame);
}
