// Reads numbers joined by ":".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "syntax/fault_note.h"
#include "util/text.h"

namespace vexor {

// A number's largest value, and how to say so.
struct NumberLimit {
  std::uint32_t largest;
  std::string_view expected;
};

// Nothing for text that is no number of the base within the limit.
std::optional<std::uint32_t> ReadLimitedNumber(std::string_view text, const NumberLimit& limit,
                                               FaultNote& note,
                                               NumberBase base = NumberBase::kDecimal);

// Reads at most as many numbers as there are limits into `values`, which has room for them, and
// passes over blanks around them. Returns how many there are; 0 for text that has none, a bad one
// or too many. `form` says what the text should look like.
std::size_t ReadNumberTuple(std::string_view text, std::span<const NumberLimit> limits,
                            std::span<std::uint32_t> values, std::string_view form, FaultNote& note,
                            NumberBase base = NumberBase::kDecimal);

}  // namespace vexor
