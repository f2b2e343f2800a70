// JSON as the commands print it.
#pragma once

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "vexor/logging/log_reader.h"

namespace tools::vexorlog {

using Json = nlohmann::ordered_json;  // members stay in the order in which they are set

// A time stamp, or null for a row that has none.
inline Json MakeJson(vexor::LogTime time) {
  return time == vexor::kNoLogTime ? Json() : Json(vexor::FormatLogTime(time));
}

// Seconds, to the millisecond.
inline Json MakeSeconds(vexor::LogTime milliseconds) {
  return static_cast<double>(milliseconds) / 1000;
}

// Whole numbers are printed without ".0".
inline Json MakeJson(double number) {
  constexpr double kMostExact = 9007199254740992;  // 2 to the 53rd
  const bool is_whole = number == std::trunc(number) && std::abs(number) < kMostExact;
  return is_whole ? Json(static_cast<std::int64_t>(number)) : Json(number);
}

// One line, or lines with an indent. Bytes that are no UTF-8 become U+FFFD.
inline std::string PrintJson(const Json& json, int indent = -1) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace tools::vexorlog
