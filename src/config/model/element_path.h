// Paths of elements, in the one form that all outputs use: the names of the elements below the
// root, such as "GLOBALPM/CORE/CSTATES/ActiveTime". Entries of a list end in "[1]", "[2]", ...
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vexor {

// Returns the path of an element below `parent`, which is empty for the root.
std::string JoinPath(std::string_view parent, std::string_view name);

// Returns the path of an entry of a list, counted from 1.
std::string EntryPath(std::string_view list, std::size_t number);

// Returns the name, cut off if it is very long. Every finding below an element repeats its name, so
// that uncut names could make the output quadratic in the file's size.
std::string ShortenName(std::string_view name);

}  // namespace vexor
