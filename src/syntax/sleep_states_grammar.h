// What is wrong with sleep states in an option text; nothing for a good one. Empty text is good:
// nothing is asked for.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParseGandSStates`.
std::optional<Fault> CheckGandSState(std::string_view text);

// Of `ParseSleepStates`.
std::optional<Fault> CheckSleepStates(std::string_view text);

}  // namespace vexor
