// What good option texts mean.
#pragma once

#include <string>
#include <string_view>

namespace tools::vexorcfg {

// Returns what a good text of the syntax means, in words that differ when the meanings do; empty
// for syntaxes whose texts speak for themselves.
std::string MeaningOf(std::string_view syntax, std::string_view text);

// Returns whether two texts of the syntax are good and mean the same.
bool MeanTheSame(std::string_view syntax, std::string_view a, std::string_view b);

}  // namespace tools::vexorcfg
