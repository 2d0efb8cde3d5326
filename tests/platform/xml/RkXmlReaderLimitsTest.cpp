// The reader's caps and its handling of files that change or are not files at all, through the real reader
// and real files: every refusal is one line, no shape makes a read take more than 16 times the document's
// size in memory (measured) or more than about a second per megabyte, and unknown names do not outlive a
// read.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <future>
#include <random>
#include <string>
#include <thread>

#include "foundation/RkPrint.h"
#include "platform/xml/RkXmlReaderChecks.h"
#include "platform/xml/RkXmlTestObjects.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

namespace {

const std::string kNamespace = "http://rkmanipulation.org/namespace/ct#";
const std::string kRootOpen = "<testHolder xmlns=\"" + kNamespace + "\">\n";
const std::string kRootClose = "</testHolder>\n";

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif
#else
constexpr bool kSanitized = false;
#endif

// A document of root, head, then unit repeated until it reaches bytes, then tail. Text runs stay under the
// text cap: a unit repeated inside a group is closed and reopened every 4 MiB.
std::string shape(const std::string& head, const std::string& unit, const std::string& tail,
                  std::size_t bytes, const std::string& reopen = "") {
  std::string document = kRootOpen + head;
  document.reserve(bytes + 4096);
  std::size_t run = 0;
  while (document.size() < bytes) {
    document += unit;
    run += unit.size();
    if (!reopen.empty() && run > (4u << 20)) {
      document += reopen;
      run = 0;
    }
  }
  return document + tail + kRootClose;
}

long statusKiB(const char* key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.compare(0, std::strlen(key), key) == 0) return std::atol(line.c_str() + std::strlen(key));
  }
  return -1;
}

struct Measured {
  bool read;
  long peakKiB;  // growth of the resident set while reading
  double seconds;
  int lines;
  int signal;  // that ended the reading process, 0 if none
  char first[400];
  char last[400];
};

