// What is wrong with C-states in an option text; nothing for a good one. Empty text is good:
// nothing is asked for.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParseExeCstates`.
std::optional<Fault> CheckExeCstates(std::string_view text);

// Of `ParseLimitCstates`.
std::optional<Fault> CheckLimitCstates(std::string_view text);

// Of `ParsePerStateConditions`.
std::optional<Fault> CheckPerStateConditions(std::string_view text);

// Of `ParsePerCStateSetting` for numbers.
std::optional<Fault> CheckPerCStateNumbers(std::string_view text);

// Of `ParsePerCStateSetting` for lists of numbers that are hexadecimal only behind "0x".
std::optional<Fault> CheckPerCStateLists(std::string_view text);

}  // namespace vexor
