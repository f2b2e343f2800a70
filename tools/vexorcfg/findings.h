// Findings of the checker as lines of output.
#pragma once

#include <string>
#include <string_view>

#include "vexor/config/check.h"

namespace tools::vexorcfg {

// Returns "note", "warning" or "error".
std::string_view NameOf(vexor::Severity severity);

// Returns the part of a finding's line after file and severity: PATH: "TEXT": what is wrong, what
// was expected.
std::string FormatFinding(const vexor::Finding& finding);

}  // namespace tools::vexorcfg
