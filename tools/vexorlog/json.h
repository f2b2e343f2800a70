// Times of logs in JSON output.
#pragma once

#include "common/json.h"
#include "vexor/logging/log_reader.h"

namespace tools::vexorlog {

using tools::MakeJson;

// Returns a time stamp, or null for a row without one.
inline Json MakeJson(vexor::LogTime time) {
  return time == vexor::kNoLogTime ? Json() : Json(vexor::FormatLogTime(time));
}

// Returns seconds with millisecond precision.
inline Json MakeSeconds(vexor::LogTime milliseconds) {
  return static_cast<double>(milliseconds) / 1000;
}

}  // namespace tools::vexorlog
