#include "vexor/syntax/time.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <optional>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/time_units.h"
#include "util/saturate.h"
#include "util/text.h"
#include "vexor/util/numbers.h"
#include "vexor/util/random.h"

namespace vexor {

namespace {

constexpr std::string_view kNumberForm = "decimal digits, or 0x and hexadecimal digits";

constexpr std::string_view kDurationExample = " (for example msec:80)";
constexpr std::string_view kDurationHelp = JoinedTexts<kDurationForm, kDurationExample>::kText;

const TimeUnit* FindUnit(std::string_view word) { return FindWord(kTimeUnits, word); }

// For grammars in which units must be in lower case.
const TimeUnit* FindExactUnit(std::string_view word) {
  const auto is_upper = [](char c) { return c >= 'A' && c <= 'Z'; };
  return std::ranges::any_of(word, is_upper) ? nullptr : FindUnit(word);
}

// The number of random times drawn so far. It is added to the seed, so that calls with equal seeds
// draw different times.
constinit std::atomic<unsigned> g_drawn_times = 0;

// Returns 0 for a bad number.
std::uint64_t ReadNumber(std::string_view text) { return ParseUnsigned(text).value_or(0); }

std::uint64_t ReadNumber(std::string_view text, FaultNote& note) {
  const UnsignedText number = ReadUnsigned(text);
  if (number.kind == UnsignedText::Kind::kNotANumber) note.At(text, "not a number", kNumberForm);
  if (number.kind == UnsignedText::Kind::kBeyond64Bits) {
    note.At(text, "number too large", "a number that fits 64 bits", FaultKind::kLargeNumber);
  }
  return number.value;
}

// Reads a number of units that are `factor` milliseconds or microseconds long.
std::uint64_t ReadUnits(std::string_view text, std::uint32_t factor, FaultNote& note) {
  const std::uint64_t number = ReadNumber(text, note);
  if (number > UINT32_MAX || number * factor > UINT32_MAX) {
    note.At(text, "number too large", "a time that fits 32 bits", FaultKind::kLargeNumber);
  }
  return number;
}

// Bounds are truncated to 32 bits.
struct Bounds {
  std::uint32_t min = 0;
  std::uint32_t max = 0;

