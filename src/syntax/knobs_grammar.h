// What is doubtful about the text of a KNOBS option.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "syntax/fault.h"

namespace vexor {

// Finds the first item of a list at ";" that is neither a keyword nor one of the test's own knobs.
// A lab may have more knobs, so an unknown one is never a fault.
std::optional<Fault> DoubtKnobs(std::string_view text, std::span<const std::string_view> own);
std::optional<Fault> DoubtKnobs(std::string_view text);

}  // namespace vexor
