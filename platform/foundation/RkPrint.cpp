#include "foundation/RkPrint.h"

#include <sys/types.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace Rk {
namespace Print {
namespace {

void defaultSink(int, const char*, const char* text, void*) {
  std::fputs(text, stderr);
}

std::atomic<int> g_verbosity{5};
std::atomic<Sink> g_sink{&defaultSink};
std::atomic<void*> g_context{nullptr};

thread_local Sink t_sink = nullptr;
thread_local void* t_context = nullptr;

ssize_t keepLastByte(void* cookie, const char* data, std::size_t size) {
  if (size > 0) *static_cast<char*>(cookie) = data[size - 1];
  return static_cast<ssize_t>(size);
}

// A stream that keeps only the last byte written to it, opened once per thread.
struct TailStream {
  char last = 0;
  FILE* stream = nullptr;
  ~TailStream() {
    if (stream) std::fclose(stream);
  }
};

// The last byte of a formatted text, found without holding the text.
char lastByte(const char* format, va_list arguments) {
  thread_local TailStream tail;
  if (!tail.stream) {
    tail.stream =
        fopencookie(&tail.last, "w", cookie_io_functions_t{nullptr, &keepLastByte, nullptr, nullptr});
    if (!tail.stream) return 0;
    std::setvbuf(tail.stream, nullptr, _IONBF, 0);
  }
  tail.last = 0;
  std::vfprintf(tail.stream, format, arguments);
  std::fflush(tail.stream);
  return tail.last;
}

// Ends a text that did not fit the buffer with "…", and with the line feed the whole text ended in.
void markCut(char* buffer, std::size_t size, char last) {
  const char ellipsis[] = "\xE2\x80\xA6";
  std::size_t cut = size - sizeof ellipsis - 1;
  // Never split a UTF-8 sequence.
  while (cut > 0 && (static_cast<unsigned char>(buffer[cut]) & 0xC0) == 0x80) --cut;
  std::memcpy(buffer + cut, ellipsis, sizeof ellipsis - 1);
  cut += sizeof ellipsis - 1;
  if (last == '\n') buffer[cut++] = '\n';
  buffer[cut] = '\0';
}

void emit(int level, const char* origin, const char* format, va_list arguments) {
  if (!t_sink && level > g_verbosity.load(std::memory_order_relaxed)) return;
  thread_local char buffer[1024];
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(buffer, sizeof buffer, format, arguments);
  if (length >= static_cast<int>(sizeof buffer)) markCut(buffer, sizeof buffer, lastByte(format, again));
  va_end(again);
  if (t_sink) {
    t_sink(level, origin, buffer, t_context);
  } else {
    g_sink.load()(level, origin, buffer, g_context.load());
  }
}

}  // namespace

void write(int level, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  emit(level, nullptr, format, arguments);
  va_end(arguments);
}

void writeFrom(const char* origin, int level, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  emit(level, origin, format, arguments);
  va_end(arguments);
}

std::string escaped(std::string_view text) {
  static const char hex[] = "0123456789abcdef";
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) >= 0x80 &&
        static_cast<unsigned char>(text[i + 1]) < 0xA0) {
      // A C1 control character in UTF-8, which terminals may act on.
      const unsigned char code = static_cast<unsigned char>(text[++i]);
      out += "\\u00";
      out += hex[code >> 4];
      out += hex[code & 15];
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\r') {
      out += "\\r";
    } else if (c == '\t') {
      out += "\\t";
    } else if (c == '\\') {
      out += "\\\\";
    } else if (c < 0x20 || c == 0x7F) {
      out += "\\x";
      out += hex[c >> 4];
      out += hex[c & 15];
    } else {
      out += static_cast<char>(c);
    }
  }
  return out;
}

int verbosity() {
  return g_verbosity.load();
}
void setVerbosity(int level) {
  g_verbosity.store(level);
}

void setSink(Sink sink, void* context) {
  g_context.store(context);
  g_sink.store(sink ? sink : &defaultSink);
}

ThreadSink::ThreadSink(Sink sink, void* context) : m_previousSink(t_sink), m_previousContext(t_context) {
  t_sink = sink;
  t_context = context;
}

ThreadSink::~ThreadSink() {
  t_sink = m_previousSink;
  t_context = m_previousContext;
}

Capture::Capture()
    : m_previousSink(g_sink.load()), m_previousContext(g_context.load()), m_previousVerbosity(verbosity()) {
  setVerbosity(1000);
  setSink(&Capture::receive, this);
}

Capture::~Capture() {
  setSink(m_previousSink, m_previousContext);
  setVerbosity(m_previousVerbosity);
}

std::string Capture::text() const {
  std::string all;
  for (const Line& line : m_lines) all += line.text;
  return all;
}

void Capture::receive(int level, const char*, const char* text, void* context) {
  static_cast<Capture*>(context)->m_lines.push_back({level, text});
}

}  // namespace Print
}  // namespace Rk
