// Compares two texts line by line, like the program diff.
#pragma once

#include <string>
#include <string_view>

namespace tools::vexorcfg {

// Returns the differences in unified format, with three lines of context; empty text if there are
// none. Ignores white space at the ends of lines. Takes time linear in the texts; in return, the
// result for repetitive texts may be longer than necessary.
std::string DiffLines(std::string_view name_a, std::string_view a, std::string_view name_b,
                      std::string_view b);

}  // namespace tools::vexorcfg
