// How a configuration file's version text is judged.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vexor {

// Splits a version text into its pieces, empty ones left out; the fourth is cut at its first "_".
std::vector<std::string> SplitVersion(std::string_view version);

// Returns whether the first and fourth pieces are the library's own, as texts; false for a version
// of fewer than four pieces.
bool IsCompatibleVersion(std::string_view version);

}  // namespace vexor
