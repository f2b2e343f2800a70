// Converts floating-point numbers to integers; defined for every number, unlike a cast.
#pragma once

#include <cstdint>

namespace vexor {

// Truncates toward zero. Returns 0 for negative numbers and NaN, the largest integer for numbers
// that are too large.
constexpr std::uint64_t SaturateToUint64(double number) {
  constexpr double kTwoTo64 = 18446744073709551616.0;
  if (!(number > 0.0)) return 0;
  return number < kTwoTo64 ? static_cast<std::uint64_t>(number) : UINT64_MAX;
}

}  // namespace vexor
