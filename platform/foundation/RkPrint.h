#pragma once
// Formatted diagnostics: printf-style text formatted into a fixed per-thread buffer (no allocation) and
// handed, with its level, to a replaceable sink. Levels: 3 warnings, 4 errors, 5 notices, 7 debug.
#include <string>
#include <string_view>
#include <vector>

namespace Rk {
namespace Print {

// Receives one formatted message; origin is the printing function's signature, or null.
typedef void (*Sink)(int level, const char* origin, const char* text, void* context);

// Prints when level <= verbosity(). A text longer than 1023 bytes is cut visibly: it ends in "…", followed
// by the line feed when the whole text ended in one.
void write(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));
// As write, naming the printing function as the message's origin.
void writeFrom(const char* origin, int level, const char* format, ...) __attribute__((format(printf, 3, 4)));

// The text with control characters and backslashes written as escapes (\n, \t, \\, \x1b, \u0085), so that a
// value quoted in a message stays on its line and cannot forge another.
std::string escaped(std::string_view text);

// The verbosity threshold, 5 by default; set it at start-up.
int verbosity();
void setVerbosity(int level);

// Installs a sink (null restores the default, which writes the text to stderr).
void setSink(Sink sink, void* context);

// Sends this thread's messages to another sink while it lives (whatever the verbosity), then restores what
// was there; nests. The XML reader holds back what a document prints until it knows the document is sound.
class ThreadSink {
 public:
  ThreadSink(Sink sink, void* context);
  ~ThreadSink();
  ThreadSink(const ThreadSink&) = delete;
  ThreadSink& operator=(const ThreadSink&) = delete;

 private:
  Sink m_previousSink;
  void* m_previousContext;
};

// Captures every message printed while it lives, whatever the verbosity; for tests.
class Capture {
 public:
  struct Line {
    int level;
    std::string text;
  };
  Capture();
  ~Capture();
  Capture(const Capture&) = delete;
  Capture& operator=(const Capture&) = delete;

  const std::vector<Line>& lines() const { return m_lines; }
  // All captured texts joined, for compact assertions.
  std::string text() const;
  void clear() { m_lines.clear(); }

 private:
  static void receive(int level, const char* origin, const char* text, void* context);
  std::vector<Line> m_lines;
  Sink m_previousSink;
  void* m_previousContext;
  int m_previousVerbosity;
};

}  // namespace Print
}  // namespace Rk
