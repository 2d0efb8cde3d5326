#include "tools/rkmanip/RkRunReport.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "tools/rkmanip/RkSeriesDecimation.h"

extern const unsigned char kRkRunReportPage[];
extern const std::size_t kRkRunReportPage_size;

namespace {

// Spans the plots over time are thinned to, and moments of the replay: about two points per pixel of a
// plot's width, and a replay that stays smooth at 30 moments a second for a run of a minute.
const std::size_t kPlotSpans = 800;
const std::size_t kReplayMoments = 1800;

// A JSON document written in order; text is escaped so that nothing in it can close the page's script.
class Json {
 public:
  Json& raw(const char* text) {
    m_out << text;
    return *this;
  }
  Json& key(const char* name) {
    comma();
    m_out << '"' << name << "\":";
    m_first = true;
    return *this;
  }
  Json& open(char bracket) {
    comma();
    m_out << bracket;
    m_first = true;
    return *this;
  }
  Json& close(char bracket) {
    m_out << bracket;
    m_first = false;
    return *this;
  }
  // A number with the significant digits asked for; null when it is not finite.
  Json& number(double value, int digits = 6) {
    comma();
    if (!std::isfinite(value)) {
      m_out << "null";
    } else {
      char text[32];
      std::snprintf(text, sizeof text, "%.*g", digits, value);
      m_out << text;
    }
    return *this;
  }
  Json& boolean(bool value) {
    comma();
    m_out << (value ? "true" : "false");
    return *this;
  }
  Json& text(const std::string& value) {
    comma();
    m_out << '"';
    for (unsigned char c : value) {
      if (c == '"' || c == '\\') {
        m_out << '\\' << c;
      } else if (c < 0x20 || c == '<' || c == '>' || c == '&') {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
        m_out << escaped;
      } else {
        m_out << c;
      }
    }
    m_out << '"';
    return *this;
  }
  Json& numbers(const std::vector<double>& values, const std::vector<std::size_t>& kept, int digits = 6) {
    open('[');
    for (std::size_t i : kept) number(values[i], digits);
    return close(']');
  }
  std::string str() const { return m_out.str(); }

