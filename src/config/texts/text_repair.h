// What a faulty or doubtful option text was probably meant to be.
#pragma once

#include <string>
#include <string_view>

#include "config/tables/option_table.h"

namespace vexor {

// Returns a text without fault or doubt that the text was probably meant to be; empty when none is
// near. The words replaced are at most fifteen.
std::string RepairText(const OptionRow& option, std::string_view text);

// Returns the text with the separator that its grammar has in place of the one that it is often
// given: "C1;C6" for "C1,C6", "Specific:0,1" for "Specific:0;1". Empty where both are good, and for
// a text without the wrong one.
std::string RejoinItems(Syntax syntax, std::string_view text);

// Returns what to write in place of a text that the hint comments of written files list although no
// parser knows it; empty for any other text. Case does not matter.
std::string_view FindHintCorrection(Syntax syntax, std::string_view text);

// Returns the word or number at an offset of the text.
std::string_view PieceAt(std::string_view text, std::size_t at);

}  // namespace vexor
