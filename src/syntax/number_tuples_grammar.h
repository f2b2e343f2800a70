// What is wrong with options of a few numbers joined by ":"; nothing for a good one. Empty text is
// good: nothing is asked for.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParseScope`.
std::optional<Fault> CheckScope(std::string_view text);

// Of `ParseRatioSpread`.
std::optional<Fault> CheckRatioSpread(std::string_view text);

// Of `ParseTimeout`.
std::optional<Fault> CheckTimeout(std::string_view text);

}  // namespace vexor