// Reads the file in a child process whose peak resident set is reset (after trimming the heap) just before
// the read, so that the peak it reports is the read's own.
Measured measureRead(const std::string& path) {
  Measured result{};
  int channel[2];
  if (pipe(channel) != 0) return result;
  const pid_t child = fork();
  if (child == 0) {
    close(channel[0]);
    RkTestHolder holder;
    Rk::Print::Capture capture;
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
    const long before = statusKiB("VmHWM:");
    const auto start = std::chrono::steady_clock::now();
    result.read = RkXmlReader::readFile(path, holder);
    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    result.peakKiB = statusKiB("VmHWM:") - before;
    result.lines = static_cast<int>(capture.lines().size());
    if (result.lines > 0) {
      std::snprintf(result.first, sizeof result.first, "%s", capture.lines().front().text.c_str());
      std::snprintf(result.last, sizeof result.last, "%s", capture.lines().back().text.c_str());
    }
    const bool sent = write(channel[1], &result, sizeof result) == static_cast<ssize_t>(sizeof result);
    _exit(sent ? 0 : 1);
  }
  close(channel[1]);
  const bool received = read(channel[0], &result, sizeof result) == static_cast<ssize_t>(sizeof result);
  close(channel[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  if (!received && result.signal == 0) result.signal = -1;
  return result;
}

}  // namespace

TEST(RkXmlReaderFiles, a_file_cut_and_rewritten_while_it_is_read_fails_with_one_line_and_never_a_signal) {
  TemporaryDirectory directory;
  const RkTestHolder sample = RkTestHolder::sample(300);
  std::string document;
  ASSERT_TRUE(RkXmlWriter::writeString(sample, document));
  const std::string path = directory.file("changing.xml", document);
  std::atomic<bool> stop{false};
  std::thread writer([&] {
    std::mt19937 random(5u);
    while (!stop) {
      if (truncate(path.c_str(), random() % document.size()) != 0) break;
      const int descriptor = open(path.c_str(), O_WRONLY);
      if (descriptor < 0) break;
      const bool whole =
          pwrite(descriptor, document.data(), document.size(), 0) == static_cast<ssize_t>(document.size());
      close(descriptor);
      if (!whole) break;
    }
  });
  int refused = 0, changed = 0;
  for (int i = 0; i < 300; ++i) {
    Rk::Print::Capture capture;
    RkTestHolder holder;
    if (RkXmlReader::readFile(path, holder)) {
      EXPECT_TRUE(capture.lines().empty()) << capture.text();
      EXPECT_TRUE(holder == sample) << "read " << i << " took a document that was never written";
    } else {
      ++refused;
      EXPECT_TRUE(refusedOnce(capture, path, -1)) << "read " << i;
      changed += capture.text().find("the file changed while it was read") != std::string::npos;
    }
  }
  stop = true;
  writer.join();
  std::printf("  300 reads: %d read whole, %d refused (%d of them as changed while read)\n", 300 - refused,
              refused, changed);
  EXPECT_GT(refused, 0) << "the file never changed under the reader";
}

TEST(RkXmlReaderFiles, a_fifo_a_directory_or_a_device_is_refused_at_once_without_waiting) {
  TemporaryDirectory directory;
  const std::string fifo = directory.path() + "/pipe.xml";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const std::pair<std::string, const char*> refused[] = {{fifo, "not a regular file"},
                                                         {directory.path(), "not a regular file"},
                                                         {"/dev/zero", "not a regular file"},
                                                         {directory.path() + "/missing.xml", "No such file"}};
  for (const auto& [path, reason] : refused) {
    SCOPED_TRACE(path);
    Rk::Print::Capture capture;
    RkTestHolder holder;
    auto reading =
        std::async(std::launch::async, [&, path = path] { return RkXmlReader::readFile(path, holder); });
    if (reading.wait_for(std::chrono::seconds(5)) == std::future_status::timeout) {
      ADD_FAILURE() << "the read still waits after 5 s";
      // A writer lets a read blocked in opening the pipe go on.
      const int unblock = open(path.c_str(), O_WRONLY | O_NONBLOCK);
      reading.wait();
      if (unblock >= 0) close(unblock);
    }
    EXPECT_FALSE(reading.get());
    EXPECT_TRUE(refusedOnce(capture, path, -1, reason));
  }
  // A link to a regular file is read as that file.
  std::string document;
  RkXmlWriter::writeString(RkTestHolder::sample(2), document);
  const std::string link = directory.path() + "/link.xml";
  ASSERT_EQ(symlink(directory.file("sample.xml", document).c_str(), link.c_str()), 0);
  Rk::Print::Capture capture;
  RkTestHolder holder;
  EXPECT_TRUE(RkXmlReader::readFile(link, holder));
  EXPECT_EQ(holder, RkTestHolder::sample(2));
  EXPECT_TRUE(capture.lines().empty()) << capture.text();
}

TEST(RkXmlReaderLimits, amplifying_shapes_stay_within_16_times_their_size_and_a_second_per_megabyte) {
  const std::size_t MiB = 1u << 20;
  std::string many120k, many60k, wide;
  for (int i = 0; i < 120000; ++i) many120k += " a" + std::to_string(i) + "=\"\"";
  for (int i = 0; i < 60000; ++i) many60k += " a" + std::to_string(i) + "=\"\"";
  for (int i = 0; i < 256; ++i) wide += " a" + std::to_string(i) + "=\"" + std::to_string(i) + "\"";
  std::string distinct9k, distinct20k;
  for (int i = 0; i < 9000; ++i) distinct9k += "<n" + std::to_string(i) + "/>\n";
  for (int i = 0; i < 20000; ++i) distinct20k += "<n" + std::to_string(i) + "/>\n";
  const struct {
    const char* what;
    std::function<std::string()> document;
    const char* refusal;  // null: the document reads
  } shapes[] = {
      {"56 MiB of empty elements in one vector",
       [&] { return shape("<nested count=\"1\">", "<element/>", "</nested>", 56 * MiB); },
       "more than 1000000 elements and list items"},
      {"3.5 MiB of empty elements in one vector",
       [&] { return shape("<nested count=\"1\">", "<element/>", "</nested>", 7 * MiB / 2); }, nullptr},
      {"60 MB of unknown children (15 million)", [&] { return shape("", "<x/>", "", 60000000); },
       "more than 1000000 elements and list items"},
      {"3.6 MB of unknown children (900,000)", [&] { return shape("", "<x/>", "", 3600000); }, nullptr},
      {"56 MiB of one-letter names in one list",
       [&] {
         return shape("<names count=\"1\"><group>", "a ", "</group></names>", 56 * MiB, "</group><group>");
       },
       "more than 1000000 elements and list items"},
      {"1.5 MiB of one-letter names in one list",
       [&] { return shape("<names count=\"1\"><group>", "a ", "</group></names>", 3 * MiB / 2); },
       "more than 16 times its size in memory"},
      {"120,000 attributes on one element", [&] { return shape("<x" + many120k + "/>", "", "", 0); },
       "more than 256 attributes"},
      {"60,000 attributes on one element", [&] { return shape("<x" + many60k + "/>", "", "", 0); },
       "more than 256 attributes"},
      {"4 MiB of unknown elements with 256 attributes each",
       [&] { return shape("", "<x" + wide + "/>\n", "", 4 * MiB); }, nullptr},
      {"9,000 distinct unknown names", [&] { return shape(distinct9k, "", "", 0); }, nullptr},
      {"20,000 distinct unknown names", [&] { return shape(distinct20k, "", "", 0); }, "distinct names"},
  };
  TemporaryDirectory directory;
  for (const auto& shaped : shapes) {
    SCOPED_TRACE(shaped.what);
    std::size_t bytes = 0;
    std::string path;
    {
      const std::string document = shaped.document();
      bytes = document.size();
      path = directory.file("shape.xml", document);
    }
    const Measured measured = measureRead(path);
    const double megabytes = static_cast<double>(bytes) / MiB;
    std::printf("  %-50s %7.2f MiB  %-7s %6.2f s  peak +%7.1f MiB (%4.1fx)\n", shaped.what, megabytes,
                measured.read ? "read" : "refused", measured.seconds, measured.peakKiB / 1024.0,
                measured.peakKiB * 1024.0 / static_cast<double>(bytes));
    ASSERT_EQ(measured.signal, 0);
    if (shaped.refusal) {
      EXPECT_FALSE(measured.read);
      EXPECT_EQ(measured.lines, 1) << measured.first << "...\n" << measured.last;
      EXPECT_NE(std::string(measured.first).find(shaped.refusal), std::string::npos) << measured.first;
      EXPECT_EQ(std::string(measured.first).find("RkXmlReader::read error: " + path + ":"), 0u)
          << measured.first;
    } else {
      EXPECT_TRUE(measured.read) << measured.first;
      EXPECT_LE(measured.lines, static_cast<int>(RkXmlReader::kMaxReportLines) + 1) << measured.last;
    }
    if (kSanitized) continue;  // the sanitizers' own memory and time would be measured
    // The parser's buffers and the allocator's slack are not proportional to the document: 8 MiB for them.
    EXPECT_LE(measured.peakKiB * 1024.0, 16.0 * bytes + 8.0 * MiB);
    EXPECT_LE(measured.seconds, 0.5 + megabytes);
  }
}

TEST(RkXmlReaderNames, names_no_token_has_are_not_interned_and_one_interned_meanwhile_matches) {
  std::string attributes;
  for (int i = 0; i < 200; ++i) attributes += " zAttribute" + std::to_string(i) + "=\"\"";
  std::string document = "<testHolder xmlns=\"" + kNamespace + "\"" + attributes + ">\n";
  for (int i = 0; i < 5000; ++i) document += "<zUnknown" + std::to_string(i) + "/>\n";
  document += kRootClose;
  std::size_t heldAfterFirst = 0;
  for (int round = 0; round < 4; ++round) {
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_TRUE(RkXmlReader::readString(document, holder, "names.xml"));
    EXPECT_EQ(capture.lines().size(), RkXmlReader::kMaxReportLines + 1);
    if (round == 0) heldAfterFirst = mallinfo2().uordblks;
  }
  EXPECT_TRUE(RkToken::find(kNamespace + "zUnknown17").empty());
  EXPECT_TRUE(RkToken::find("zAttribute3").empty());
  // Interning 5200 names would keep about a megabyte; reading again must keep nothing.
  if (!kSanitized) {
    EXPECT_LT(mallinfo2().uordblks, heldAfterFirst + (64u << 10));
  }

  // A name interned while a document that uses it is being read becomes that document's token too.
  RkToken::LocalTable reading;
  const RkToken early = reading.token(kNamespace + "zLateName");
  EXPECT_TRUE(RkToken::find(kNamespace + "zLateName").empty());
  const RkToken late = RkXml::qualifiedToken("zLateName");
  EXPECT_EQ(early, late);
  EXPECT_EQ(early.localName(), "zLateName");
  EXPECT_EQ(reading.token(RkXml::RkCountToken.text()), RkXml::RkCountToken);
  // Two tables holding the same unknown name share its token, which lives as long as either holds it.
  RkToken shared;
  {
    RkToken::LocalTable other;
    shared = other.token(kNamespace + "zShared");
    EXPECT_EQ(reading.token(kNamespace + "zShared"), shared);
  }
  EXPECT_EQ(shared.text(), kNamespace + "zShared");
}

TEST(RkXmlReaderMessages, control_characters_in_a_refused_value_or_a_file_name_stay_on_one_line) {
  {
    Rk::Print::Capture capture;
    RkTestHolder holder;
    RkXmlReader::readString(kRootOpen +
                                "<leaves><element><key>k</key><value><count>1&#10;"
                                "RkXmlReader::read error: forged.xml:1: x&#13;\t\\</count></value></element>"
                                "</leaves>" +
                                kRootClose,
                            holder, "values.xml");
    ASSERT_EQ(capture.lines().size(), 1u) << capture.text();
    EXPECT_EQ(
        capture.lines()[0].text,
        "RkXmlReader::read error: values.xml:2: \"1\\nRkXmlReader::read error: forged.xml:1: x\\r\\t\\\\\" "
        "is not an unsigned integer\n");
  }
  TemporaryDirectory directory;
  const std::string broken = directory.file("two\nlines.xml", kRootOpen);
  const std::string missing = directory.path() + "/gone\r\n.xml";
  for (const std::string& path : {broken, missing}) {
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_FALSE(RkXmlReader::readFile(path, holder));
    EXPECT_TRUE(refusedOnce(capture, Rk::Print::escaped(path), -1)) << capture.text();
  }
}

TEST(RkXmlReaderMessages, a_read_prints_at_most_200_report_lines_and_counts_the_rest_in_one_more) {
  std::string document = kRootOpen;
  for (int i = 0; i < 1000; ++i) document += "<stranger/>\n";
  document += kRootClose;
  Rk::Print::Capture capture;
  RkTestHolder holder;
  EXPECT_TRUE(RkXmlReader::readString(document, holder, "lines.xml"));
  ASSERT_EQ(capture.lines().size(), 201u);
  EXPECT_EQ(
      capture.lines()[199].text,
      "RkXmlReader::read error: lines.xml:201: unknown element \"stranger\" in \"testHolder\" skipped\n");
  EXPECT_EQ(capture.lines()[200].level, 4);
  EXPECT_EQ(capture.lines()[200].text, "RkXmlReader::read: lines.xml: 800 more report lines not shown\n");
}
