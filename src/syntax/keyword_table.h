// The keywords of the tests' options, with what the command line has to know of each.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace vexor {

// What a keyword takes on a command line. A switch or a knob that stands alone means "true".
enum class KeywordKind : std::uint8_t {
  kValue,   // the option's text must follow
  kSwitch,  // "true" or "false" may follow and is the option's text
  kKnob,    // "true" or "false" may follow and adds the keyword to a list of words or removes it
};

struct Keyword {
  std::string_view name;
  std::string_view short_name;
  KeywordKind kind = KeywordKind::kValue;
  std::string_view unit = {};  // what a value without a unit is given in, such as "msec:"
};

std::span<const Keyword> Keywords();

// Returns the row of a keyword, exactly; null when there is none.
const Keyword* FindKeyword(std::string_view name);

// Returns the first row of a short name, in any case; null when there is none.
const Keyword* FindShortName(std::string_view short_name);

}  // namespace vexor
