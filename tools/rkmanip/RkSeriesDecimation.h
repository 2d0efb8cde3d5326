#pragma once
// Thins a long series of evenly spaced samples for drawing without losing what matters in it: in each of a
// number of equal spans, the samples holding the smallest and the largest value (and the first one that is
// not a number, so that a gap still shows), in their order, and always the first and the last sample.
#include <cstddef>
#include <vector>

namespace RkSeriesDecimation {
// The indices kept of values, ascending; all of them when there are no more than two per span.
std::vector<std::size_t> minMax(const std::vector<double>& values, std::size_t spans);
// The same over several series of one length at once: the union of what each keeps, ascending.
std::vector<std::size_t> minMax(const std::vector<std::vector<double>>& series, std::size_t spans);
// Every step-th index from 0, and the last, for a replay of at most about `count` moments.
std::vector<std::size_t> even(std::size_t size, std::size_t count);
}  // namespace RkSeriesDecimation
