// Repair of invalid or doubtful option texts, for suggestions.
#pragma once

#include <string>
#include <string_view>

#include "config/tables/option_table.h"

namespace vexor {

// Returns the text that was probably meant: one that its grammar accepts without doubt. Returns
// empty text if no repair leads to one. At most fifteen words are replaced.
std::string RepairText(const OptionRow& option, std::string_view text);

// Replaces the wrong separator by the one of the grammar: "C1;C6" for "C1,C6", "Specific:0,1" for
// "Specific:0;1". Returns empty text if the grammar accepts both, or if there is none to replace.
std::string RejoinItems(Syntax syntax, std::string_view text);

// Returns the valid text for one that the hint comments list by mistake; empty for any other text.
// Ignores case.
std::string_view FindHintCorrection(Syntax syntax, std::string_view text);

// Returns the word or number at an offset, up to the next separator.
std::string_view PieceAt(std::string_view text, std::size_t at);

}  // namespace vexor
