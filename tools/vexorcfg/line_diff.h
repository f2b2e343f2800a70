// The lines in which two texts differ, as the tool "diff" shows them.
#pragma once

#include <string>
#include <string_view>

namespace tools::vexorcfg {

// Returns the difference in the unified form, with three lines around each change; empty when the
// texts do not differ. White space at the ends of lines does not count. Costs time linear in the
// texts, at the price that a difference of repetitive texts may be longer than needed.
std::string DiffLines(std::string_view name_a, std::string_view a, std::string_view name_b,
                      std::string_view b);

}  // namespace tools::vexorcfg