 private:
  void comma() {
    if (!m_first) m_out << ',';
    m_first = false;
  }
  std::ostringstream m_out;
  bool m_first = true;
};

void writeSummary(Json& json, const RkRunReport::Summary& summary) {
  json.key("summary").open('{');
  json.key("robot").text(summary.robot).key("task").text(summary.task).key("status").text(summary.status);
  json.key("line").text(summary.line).key("worst").text(summary.worst);
  json.key("simulated").number(summary.simulatedTime).key("wall").number(summary.wallTime, 4);
  json.key("rate").number(summary.rate).key("cycles").number(static_cast<double>(summary.cycles), 12);
  json.close('}');
}

void writeFrames(Json& json, const RkRunRecording& recording) {
  json.key("frames").open('[');
  for (const RkRunRecording::Frame& frame : recording.frames()) {
    json.open('{').key("sequence").text(frame.sequence).key("label").text(frame.label);
    json.key("start").number(frame.start).key("end").number(frame.end);
    json.key("position").number(frame.position, 4).key("angle").number(frame.angle, 4);
    json.key("hasGoal").boolean(frame.hasGoal).key("reached").boolean(frame.reached);
    json.key("goals").open('[');
    for (const Eigen::Vector3d& goal : frame.goals)
      json.open('[').number(goal.x()).number(goal.y()).number(goal.z()).close(']');
    json.close(']').close('}');
  }
  json.close(']');
}

// Per axis, the commanded and actual positions of every end effector, thinned together.
void writePositions(Json& json, const RkRunRecording& recording) {
  json.key("positions").open('[');
  for (int axis = 0; axis < 3; ++axis) {
    std::vector<std::vector<double>> series;
    for (const RkRunRecording::Track& track : recording.tracks()) {
      series.push_back(track.commanded[axis]);
      series.push_back(track.actual[axis]);
    }
    const std::vector<std::size_t> kept = RkSeriesDecimation::minMax(series, kPlotSpans);
    json.open('{').key("t").numbers(recording.times(), kept).key("series").open('[');
    for (const std::vector<double>& values : series) json.numbers(values, kept);
    json.close(']').close('}');
  }
  json.close(']');
}

void writeErrors(Json& json, const RkRunRecording& recording) {
  const std::vector<std::size_t> kept =
      RkSeriesDecimation::minMax({recording.positionErrors(), recording.angleErrors()}, kPlotSpans);
  json.key("errors").open('{').key("t").numbers(recording.times(), kept);
  json.key("position").numbers(recording.positionErrors(), kept, 4);
  json.key("angle").numbers(recording.angleErrors(), kept, 4).close('}');
}

// The actual path of each end effector, keeping its extremes along every axis.
void writePaths(Json& json, const RkRunRecording& recording) {
  json.key("paths").open('[');
  for (const RkRunRecording::Track& track : recording.tracks()) {
    const std::vector<std::size_t> kept =
        RkSeriesDecimation::minMax({track.actual[0], track.actual[1], track.actual[2]}, kPlotSpans);
    json.open('[')
        .numbers(track.actual[0], kept)
        .numbers(track.actual[1], kept)
        .numbers(track.actual[2], kept);
    json.close(']');
  }
  json.close(']');
}

void writeReplay(Json& json, const RkRunRecording& recording) {
  const std::vector<std::size_t> moments =
      RkSeriesDecimation::even(recording.originCycles().size(), kReplayMoments);
  std::vector<std::size_t> kept;
  for (std::size_t i : moments) kept.push_back(recording.originCycles()[i]);
  json.key("replay").open('{').key("t").numbers(recording.times(), kept);
  json.key("links").number(static_cast<double>(recording.links())).key("origins").open('[');
  for (std::size_t i : moments) {
    const double* origins = recording.origins(i);
    for (std::size_t k = 0; k < recording.links() * 3; ++k) json.number(origins[k], 5);
  }
  json.close(']').key("tools").open('[');
  for (const RkRunRecording::Track& track : recording.tracks()) {
    json.open('[');
    for (std::size_t i : kept)
      json.number(track.actual[0][i], 5).number(track.actual[1][i], 5).number(track.actual[2][i], 5);
    json.close(']');
  }
  json.close(']').close('}');
}

void replace(std::string& text, const std::string& marker, const std::string& with) {
  const std::size_t at = text.find(marker);
  if (at != std::string::npos) text.replace(at, marker.size(), with);
}

}  // namespace

std::string RkRunReport::threePath() {
  const char* path = std::getenv("RK_THREE_JS");
  return path && *path ? path : RK_THREE_JS;
}

std::string RkRunReport::page(const RkRunRecording& recording, const Summary& summary,
                              const std::string& three) {
  Json json;
  json.open('{');
  writeSummary(json, summary);
  writeFrames(json, recording);
  writePositions(json, recording);
  writeErrors(json, recording);
  writePaths(json, recording);
  writeReplay(json, recording);
  json.close('}');
  std::string text(reinterpret_cast<const char*>(kRkRunReportPage), kRkRunReportPage_size);
  // three.js first: the run's own texts, which could hold anything, are not searched for a marker.
  replace(text, "/*RK_THREE_JS*/", three);
  replace(text, "/*RK_REPORT_DATA*/", json.str());
  return text;
}

bool RkRunReport::open(const std::string& path, std::string& error) {
  const std::string library = threePath();
  std::ifstream in(library, std::ios::binary);
  std::ostringstream three;
  if (!in || !(three << in.rdbuf())) {
    error = "three.js, which the report's 3D replay inlines, cannot be read from " + library +
            " (install Debian's libjs-three, or name the file with RK_THREE_JS)";
    return false;
  }
  m_three = three.str();
  m_path = path;
  m_out.open(path, std::ios::binary);
  if (!m_out) {
    error = path + " cannot be written";
    return false;
  }
  return true;
}

bool RkRunReport::write(const Summary& summary, std::string& error) {
  m_out << page(m_recording, summary, m_three);
  if (!m_out.flush()) {
    error = m_path + " cannot be written";
    return false;
  }
  return true;
}
