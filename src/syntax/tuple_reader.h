// Reads numbers separated by ":".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "syntax/fault_note.h"
#include "util/text.h"

namespace vexor {

// The largest valid value of a number, and what a fault says is expected.
struct NumberLimit {
  std::uint32_t largest;
  std::string_view expected;
};

// Reads one number of at most `limit.largest`. For any other text, notes a fault and returns
// nothing.
std::optional<std::uint32_t> ReadLimitedNumber(std::string_view text, const NumberLimit& limit,
                                               FaultNote& note,
                                               NumberBase base = NumberBase::kDecimal);

// Reads numbers into `values`, each with the limit at its place, ignoring blanks around them.
// `values` must not be shorter than `limits`. Returns how many numbers there are: 0 for an empty
// text, or with a fault noted, for a bad number or too many. Where there are too many, the fault
// says that `form` is expected.
std::size_t ReadNumberTuple(std::string_view text, std::span<const NumberLimit> limits,
                            std::span<std::uint32_t> values, std::string_view form, FaultNote& note,
                            NumberBase base = NumberBase::kDecimal);

}  // namespace vexor
