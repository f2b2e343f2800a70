// What the parsers of number lists have in common.
#pragma once

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vexor {

constexpr bool IsBracket(char c) { return c == '[' || c == ']'; }

// Returns the text without brackets. The result refers to `buffer` if there were any.
inline std::string_view RemoveBrackets(std::string_view text, std::string& buffer) {
  if (text.find_first_of("[]") == std::string_view::npos) return text;
  buffer = text;
  std::erase_if(buffer, IsBracket);
  return buffer;
}

// Throws the error of an item that gives more numbers than `kMaxRangeValues`.
[[noreturn]] inline void ThrowTooLong(std::string_view item) {
  throw std::length_error("more than 16777216 values in \"" + std::string(item) + "\"");
}

}  // namespace vexor
