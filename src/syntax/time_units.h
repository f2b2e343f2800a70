// The time units and the form of a time. The parsers, and what messages, schema and reference say
// about times, are all made from these tables.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "syntax/words.h"

namespace vexor {

struct TimeUnit {
  std::string_view text;
  std::uint32_t milliseconds;
};

constexpr std::string_view WordOf(const TimeUnit& unit) { return unit.text; }

inline constexpr auto kTimeUnits = std::to_array<TimeUnit>({
    {"msec", 1},
    {"sec", 1000},
    {"min", 60000},
    {"hour", 3600000},
});

// Returns the words of the time units, with other words before and behind them.
template <std::size_t kBefore, std::size_t kBehind>
consteval auto UnitWords(const std::array<std::string_view, kBefore>& before,
                         const std::array<std::string_view, kBehind>& behind) {
  std::array<std::string_view, kBefore + kTimeUnits.size() + kBehind> words;
  auto out = std::ranges::copy(before, words.begin()).out;
  out = std::ranges::transform(kTimeUnits, out, &TimeUnit::text).out;
  std::ranges::copy(behind, out);
  return words;
}

inline constexpr std::array<std::string_view, 0> kNoWords = {};
inline constexpr auto kUnitWords = UnitWords(kNoWords, kNoWords);

// The units of a duration, which can also be given in microseconds.
inline constexpr auto kDurationUnits =
    UnitWords(std::to_array<std::string_view>({"usec"}), kNoWords);

// The units of the length of a run, which can also be a number of cycles per set.
inline constexpr auto kExeUnits =
    UnitWords(kNoWords, std::to_array<std::string_view>({"PerSet", "#Set"}));

inline constexpr std::string_view kDurationStart = "unit:value or unit:low-high with ";
inline constexpr std::string_view kDurationUnitList = kOneOf<kDurationUnits>.text;
inline constexpr std::string_view kDurationForm =
    JoinedTexts<kDurationStart, kDurationUnitList>::kText;

}  // namespace vexor
