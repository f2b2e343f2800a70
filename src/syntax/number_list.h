// Number lists inside option texts: "0,2-4" or "[0,2-4]". The grammar of `GetIntegerList` at ",",
// for parsers that never throw for a bad number.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "syntax/fault_note.h"
#include "util/text.h"

namespace vexor {

// Appends the numbers of the list to `numbers`, unless that is null, each stored in 32 bits. A bad
// item takes what the list has given before it along. Returns how many numbers the list has, those
// that go again included.
// Throws std::length_error when `numbers` would take more than `kMaxRangeValues` of them.
std::uint64_t ReadNumberList(std::string_view text, std::vector<int>* numbers, FaultNote& note,
                             NumberBase base = NumberBase::kDecimal);

}  // namespace vexor
