// What is wrong with an affinity in an option text; nothing for a good one. Empty text is good: it
// means "All".
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParsePkgAffinity`.
std::optional<Fault> CheckPkgAffinity(std::string_view text);

// Of `ParseUnitAffinity`. "Any", which is replaced, is a fault.
std::optional<Fault> CheckUnitAffinity(std::string_view text);

// Of `ParseThreadAffinity`.
std::optional<Fault> CheckThreadAffinity(std::string_view text);

// What is doubtful about a good affinity of packages or units: numbers without "Specific:" are
// read, but the mode is "All".
std::optional<Fault> DoubtListAlone(std::string_view text);

}  // namespace vexor
