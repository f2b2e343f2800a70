// What is wrong with a list of wake events in an option text; nothing for a good one. Empty text is
// good: nothing is asked for.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParseWakeEvents`.
std::optional<Fault> CheckWakeEvents(std::string_view text);

}  // namespace vexor
