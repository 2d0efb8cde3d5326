#pragma once
// Counts heap allocations made while counting is on: the test binary replaces the global operator new.

namespace RkAllocationCounter {
void start();
// Stops counting and returns the allocations made since start.
long stop();
}  // namespace RkAllocationCounter
