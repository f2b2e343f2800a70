// Reads number lists in option texts, such as "0,2-4" or "[0,2-4]". The grammar is that of
// `GetIntegerList` with ",", but bad numbers do not throw.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "syntax/fault_note.h"
#include "util/text.h"

namespace vexor {

// Appends the numbers of the list to `numbers`, each truncated to 32 bits; with null, only counts
// them. A bad item discards the numbers before it. Returns how many numbers the list has, including
// discarded ones.
// Throws std::length_error if it would append more than `kMaxRangeValues` numbers.
std::uint64_t ReadNumberList(std::string_view text, std::vector<int>* numbers, FaultNote& note,
                             NumberBase base = NumberBase::kDecimal);

// Returns the first item of a valid list with a number that earlier items have, too; empty if there
// is none.
std::string_view FindRepeatedNumber(std::string_view text);

}  // namespace vexor
