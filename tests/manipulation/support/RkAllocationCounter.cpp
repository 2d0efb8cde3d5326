#include "manipulation/support/RkAllocationCounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<bool> g_counting{false};
std::atomic<long> g_allocations{0};
}  // namespace

// Kept in a unit of its own so that no caller sees both halves inlined together.
void* operator new(std::size_t size) {
  if (g_counting.load(std::memory_order_relaxed)) g_allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* memory = std::malloc(size ? size : 1)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace RkAllocationCounter {
void start() {
  g_allocations = 0;
  g_counting = true;
}
long stop() {
  g_counting = false;
  return g_allocations;
}
}  // namespace RkAllocationCounter
