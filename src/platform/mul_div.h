// Scaling between pixels at 96 dpi and pixels of a screen.
#pragma once

#include <cstdint>
#include <limits>

namespace quilmark {

// number * numerator / denominator with 64 bits in between, rounded to the nearest, halves away from
// zero. -1 for a denominator of 0 and for a result beyond 32 bits, as the Windows function of this name.
constexpr int MulDiv(int number, int numerator, int denominator) {
  if (denominator == 0) return -1;
  const int64_t product = int64_t{number} * numerator;
  const int64_t divisor = denominator;
  const int64_t magnitude = product < 0 ? -product : product;
  const int64_t size = divisor < 0 ? -divisor : divisor;
  const int64_t rounded = (magnitude + size / 2) / size;
  if (rounded > std::numeric_limits<int>::max()) return -1;
  const bool isNegative = (product < 0) != (divisor < 0);
  return static_cast<int>(isNegative ? -rounded : rounded);
}

}  // namespace quilmark
