// The units of times, and how a time is written: what the parsers read and what the messages, the
// schema and the reference say of it.
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

// The units as words, between those of two other forms.
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

// Of a duration, which may be given in microseconds, too.
inline constexpr auto kDurationUnits =
    UnitWords(std::to_array<std::string_view>({"usec"}), kNoWords);

// Of the length of a run, which may be a number of cycles in each set.
inline constexpr auto kExeUnits =
    UnitWords(kNoWords, std::to_array<std::string_view>({"PerSet", "#Set"}));

inline constexpr std::string_view kDurationStart = "unit:value or unit:low-high with ";
inline constexpr std::string_view kDurationForm =
    JoinedTexts<kDurationStart, kOneOf<kDurationUnits>.text>::kText;

}  // namespace vexor
