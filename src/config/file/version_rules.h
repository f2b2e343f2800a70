// Comparison of version texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vexor {

// Splits a version at the dots, without empty pieces. The fourth piece is cut at its first "_": a
// suffix such as "_debug" does not count.
std::vector<std::string> SplitVersion(std::string_view version);

// Returns whether the first and fourth pieces equal the library's, as text; false for fewer than
// four pieces.
bool IsCompatibleVersion(std::string_view version);

}  // namespace vexor
