// The keywords of the test options, and what the command line needs to know about each.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace vexor {

// What follows a keyword on a command line. A switch or knob without a value means "true".
enum class KeywordKind : std::uint8_t {
  kValue,   // the text of the option, required
  kSwitch,  // "true" or "false", optional: the text of the option
  kKnob,    // "true" or "false", optional: adds the keyword to a list of words or removes it
};

struct Keyword {
  std::string_view name;
  std::string_view short_name;
  KeywordKind kind = KeywordKind::kValue;
  std::string_view unit = {};  // prefix of a value without a unit, such as "msec:"
};

std::span<const Keyword> Keywords();

// Returns the row of a keyword, compared exactly; null if there is none.
const Keyword* FindKeyword(std::string_view name);

// Returns the first row with a short name, ignoring case; null if there is none.
const Keyword* FindShortName(std::string_view short_name);

}  // namespace vexor
