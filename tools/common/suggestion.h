// Suggests names for mistyped ones.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tools {

// Returns the name that differs least from the text, ignoring case; empty if none is similar.
std::string FindSimilar(std::string_view text, std::span<const std::string> names);

// Returns "; did you mean "NAME"?" with that name; empty if none is similar.
std::string SuggestName(std::string_view text, std::span<const std::string> names);

}  // namespace tools
