// What is wrong with a word for a power plan or a power source; nothing for a good one. Empty text
// and "Default" are good: they ask for no change.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParsePowerScheme`.
std::optional<Fault> CheckPowerScheme(std::string_view text);

// Of `ParseBatteryOptions`.
std::optional<Fault> CheckBatteryOption(std::string_view text);

}  // namespace vexor
