// Explains the codes of findings.
#pragma once

#include <optional>
#include <string_view>

#include "common/status.h"

namespace tools::vexorcfg {

// Explains a code such as "VX019" in any case, or lists all for "codes". Returns nothing for a
// subject of another kind.
std::optional<Status> ExplainCode(std::string_view subject);

}  // namespace tools::vexorcfg
