// The keywords of the tests' options, with what the command line has to know of each.
#pragma once

#include <cstdint>
#include <string_view>

namespace vexor {

enum class KeywordKind : std::uint8_t {
  kValue,   // a value must follow
  kSwitch,  // "true" or "false" may follow; alone it means "true"
};

struct Keyword {
  std::string_view name;
  std::string_view short_name;
  KeywordKind kind = KeywordKind::kValue;
  std::string_view unit = {};  // what a value without a unit is given in, such as "msec:"
};

// Returns the row of a keyword, exactly; null when there is none.
const Keyword* FindKeyword(std::string_view name);

// Returns the first row of a short name, in any case; null when there is none.
const Keyword* FindShortName(std::string_view short_name);

// Returns the short name that is most like the text.
std::string_view FindNearestShortName(std::string_view text);

}  // namespace vexor