  [[nodiscard]] std::uint32_t Middle() const { return (min + max) >> 1U; }
};

// Reads "number" or "low-high", split at the first dash, without trimming.
Bounds ReadBounds(std::string_view text, std::uint32_t factor, FaultNote& note) {
  const std::size_t dash = FindByte(text, '-');
  const auto read = [&](std::string_view bound) {
    return static_cast<std::uint32_t>(ReadUnits(bound, factor, note));
  };
  const std::uint32_t min = read(text.substr(0, dash));
  if (dash == std::string_view::npos) return {min, min};
  const std::uint32_t max = read(text.substr(dash + 1));
  if (max < min) {
    note.At(text, "reversed range", "the lower value first", FaultKind::kReversedRange);
  }
  return {min, max};
}

struct UnitAndValue {
  std::string_view unit;
  std::string_view value;
};

std::optional<UnitAndValue> SplitUnitAndValue(std::string_view text) {
  std::string_view unit;
  std::string_view value;
  std::string_view surplus;
  if (!TakeFilledItem(text, ':', unit) || !TakeFilledItem(text, ':', value)) return std::nullopt;
  if (TakeFilledItem(text, ':', surplus)) return std::nullopt;
  return UnitAndValue{TrimBlanks(unit), TrimBlanks(value)};
}

ONTIME_TYPE ReadOnTime(std::string_view text, FaultNote& note) {
  ONTIME_TYPE time;
  if (text.empty() || text == "Invalid") return time;
  time.isSet = true;
  const auto parts = SplitUnitAndValue(text);
  if (!parts) {
    note.AtEnd("not a unit and a value", kDurationHelp);
    return time;
  }
  const TimeUnit* const unit = FindUnit(parts->unit);
  // Microseconds and ticks are deliberately recognised by a part of the unit, such as in "usecs".
  if (unit == nullptr && ContainsIgnoreCase(parts->unit, "usec")) {
    const Bounds bounds = ReadBounds(parts->value, 1, note);
    time.avgUs = bounds.Middle();
    time.minUs = bounds.min;
    time.maxUs = bounds.max;
    return time;
  }
  if (unit == nullptr && ContainsIgnoreCase(parts->unit, "ticks")) {
    time.avgUs = time.minUs = time.maxUs = 1;
    return time;
  }
  if (unit == nullptr) note.At(parts->unit, "unknown unit", kOneOf<kDurationUnits>);
  const std::uint32_t factor = unit != nullptr ? unit->milliseconds : 1;
  const Bounds bounds = ReadBounds(parts->value, factor, note);
  time.avgMs = (factor * (bounds.min + bounds.max)) >> 1U;
  time.minMs = factor * bounds.min;
  time.maxMs = factor * bounds.max;
  return time;
}

// An execution length, as given in a text.
struct ExeLength {
  std::uint64_t number = 0;
  std::uint64_t factor = 0;  // milliseconds of the unit; 0 for a number of cycles
  bool is_per_set = false;
};

ExeLength ReadExeLength(std::string_view text, FaultNote& note) {
  std::string_view rest = text;
  std::string_view first;
  std::string_view second;
  TakeFilledItem(rest, ':', first);
  if (!TakeFilledItem(rest, ':', second)) return {.number = ReadNumber(text, note)};
  first = TrimBlanks(first);
  second = TrimBlanks(second);
  ExeLength length;
  if (const TimeUnit* const unit = FindUnit(first)) {
    length.factor = unit->milliseconds;
    length.number = ReadNumber(second, note);
  } else {
    length.is_per_set = ContainsIgnoreCase(text, "PerSet") || ContainsIgnoreCase(text, "#Set");
    if (!length.is_per_set) note.At(first, "unknown unit", kOneOf<kExeUnits>);
    length.number = ReadNumber(second);
    if (length.number == 0) length.number = ReadNumber(first, note);
  }
  if (TakeFilledItem(rest, ':', first)) {
    note.At(first, "third item, not read", "the end of the text", FaultKind::kSurplus);
  }
  return length;
}

std::string JoinWithColon(std::string_view a, std::string_view b) {
  return std::string(a).append(":").append(b);
}

}  // namespace

std::optional<Fault> CheckDuration(std::string_view text) {
  FaultNote note(text);
  ReadOnTime(text, note);
  return note.First();
}

std::optional<Fault> CheckExeCycles(std::string_view text) {
  FaultNote note(text);
  if (!text.empty()) ReadExeLength(text, note);
  return note.First();
}

std::optional<Fault> DoubtExeCycles(std::string_view text) {
  FaultNote unused(text);
  if (text.empty() || ReadExeLength(text, unused).number > 0) return std::nullopt;
  return Fault{.what = "zero cycles", .expected = "a number above 0", .kind = FaultKind::kNothing};
}

}  // namespace vexor

using namespace vexor;

unsigned int DecodeTimeUnits(std::string_view unit) {
  const TimeUnit* const found = FindUnit(unit);
  return found != nullptr ? found->milliseconds : 1;
}

unsigned int ParseUnitTime(std::string_view text, unsigned int seed, unsigned int default_ms) {
  const auto parts = SplitUnitAndValue(text);
  if (!parts) return default_ms;
  const std::uint32_t factor = DecodeTimeUnits(parts->unit);
  std::string_view rest = parts->value;
  if (FindByte(rest, '-') == std::string_view::npos) {
    return factor * static_cast<std::uint32_t>(ReadNumber(rest));
  }
  // Unlike in `ReadOnTime`, bounds are trimmed and empty ones are skipped.
  std::array<long, 2> bounds{};
  std::string_view item;
  for (long& bound : bounds) {
    if (TakeFilledItem(rest, '-', item)) bound = static_cast<long>(ReadNumber(TrimBlanks(item)));
  }
  UserRand random(seed + g_drawn_times.fetch_add(1, std::memory_order_relaxed));
  return factor * random.Next32(bounds[0], bounds[1]);
}

unsigned int GetTime(std::string_view text) {
  const std::size_t open = FindByte(text, '[');
  if (open == std::string_view::npos) return 0;
  const std::string_view rest = text.substr(open + 1);
  const TimeUnit* const unit = FindExactUnit(rest.substr(0, FindByte(rest, ']')));
  // Deliberately not "msec", which this form has never accepted.
  if (unit == nullptr || unit->milliseconds == 1) return 0;
  return unit->milliseconds * static_cast<std::uint32_t>(ReadNumber(text.substr(0, open)));
}

