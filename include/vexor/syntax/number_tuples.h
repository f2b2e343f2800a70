// Options that consist of a few numbers joined by ":".
//
//   scope    the share that takes part, in per cent from 0 to 100: "packages:modules:cores" or
//            "packages:modules:cores:threads", such as "100:0:0"
//   spread   the weights of low, medium and high ratios, as hexadecimal bytes: "low:medium:high",
//            such as "FF:FF:FF"
//   timeout  how long to wait and how often: "seconds:times", such as "120:5", or "seconds" for
//            once
//
// Blanks around a number are ignored. Any thread may call.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "vexor/export.h"

namespace vexor {

struct Scope {
  std::uint8_t packages = 0;
  std::uint8_t modules = 0;
  std::uint8_t cores = 0;
  std::uint8_t threads = 0;
};

struct RatioSpread {
  std::uint8_t low = 0;
  std::uint8_t medium = 0;
  std::uint8_t high = 0;
};

struct Timeout {
  std::uint32_t seconds = 0;
  std::uint32_t times = 1;
};

// Return the parsed numbers, or nothing for text that does not have the form above.
VEXOR_EXPORT std::optional<Scope> ParseScope(std::string_view text);
VEXOR_EXPORT std::optional<RatioSpread> ParseRatioSpread(std::string_view text);
VEXOR_EXPORT std::optional<Timeout> ParseTimeout(std::string_view text);

}  // namespace vexor
