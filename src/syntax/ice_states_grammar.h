// What is wrong with device states in an option text; nothing for a good one.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParseIceState`. Empty text and "None" are good: no state is asked for.
std::optional<Fault> CheckIceStates(std::string_view text);

// Of `ParseExeIceSleepStates`. Empty text is good.
std::optional<Fault> CheckExeIceSleepStates(std::string_view text);

}  // namespace vexor
