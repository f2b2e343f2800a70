// What is wrong with a time in an option text; nothing for a good one. Each check reads with the
// very parser of its exported function, and finds fault where that goes on with a neutral value.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Of `ParseOnTimeType`. Empty and "Invalid" are good.
std::optional<Fault> CheckDuration(std::string_view text);

// Of `ParseExeCycleTimeType`. Empty is good.
std::optional<Fault> CheckExeCycles(std::string_view text);

}  // namespace vexor
