#include "tools/rkmanip/RkSeriesDecimation.h"

#include <algorithm>
#include <cmath>

namespace RkSeriesDecimation {

std::vector<std::size_t> minMax(const std::vector<double>& values, std::size_t spans) {
  return minMax(std::vector<std::vector<double>>{values}, spans);
}

std::vector<std::size_t> minMax(const std::vector<std::vector<double>>& series, std::size_t spans) {
  const std::size_t size = series.empty() ? 0 : series.front().size();
  std::vector<std::size_t> kept;
  if (spans == 0 || size <= 2 * spans) {
    for (std::size_t i = 0; i < size; ++i) kept.push_back(i);
    return kept;
  }
  kept.push_back(0);
  for (std::size_t span = 0; span < spans; ++span) {
    const std::size_t begin = span * size / spans, end = (span + 1) * size / spans;
    for (const std::vector<double>& values : series) {
      std::size_t low = end, high = end, gap = end;
      for (std::size_t i = begin; i < end; ++i) {
        const double value = values[i];
        if (std::isnan(value)) {
          if (gap == end) gap = i;
        } else {
          if (low == end || value < values[low]) low = i;
          if (high == end || value > values[high]) high = i;
        }
      }
      for (std::size_t i : {low, high, gap})
        if (i != end) kept.push_back(i);
    }
  }
  kept.push_back(size - 1);
  std::sort(kept.begin(), kept.end());
  kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
  return kept;
}

std::vector<std::size_t> even(std::size_t size, std::size_t count) {
  std::vector<std::size_t> kept;
  if (size == 0) return kept;
  const std::size_t step = std::max<std::size_t>(1, (size + count - 1) / std::max<std::size_t>(count, 1));
  for (std::size_t i = 0; i < size; i += step) kept.push_back(i);
  if (kept.back() != size - 1) kept.push_back(size - 1);
  return kept;
}

}  // namespace RkSeriesDecimation