ONTIME_TYPE ParseOnTimeType(std::string_view text) {
  FaultNote unused(text);
  return ReadOnTime(text, unused);
}

ONTIME_TYPE add_OnTimeStructs(ONTIME_TYPE a, ONTIME_TYPE b) {
  // Deliberately does not add the microseconds nor copy the flag.
  return {.avgMs = a.avgMs + b.avgMs, .minMs = a.minMs + b.minMs, .maxMs = a.maxMs + b.maxMs};
}

std::string GetUnitTimeString(ONTIME_TYPE time) {
  struct Step {
    std::string_view unit;
    std::uint32_t divisor;
  };
  constexpr Step kSteps[] = {{"sec:", 1000}, {"min:", 60}, {"hour:", 60}};
  std::string_view unit = "msec:";
  for (const Step& step : kSteps) {
    if (time.minMs % step.divisor != 0 || time.maxMs % step.divisor != 0) break;
    unit = step.unit;
    time.minMs /= step.divisor;
    time.maxMs /= step.divisor;
  }
  std::string text(unit);
  text += std::to_string(time.minMs);
  if (time.minMs < time.maxMs) text.append("-").append(std::to_string(time.maxMs));
  return text;
}

std::string FormatTime(unsigned int ms) {
  if (ms < 1000) return std::to_string(ms) + " msec";
  // Adding 1000 to the milliseconds keeps leading zeros; its "1" is then replaced by the point.
  std::string text = std::to_string(ms / 1000) + std::to_string(1000 + ms % 1000) + " sec";
  text[text.size() - std::string_view("1000 sec").size()] = '.';
  return text;
}

std::string FormatTime(ONTIME_TYPE time) {
  return FormatTime(time.minMs) + " - " + FormatTime(time.maxMs);
}

std::string TimeUnitVerifyFormat(std::string_view text, bool unit_first, bool allow_default_unit,
                                 std::string_view default_unit) {
  std::string_view first;
  std::string_view second;
  std::string_view surplus;
  if (!TakeFilledItem(text, ':', first)) return {};
  std::string_view unit = default_unit;
  std::string_view number = first;
  if (TakeFilledItem(text, ':', second)) {
    if (TakeFilledItem(text, ':', surplus)) return {};
    const bool is_unit_first = FindExactUnit(first) != nullptr;
    if (!is_unit_first && FindExactUnit(second) == nullptr) return {};
    unit = is_unit_first ? first : second;
    number = is_unit_first ? second : first;
  } else if (!allow_default_unit) {
    return {};
  }
  if (unit.empty() || ParseUnsigned(number).value_or(kNoNumber64) == kNoNumber64) return {};
  return unit_first ? JoinWithColon(unit, number) : JoinWithColon(number, unit);
}

_EXECYCLETIME ParseExeCycleTimeType(std::string_view text, unsigned int set_count,
                                    float cycle_part_a, float cycle_part_b) {
  _EXECYCLETIME time;
  if (text.empty()) return time;
  FaultNote unused(text);
  const ExeLength length = ReadExeLength(text, unused);
  float cycle_ms = cycle_part_a + cycle_part_b;
  if (cycle_ms == 0) cycle_ms = 0.005F;

  time.isCycleCount = length.factor == 0;
  std::uint64_t ms = 0;
  if (time.isCycleCount) {
    time.cycles = length.number * (length.is_per_set ? set_count : 1);
    if (time.cycles == 0) return time;
    ms = SaturateToUint64(static_cast<float>(time.cycles) * cycle_ms);  // in single precision
  } else {
    if (length.number == 0) return time;
    ms = length.factor * length.number;
    const double cycles = std::ceil(static_cast<double>(ms) / static_cast<double>(cycle_ms));
    time.cycles = std::max<std::uint64_t>(SaturateToUint64(cycles), 1);
  }
  time.seconds = std::max<std::uint64_t>(ms / 1000, 1);
  time.isValid = true;
  return time;
}

std::uint64_t GetExitOnFailureCounter(unsigned int percent, std::uint64_t total) {
  return SaturateToUint64(static_cast<double>(percent * total) / 100.0);
}
