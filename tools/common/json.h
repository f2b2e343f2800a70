// JSON output of the commands.
#pragma once

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

namespace tools {

using Json = nlohmann::ordered_json;  // members stay in the order in which they are set

// Returns a number that is printed without ".0" if it is whole.
inline Json MakeJson(double number) {
  constexpr double kMostExact = 9007199254740992;  // 2 to the 53rd
  const bool is_whole = number == std::trunc(number) && std::abs(number) < kMostExact;
  return is_whole ? Json(static_cast<std::int64_t>(number)) : Json(number);
}

// Returns one line, or several with an indent. Bytes that are not UTF-8 become U+FFFD.
inline std::string PrintJson(const Json& json, int indent = -1) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace tools
