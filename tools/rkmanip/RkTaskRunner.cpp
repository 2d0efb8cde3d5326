#include "tools/rkmanip/RkTaskRunner.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <memory>

#include "sequencing/RkManipulationActionContainer.h"
#include "sequencing/RkManipulationActionDirectory.h"
#include "sequencing/RkManipulationSequenceManager.h"
#include "sequencing/RkPoseSet.h"
#include "simulation/RkSimulatedTaskRunner.h"
#include "tools/rkmanip/RkActionLibrary.h"
#include "tools/rkmanip/RkDocumentCheck.h"
#include "tools/rkmanip/RkObservedTask.h"
#include "tools/rkmanip/RkRunReport.h"
#include "tools/rkmanip/RkToolPaths.h"

namespace RkTaskRunner {
namespace {

typedef std::chrono::steady_clock Clock;

std::string format(const char* pattern, double value) {
  char text[64];
  std::snprintf(text, sizeof text, pattern, value);
  return text;
}

std::string length(double metres) {
  if (std::isnan(metres)) return "not a number";
  return metres < 1.0 ? format("%.3f mm", metres * 1e3) : format("%.3f m", metres);
}

std::string angle(double radians) {
  if (std::isnan(radians)) return "not a number";
  return radians < 1.0 ? format("%.3f mrad", radians * 1e3) : format("%.3f rad", radians);
}

// Four significant digits, rounding errors shown as 0.
std::string coordinate(double value) {
  return format("%.4g", std::abs(value) < 1e-9 ? 0.0 : value);
}

std::string placement(const RkCoordinateSystemTransformation& p) {
  const RkVector& t = p.translation();
  const RkOrientation& q = p.orientation();
  return coordinate(t.x()) + " " + coordinate(t.y()) + " " + coordinate(t.z()) + ", orientation " +
         coordinate(q.w()) + " " + coordinate(q.x()) + " " + coordinate(q.y()) + " " + coordinate(q.z());
}

void tracePlacement(std::ostream& out, const RkCoordinateSystemTransformation& p) {
  const RkVector& t = p.translation();
  const RkOrientation& q = p.orientation();
  char text[256];
  std::snprintf(text, sizeof text, ",%.9g,%.9g,%.9g,%.9g,%.9g,%.9g,%.9g", t.x(), t.y(), t.z(), q.w(), q.x(),
                q.y(), q.z());
  out << text;
}

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

// A waypoint as the tool names it: its number from 1 and its name, or where it goes when it has none.
std::string waypointName(const RkObservedTask::Waypoint& waypoint) {
  const std::string number = "waypoint " + std::to_string(waypoint.index + 1);
  if (!waypoint.label.empty()) return number + " \"" + waypoint.label + "\"";
  if (!waypoint.hasGoal) return number;
  const RkVector& goal = waypoint.goal;
  return number + " (to " + coordinate(goal.x()) + " " + coordinate(goal.y()) + " " + coordinate(goal.z()) +
         ")";
}

// The running frame as the tool names it: sequence "approach" frame 2 tagged "at the part" is
// approach: frame 2 "at the part"; the text goes on with the frames running inside it.
std::string frameName(const RkSimulatedTaskRunner& runner, const RkObservedTask& task) {
  if (task.runsWaypoints()) return waypointName(task.waypoint());
  const std::string sequence = runner.sequenceName();
  return (sequence.empty() ? "" : sequence + ": ") + "frame " + std::to_string(runner.frameIndex() + 1) +
         " \"" + task.text() + "\"";
}

// How close the running frame is to its goal at one moment.
struct FrameError {
  std::string frame;  // sequence "name", frame index and text
  double time = 0.0;
  double position = 0.0;
  double angle = 0.0;
  bool hasGoal = false;
  bool reached = true;
  bool byPlacement = false;  // ended by its placement-achieved event
  // A waypoint that handed over on the curve round its corner: position is then the closest it came.
  bool roundsCorner = false;
  double zoneRadius = 0.0;
  double badness = 0.0;  // the larger error over its tolerance; infinite for a NaN error
};

FrameError measure(const RkSimulatedTaskRunner& runner, const RkObservedTask& task,
                   const RkTaskRunOptions& options) {
  FrameError e;
  e.frame = frameName(runner, task);
  e.time = runner.time();
  e.hasGoal = runner.commanded().offsetTransformations().size() > 0;
  runner.placementError(e.position, e.angle);
  e.reached = e.position <= options.positionTolerance && e.angle <= options.angleTolerance;
  e.badness = std::isnan(e.position) || std::isnan(e.angle)
                  ? INFINITY
                  : std::max(e.position / options.positionTolerance, e.angle / options.angleTolerance);
  return e;
}

// A waypoint at its hand-over. One handed over at its goal, which it commands until then, is measured as a
// frame is; one handed over inside its zone is reached when it came within the zone and the tolerance.
FrameError measureWaypoint(const RkSimulatedTaskRunner& runner, const RkObservedTask& task,
                           const RkTaskRunOptions& options) {
  FrameError e = measure(runner, task, options);
  const RkObservedTask::Waypoint& waypoint = task.waypoint();
  if (!waypoint.roundsCorner) return e;
  const double allowed = waypoint.zoneRadius + options.positionTolerance;
  e.roundsCorner = true;
  e.zoneRadius = waypoint.zoneRadius;
  e.hasGoal = waypoint.hasGoal;
  e.position = waypoint.closest;
  e.angle = 0.0;
  e.reached = e.position <= allowed;
  e.badness = std::isnan(e.position) ? INFINITY : e.position / allowed;
  return e;
}

// The waypoints' counterpart of the placement-achieved line: the largest error of those handed over at
// their goal, and the widest pass of those rounded inside their zone.
void describeWaypoints(std::ostream& out, const std::vector<FrameError>& ended) {
  const FrameError* stopped = nullptr;
  const FrameError* rounded = nullptr;
  for (const FrameError& e : ended) {
    const FrameError*& widest = e.roundsCorner ? rounded : stopped;
    if (e.hasGoal && (!widest || !(e.position <= widest->position))) widest = &e;
  }
  if (stopped) {
    out << "waypoints handed over at their goal: largest error at the hand-over " << length(stopped->position)
        << " (" << stopped->frame << ")\n";
  }
  if (rounded) {
    out << "waypoints rounded inside their zone: the widest passed " << length(rounded->position)
        << " from its goal (" << rounded->frame << ", zone " << length(rounded->zoneRadius) << ")\n";
  }
}

std::string describe(const FrameError& e) {
  if (!e.hasGoal) return "no goal";
  if (e.roundsCorner) {
    return "passed " + length(e.position) + " from it, zone " + length(e.zoneRadius) +
           (e.reached ? "  reached" : "  NOT reached");
  }
  return "error " + length(e.position) + ", " + angle(e.angle) + (e.reached ? "  reached" : "  NOT reached");
}

// Why the task failed, when the library does not say: a pose that the failing frame names and the pose set
// lacks.
std::string failure(const RkObservedTask& task, const RkTaskRunOptions& options) {
  const std::string pose = task.missingPose();
  if (pose.empty()) return std::string();
  if (options.posesPath.empty())
    return ": it names the pose \"" + pose + "\", but no pose set was given (--poses)";
  return ": the pose \"" + pose + "\" is not in the pose set " + options.posesPath;
}

// Simulated time and frame on one terminal line, refreshed a few times a second once a run has taken more
// than two seconds.
class Progress {
 public:
  Progress(std::ostream& out, bool enabled) : m_out(out), m_enabled(enabled), m_start(Clock::now()) {}
  void update(const RkSimulatedTaskRunner& runner, const RkObservedTask& task) {
    if (!m_enabled || (runner.cycles() & 1023) != 0) return;
    const Clock::time_point now = Clock::now();
    if (now - m_start < std::chrono::seconds(2) || now - m_last < std::chrono::milliseconds(250)) return;
    m_last = now;
    std::string text = format("rkmanip run: %.3f s simulated, ", runner.time()) + frameName(runner, task);
    text.resize(std::max<std::size_t>(text.size(), m_width), ' ');
    m_width = text.size();
    m_out << '\r' << text << std::flush;
  }
  void finish() {
    if (m_width > 0) m_out << '\r' << std::string(m_width, ' ') << '\r' << std::flush;
  }

