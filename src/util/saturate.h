// Conversion of floating-point numbers to integers that is defined for every number.
#pragma once

#include <cstdint>

namespace vexor {

// Truncates toward zero; 0 for negative numbers and not-a-number, the largest integer for numbers
// too large.
constexpr std::uint64_t SaturateToUint64(double number) {
  constexpr double kTwoTo64 = 18446744073709551616.0;
  if (!(number > 0.0)) return 0;
  return number < kTwoTo64 ? static_cast<std::uint64_t>(number) : UINT64_MAX;
}

}  // namespace vexor
