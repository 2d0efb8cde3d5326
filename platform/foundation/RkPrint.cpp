#include "foundation/RkPrint.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>

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

void emit(int level, const char* origin, const char* format, va_list arguments) {
  if (!t_sink && level > g_verbosity.load(std::memory_order_relaxed)) return;
  thread_local char buffer[1024];
  std::vsnprintf(buffer, sizeof buffer, format, arguments);
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
