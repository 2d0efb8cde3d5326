// rkmanip run --report: the thinning of long series for drawing, the page the real tool writes (its size,
// that it stands alone, that nothing in a task can break it) and, where chromium is installed, the page as a
// browser draws it.
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tools/rkmanip/RkSeriesDecimation.h"

namespace {

// Runs a shell command; its exit status, and its standard output in out.
int shell(const std::string& command, std::string* out = nullptr) {
  FILE* pipe = popen(command.c_str(), "r");
  char buffer[4096];
  for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
    if (out) out->append(buffer, n);
  const int status = pclose(pipe);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string slurp(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string scratch(const std::string& name) {
  return std::string(RK_BINARY_DIR) + "/report_" + name;
}

int rkmanipRun(const std::string& task, const std::string& report, std::string& out,
               const std::string& environment = "") {
  return shell(environment + " '" RKMANIP "' run '" + task + "' --report '" + report + "' 2>&1", &out);
}

// A task of frames, each a move of about two seconds to its goal; tags as given.
std::string task(const std::vector<std::string>& tags) {
  std::ostringstream xml;
  xml << "<manipulationSequenceManager xmlns=\"http://rkmanipulation.org/namespace/ct#\">"
      << "<sequenceOrder "
         "count=\"1\"><group>moves</group></sequenceOrder><sequenceMap><element><key>moves</key>"
      << "<value><manipulationFrameVector count=\"" << tags.size() << "\">";
  for (std::size_t i = 0; i < tags.size(); ++i) {
    xml << "<element><standardManipulationFrame><tag>" << tags[i] << "</tag>"
        << "<manipulationOffsetContainerVector "
           "count=\"1\"><element><interpolatedManipulationOffset><targetOffset>"
        << "<constantManipulationOffset><manipulationOffset><placement><translation>"
        << 0.3 + 0.15 * std::cos(0.7 * i) << " " << 0.25 * std::sin(1.3 * i) << " " << 0.25 + 0.1 * (i % 3)
        << "</translation><orientation>0 1 0 0</orientation></placement></manipulationOffset>"
        << "</constantManipulationOffset></targetOffset><interpolationTime>2.0</interpolationTime>"
        << "</interpolatedManipulationOffset></element></manipulationOffsetContainerVector>"
        << "<manipulationFrameTransitionEventContainer><timeDurationTransitionEvent><timeDuration>2.07"
        << "</timeDuration></timeDurationTransitionEvent></manipulationFrameTransitionEventContainer>"
        << "</standardManipulationFrame></element>";
  }
  xml << "</manipulationFrameVector></value></element></sequenceMap></manipulationSequenceManager>\n";
  return xml.str();
}

std::string writeTask(const std::string& name, const std::vector<std::string>& tags) {
  const std::string path = scratch(name);
  std::ofstream(path) << task(tags);
  return path;
}

}  // namespace

TEST(RkSeriesDecimation, keeps_every_extreme_and_gap_of_a_long_series_within_a_bound) {
  std::vector<double> values(60000);
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = std::sin(i * 1e-3);
  values[12345] = 40.0;   // one cycle's spike
  values[23456] = -40.0;  // and dip
  values[34567] = NAN;    // an error that could not be measured
  const std::vector<std::size_t> kept = RkSeriesDecimation::minMax(values, 800);
  EXPECT_LE(kept.size(), 3u * 800 + 2);
  for (std::size_t index :
       {std::size_t(0), std::size_t(12345), std::size_t(23456), std::size_t(34567), values.size() - 1}) {
    EXPECT_TRUE(std::binary_search(kept.begin(), kept.end(), index)) << index;
  }
  EXPECT_TRUE(std::is_sorted(kept.begin(), kept.end()));
  EXPECT_EQ(std::adjacent_find(kept.begin(), kept.end()), kept.end());

  // Over several series, each one's extremes survive.
  std::vector<double> other(values.size(), 0.0);
  other[777] = 1.0;
  const std::vector<std::size_t> both = RkSeriesDecimation::minMax({values, other}, 800);
  EXPECT_TRUE(std::binary_search(both.begin(), both.end(), 777u));
  EXPECT_TRUE(std::binary_search(both.begin(), both.end(), 12345u));

  // A short series is kept whole, an empty one stays empty.
  EXPECT_EQ(RkSeriesDecimation::minMax(std::vector<double>(50, 1.0), 800).size(), 50u);
  EXPECT_TRUE(RkSeriesDecimation::minMax(std::vector<double>(), 800).empty());

  // A replay's moments: evenly spaced, the last one always there.
  const std::vector<std::size_t> moments = RkSeriesDecimation::even(60001, 1800);
  EXPECT_LE(moments.size(), 1802u);
  EXPECT_EQ(moments.back(), 60000u);
  EXPECT_EQ(RkSeriesDecimation::even(5, 1800).size(), 5u);
}

TEST(RkRunReport, a_minute_at_a_kilohertz_stays_under_five_megabytes_and_the_page_stands_alone) {
  std::vector<std::string> tags;
  for (int i = 1; i <= 29; ++i) tags.push_back("move " + std::to_string(i));
  const std::string report = scratch("minute.html");
  std::string out;
  ASSERT_EQ(rkmanipRun(writeTask("minute.xml", tags), report, out), 0) << out;
  EXPECT_NE(out.find("Complete after 60."), std::string::npos) << out;
  const std::string page = slurp(report);
  EXPECT_LT(page.size(), 5u * 1000 * 1000);
  EXPECT_GT(page.size(), 500u * 1000);  // three.js is inside
  // Nothing is fetched from beside the page or from the network.
  for (const char* reference : {"<script src", "<link", "<img", "<iframe", "@import", "url("})
    EXPECT_EQ(page.find(reference), std::string::npos) << reference;
  EXPECT_EQ(page.find("/*RK_"), std::string::npos);  // both markers filled
}

TEST(RkRunReport, no_text_of_a_task_can_end_the_pages_script_and_a_missing_three_js_stops_the_run_first) {
  const std::string report = scratch("tags.html");
  std::string out;
  ASSERT_EQ(
      rkmanipRun(writeTask("tags.xml", {"&lt;/script&gt;&lt;b&gt;x", "a \"quoted\" \\ tag"}), report, out), 0)
      << out;
  const std::string page = slurp(report);
  EXPECT_EQ(page.find("</script><b>"), std::string::npos);
  EXPECT_NE(page.find("\\u003c/script\\u003e\\u003cb\\u003ex"), std::string::npos);
  EXPECT_NE(page.find("a \\\"quoted\\\" \\\\ tag"), std::string::npos);

  const std::string missing = scratch("missing.html");
  std::remove(missing.c_str());
  out.clear();
  EXPECT_EQ(rkmanipRun(RK_SOURCE_DIR "/examples/tasks/pick_and_place.xml", missing, out,
                       "RK_THREE_JS=/nonexistent/three.min.js"),
            2);
  EXPECT_NE(out.find("three.js, which the report's 3D replay inlines, cannot be read from "
                     "/nonexistent/three.min.js (install Debian's libjs-three, or name the file with "
                     "RK_THREE_JS); nothing was run"),
            std::string::npos)
      << out;
  EXPECT_EQ(out.find("frame 1"), std::string::npos) << out;
  EXPECT_FALSE(std::ifstream(missing).good());
}

namespace {

// The distinct colours of a PNG of 8-bit RGB or RGBA pixels, as chromium's screenshots are; -1 when the file
// is not such a PNG.
long distinctColours(const std::string& png) {
  if (png.size() < 8 || png.compare(0, 8, "\x89PNG\r\n\x1a\n") != 0) return -1;
  auto be32 = [&](std::size_t at) {
    return (unsigned(static_cast<unsigned char>(png[at])) << 24) |
           (unsigned(static_cast<unsigned char>(png[at + 1])) << 16) |
           (unsigned(static_cast<unsigned char>(png[at + 2])) << 8) |
           unsigned(static_cast<unsigned char>(png[at + 3]));
  };
  unsigned width = 0, height = 0, channels = 0;
  std::string compressed;
  for (std::size_t at = 8; at + 8 <= png.size();) {
    const unsigned length = be32(at);
    const std::string type = png.substr(at + 4, 4);
    if (type == "IHDR") {
      width = be32(at + 8);
      height = be32(at + 12);
      const int depth = png[at + 16], colour = png[at + 17], interlace = png[at + 20];
      if (depth != 8 || interlace != 0 || (colour != 2 && colour != 6)) return -1;
      channels = colour == 6 ? 4 : 3;
    } else if (type == "IDAT") {
      compressed += png.substr(at + 8, length);
    }
    at += 12 + length;
  }
  const std::size_t stride = std::size_t(width) * channels;
  std::vector<unsigned char> raw((stride + 1) * height);
  uLongf size = raw.size();
  if (channels == 0 ||
      uncompress(raw.data(), &size, reinterpret_cast<const Bytef*>(compressed.data()), compressed.size()) !=
          Z_OK ||
      size != raw.size())
    return -1;
  std::vector<unsigned char> previous(stride, 0), row(stride);
  std::set<unsigned long> colours;
  for (unsigned y = 0; y < height; ++y) {
    const unsigned char filter = raw[y * (stride + 1)];
    const unsigned char* in = &raw[y * (stride + 1) + 1];
    for (std::size_t i = 0; i < stride; ++i) {
      const int a = i >= channels ? row[i - channels] : 0, b = previous[i],
                c = i >= channels ? previous[i - channels] : 0;
      const int p = a + b - c, pa = std::abs(p - a), pb = std::abs(p - b), pc = std::abs(p - c);
      const int predicted = filter == 1   ? a
                            : filter == 2 ? b
                            : filter == 3 ? (a + b) / 2
                            : filter == 4 ? (pa <= pb && pa <= pc ? a
                                             : pb <= pc           ? b
                                                                  : c)
                                          : 0;
      row[i] = static_cast<unsigned char>(in[i] + predicted);
    }
    for (std::size_t x = 0; x < stride; x += channels)
      colours.insert((unsigned long)row[x] << 16 | (unsigned long)row[x + 1] << 8 | row[x + 2]);
    previous.swap(row);
  }
  return static_cast<long>(colours.size());
}

// Headless chromium, with the software WebGL it offers where there is no GPU.
std::string chromium(const std::string& profile) {
  return "timeout 120 chromium --headless --no-sandbox --disable-gpu --enable-unsafe-swiftshader "
         "--use-angle=swiftshader --hide-scrollbars --user-data-dir='" +
         scratch(profile) + "' ";
}

}  // namespace

TEST(RkRunReport, chromium_draws_every_plot_and_the_arm_of_pick_and_place_with_no_script_error) {
  if (shell("command -v chromium >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "chromium is not installed (scripts/install-deps installs it): the page is not drawn";
  const std::string report = scratch("pick_and_place.html");
  std::string out;
  ASSERT_EQ(rkmanipRun(RK_SOURCE_DIR "/examples/tasks/pick_and_place.xml", report, out), 0) << out;

  std::string dom;
  shell(chromium("profile-dom") + "--dump-dom 'file://" + report + "' 2>/dev/null", &dom);
  EXPECT_NE(dom.find("<body data-report=\"ready\" data-webgl=\"yes\">"), std::string::npos)
      << dom.substr(0, dom.find("<h1>"));
  EXPECT_NE(dom.find("<div id=\"problems\"></div>"), std::string::npos);
  const std::size_t table = dom.find("<table id=\"frames\">");
  ASSERT_NE(table, std::string::npos);
  const std::string frames = dom.substr(table, dom.find("</table>", table) - table);
  EXPECT_EQ(frames.find("NOT reached"), std::string::npos);
  EXPECT_NE(frames.find("<td>frame 4 \"back off\"</td>"), std::string::npos);
  EXPECT_EQ(dom.find("<svg"), dom.find("<svg width=\"960\" height=\"220\""));
  std::size_t plots = 0;
  for (std::size_t at = dom.find("<svg"); at != std::string::npos; at = dom.find("<svg", at + 1)) ++plots;
  EXPECT_EQ(plots, 6u);  // x, y, z, the errors, the top and side views

  // The replay alone, everything else hidden: the arm, its path and goals are drawn, not a blank canvas.
  std::string alone = slurp(report);
  alone.replace(alone.find("</head>"), 0, "<style>h1,h2,table,svg,.legend,.row,p{display:none}</style>");
  const std::string replay = scratch("replay.html"), png = scratch("replay.png");
  std::ofstream(replay) << alone;
  std::remove(png.c_str());
  shell(chromium("profile-shot") + "--window-size=1000,600 --screenshot='" + png + "' 'file://" + replay +
        "' >/dev/null 2>&1");
  const long colours = distinctColours(slurp(png));
  EXPECT_GT(colours, 800) << png;  // a blank canvas beside the controls gives about 240

  // Without WebGL the view says so, and the page is still whole.
  dom.clear();
  shell(chromium("profile-nogl") + "--disable-webgl --dump-dom 'file://" + report + "' 2>/dev/null", &dom);
  EXPECT_NE(dom.find("<body data-report=\"ready\" data-webgl=\"no\">"), std::string::npos)
      << dom.substr(0, dom.find("<h1>"));
  EXPECT_NE(dom.find("The 3D replay needs WebGL"), std::string::npos);
}
