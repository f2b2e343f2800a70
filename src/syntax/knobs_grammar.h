// What is doubtful about the text of a KNOBS option.
#pragma once

#include <optional>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Finds the first item of a list at ";" that no keyword names. A test may have knobs of its own, so
// an unknown one is never a fault.
std::optional<Fault> DoubtKnobs(std::string_view text);

}  // namespace vexor