 private:
  std::ostream& m_out;
  bool m_enabled;
  Clock::time_point m_start, m_last;
  std::size_t m_width = 0;
};

}  // namespace

int run(const RkTaskRunOptions& options, std::ostream& out, std::ostream& progressOut,
        bool progressIsTerminal) {
  const std::string robot = RkToolPaths::robotName(options.robotPath);
  RkDiagnostics diagnostics;
  RkSimulatedTaskRunner runner;
  std::string error;
  bool loaded = false;
  {
    RkDiagnostics::Capture capture(diagnostics, options.robotPath);
    loaded = runner.loadRobot(options.robotPath, options.tipLink, error);
  }
  if (!loaded) {
    RkToolPaths::reportRobotError(error, options.robotPath, options.tipLink, diagnostics);
    diagnostics.print(out);
    out << "rkmanip run: the robot " << options.robotPath << " cannot be loaded; nothing was run\n";
    return 2;
  }
  runner.setRate(options.rate);
  runner.setMaxTime(options.maxTime);
  RkPoseSource poses;
  poses.required = true;
  poses.path = options.posesPath;
  std::string problem;
  const std::unique_ptr<RkPoseSet> poseSet = RkDocumentCheck::readPoseSet(poses, diagnostics, problem);
  if (!problem.empty()) {
    diagnostics.print(out);
    out << "rkmanip run: " << options.posesPath << " " << problem << "; nothing was run\n";
    return 2;
  }
  std::unique_ptr<RkXmlObject> document = RkDocumentCheck::read(
      options.taskPath, [&]() { return &runner; }, robot, diagnostics, poses, options.actionPath);
  if (!document) {
    diagnostics.print(out);
    out << "rkmanip run: " << options.taskPath << " cannot be read; nothing was run\n";
    return 2;
  }
  const auto* library = dynamic_cast<const RkManipulationActionDirectory*>(document.get());
  if (library && options.actionPath.empty()) {
    out << "rkmanip run: " << options.taskPath
        << " is a library of actions; name the one to run with --action PATH (rkmanip list shows them)\n";
    return 2;
  }
  if (!library && !options.actionPath.empty()) {
    out << "rkmanip run: " << options.taskPath << " holds a <" << document->token().localName()
        << ">, not a library of actions; --action takes a manipulationActionDirectory document\n";
    return 2;
  }
  std::string missing;
  if (library && !RkActionLibrary::find(*library, options.actionPath, missing)) {
    out << "rkmanip run: " << options.taskPath << ": " << missing << "\n";
    return 2;
  }
  const auto* manager = dynamic_cast<const RkManipulationSequenceManager*>(document.get());
  const auto* container = dynamic_cast<const RkManipulationActionContainer*>(document.get());
  const RkManipulationAction* action = library ? RkActionLibrary::find(*library, options.actionPath, missing)
                                       : container
                                           ? container->element()
                                           : dynamic_cast<const RkManipulationAction*>(document.get());
  if (!manager && !action) {
    diagnostics.print(out);
    out << "rkmanip run: " << options.taskPath << " holds a <" << document->token().localName()
        << ">, which is not a task; run takes a manipulationSequenceManager, manipulationSequence or "
           "waypointSequence document, or a manipulationActionDirectory with --action\n";
    return 2;
  }
  const bool refused = diagnostics.errors() > 0 || (options.strict && diagnostics.warnings() > 0);
  const std::string checked = options.taskPath +
                              (library ? " action \"" + options.actionPath + "\"" : std::string()) +
                              (poseSet ? " with " + options.posesPath : std::string());
  if (refused && !options.lenient) {
    diagnostics.print(out);
    out << "rkmanip run: " << checked << " has " << diagnostics.summary()
        << (options.strict && diagnostics.errors() == 0 ? ", which --strict refuses" : "")
        << "; nothing was run: correct "
        << (diagnostics.errors() + diagnostics.warnings() == 1 ? "it" : "them")
        << ", or run it anyway with --lenient\n";
    return 2;
  }
  if (refused) {
    out << "rkmanip run: --lenient: running " << checked << " despite " << diagnostics.summary()
        << ", listed below\n";
  }
  diagnostics.print(out);

  std::ofstream trace;
  const auto& start = runner.actual().offsetTransformations();
  if (!options.tracePath.empty()) {
    trace.open(options.tracePath);
    if (!trace) {
      out << "rkmanip run: " << options.tracePath << " cannot be written; nothing was run\n";
      return 2;
    }
    trace << "time,status";
    for (RkU32 e = 0; e < start.size(); ++e) {
      for (const char* kind : {"commanded", "actual"})
        for (const char* axis : {"x", "y", "z", "qw", "qx", "qy", "qz"})
          trace << "," << kind << e << "_" << axis;
    }
    trace << "\n";
  }
  std::unique_ptr<RkRunReport> report(options.reportPath.empty() ? nullptr : new RkRunReport);
  std::string reportError;
  if (report && !report->open(options.reportPath, reportError)) {
    out << "rkmanip run: " << reportError << "; nothing was run\n";
    return 2;
  }
  const RkSimulatedEndEffectorSets& setUp = runner.setUp();
  const RkEndEffectorSet& driven = setUp.endEffectorSets()[setUp.activeEndEffectorSet()];
  for (RkU32 e = 0; e < start.size(); ++e) {
    const RkEndEffector* endEffector = driven.endEffector(e);
    out << robot << " end effector " << e << " (" << (endEffector ? endEffector->linkIdentifier() : "?")
        << ") starts at " << placement(start[e]) << "\n";
  }

  RkObservedTask task(manager, action, poseSet.get());
  std::vector<FrameError> ended;
  // Where the arm stood when the current update began, against what the previous one commanded: what a
  // parametric frame's run of one value reached, once the update has moved on to the next value.
  FrameError beforeUpdate;
  char line[512];
  runner.setTransitionCallback([&](const RkSimulatedTaskRunner& r) {
    if (task.frameEnded()) {
      ended.push_back(measure(r, task, options));
      ended.back().byPlacement = task.endedByPlacement();
    } else if (task.valueStepped()) {
      ended.push_back(beforeUpdate);
      ended.back().time = r.time();
    } else if (task.waypointEnded()) {
      ended.push_back(measureWaypoint(r, task, options));
    } else {
      return;
    }
    if (report) {
      const FrameError& e = ended.back();
      report->recording().frameEnded(r, e.frame, e.time, e.position, e.angle, e.hasGoal, e.reached,
                                     !task.frameEnded());
    }
    std::snprintf(line, sizeof line, "%10.3f s  %s  %s\n", ended.back().time, ended.back().frame.c_str(),
                  describe(ended.back()).c_str());
    out << line << std::flush;
  });
  Progress progress(progressOut, progressIsTerminal);
  runner.setCycleCallback([&](const RkSimulatedTaskRunner& r) {
    progress.update(r, task);
    beforeUpdate = measure(r, task, options);
    if (report) report->recording().cycle(r);
    if (!trace) return;
    trace << r.time() << "," << statusText(r.status());
    const auto& goals = r.commanded().offsetTransformations();
    const auto& actual = r.actual().offsetTransformations();
    for (RkU32 e = 0; e < actual.size(); ++e) {
      tracePlacement(trace, e < goals.size() ? goals[e] : actual[e]);
      tracePlacement(trace, actual[e]);
    }
    trace << "\n";
  });
  const Clock::time_point started = Clock::now();
  const RkManipulationStatus::Enum status = task.run(runner);
  const double wallTime = std::chrono::duration<double>(Clock::now() - started).count();
  progress.finish();

  std::size_t missed = 0;
  const FrameError* worst = nullptr;
  const FrameError* placed = nullptr;  // the placement-achieved frame furthest from its goal at its end
  for (const FrameError& e : ended) {
    missed += !e.reached;
    if (e.hasGoal && (!worst || e.badness > worst->badness)) worst = &e;
    if (e.byPlacement && (!placed || !(e.position <= placed->position))) placed = &e;
  }
  if (placed) {
    out << "placement-achieved frames: largest error at the end " << length(placed->position) << " ("
        << placed->frame << ")\n";
  }
  if (task.runsWaypoints()) describeWaypoints(out, ended);
  std::snprintf(line, sizeof line, " after %.3f s simulated, %ld %s at %g Hz", runner.time(), runner.cycles(),
                runner.cycles() == 1 ? "cycle" : "cycles", runner.rate());
  std::string summary;
  if (status == RkManipulationStatus::Complete) {
    summary = "Complete" + std::string(line);
  } else if (status == RkManipulationStatus::Failure) {
    summary = "Failure" + std::string(line) + " in " + measure(runner, task, options).frame +
              (runner.failure().empty() ? failure(task, options) : ": " + runner.failure());
  } else {
    const FrameError now = measure(runner, task, options);
    summary = "Stopped at --max-time" + std::string(line) + " in " + now.frame + ", whose " + describe(now);
  }
  const std::string element = task.runsWaypoints() ? "waypoint" : "frame";
  summary += "; " + std::to_string(ended.size()) + " " + element + (ended.size() == 1 ? "" : "s") + " ended";
  if (!ended.empty())
    summary += missed == 0 ? ", all reached" : ", " + std::to_string(missed) + " NOT reached";
  if (worst)
    summary += "; the worst was " + worst->frame + format(" at %.3f s, ", worst->time) + describe(*worst);
  out << summary << "\n";
  if (report) {
    RkRunReport::Summary about{robot,         options.taskPath, "Complete",    summary,        "",
                               runner.time(), wallTime,         runner.rate(), runner.cycles()};
    if (status == RkManipulationStatus::Failure) about.status = "Failure";
    if (status == RkManipulationStatus::InProgress) about.status = "Stopped at --max-time";
    if (worst) about.worst = worst->frame + format(" at %.3f s, ", worst->time) + describe(*worst);
    if (!report->write(about, reportError)) {
      out << "rkmanip run: " << reportError << "\n";
      return 2;
    }
  }
  if (status != RkManipulationStatus::Complete) return 1;
  if (missed > 0 && options.requireReached) {
    out << "rkmanip run: --require-reached: " << missed << " " << element << (missed == 1 ? "" : "s")
        << " ended short of the goal";
    if (task.runsWaypoints()) out << "; the worst was " << worst->frame << ": " << describe(*worst);
    out << "\n";
    return 1;
  }
  return 0;
}

}  // namespace RkTaskRunner
