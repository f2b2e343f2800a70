#include "selection.h"

#include <re2/re2.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>

#include "common/suggestion.h"
#include "common/text_output.h"
#include "vexor/util/strings.h"

namespace tools::vexorlog {
namespace {

using vexor::kNoLogTime;
using vexor::LogTime;

constexpr LogTime kSecond = 1000;
constexpr LogTime kMinute = 60 * kSecond;
constexpr LogTime kHour = 60 * kMinute;
constexpr LogTime kDay = 24 * kHour;
constexpr LogTime kLongest = 100'000 * kDay;

struct Unit {
  std::string_view name;
  LogTime length;
};

// Of two units with the same beginning, the longer one must come first.
constexpr std::array<Unit, 10> kUnits = {{{"msec", 1},
                                          {"ms", 1},
                                          {"min", kMinute},
                                          {"m", kMinute},
                                          {"sec", kSecond},
                                          {"s", kSecond},
                                          {"hour", kHour},
                                          {"h", kHour},
                                          {"day", kDay},
                                          {"d", kDay}}};

std::optional<LogTime> TakeNumber(std::string_view& text) {
  LogTime number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || number < 0) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

std::optional<LogTime> TakeUnit(std::string_view& text) {
  for (const Unit& unit : kUnits) {
    if (!text.starts_with(unit.name)) continue;
    text.remove_prefix(unit.name.size());
    return unit.length;
  }
  return std::nullopt;
}

// Completes the beginning of a time stamp to its first millisecond.
std::optional<LogTime> ParseStamp(std::string text) {
  constexpr std::string_view kEarliest = "0000-01-01 00:00:00.000";
  constexpr std::size_t kShortest = std::string_view("2024-03-07").size();
  if (text.size() > kShortest && text[kShortest] == 'T') text[kShortest] = ' ';
  if (text.size() < kShortest || text.size() > kEarliest.size()) return std::nullopt;
  const LogTime time = vexor::ParseLogTime(text + std::string(kEarliest.substr(text.size())));
  return time == kNoLogTime ? std::nullopt : std::optional(time);
}

[[noreturn]] void Reject(std::string_view option, std::string_view text, std::string_view why) {
  throw std::invalid_argument(std::string(option) + " " + Quote(text) + ": " + std::string(why));
}

LogTime PointOf(std::string_view option, const std::string& text, LogTime start, LogTime end) {
  const std::optional<LogTime> point = ParsePointInTime(text, start, end);
  if (!point) {
    Reject(option, text,
           "expected a time such as \"2024-03-07 21:00\" or 21:00, or a duration after the start "
           "(+2h) or before the end (-30min)");
  }
  return *point;
}

VEXOR_PM_TEST_ID TestOf(const std::string& name) {
  const VEXOR_PM_TEST_ID test = GetPMTestID(name, true);
  if (test == PM_TEST_MAX) {
    const std::string suggestion = SuggestName(name, NamesOfTests());
    Reject("--test", name,
           suggestion.empty() ? "expected the name of a test such as CSTATES"
                              : "no such test" + suggestion);
  }
  return test;
}

TRACE_LEVEL LevelOf(const std::string& name) {
  const std::vector<std::string> names = {"Critical", "Information", "Debug"};
  const auto found = std::ranges::find_if(
      names, [&](const std::string& known) { return StringToUpper(known) == StringToUpper(name); });
  if (found == names.end()) {
    Reject("--level", name, "expected Critical, Information or Debug" + SuggestName(name, names));
  }
  return ParseTraceLevelID(*found, TRACE_DEBUG);
}

}  // namespace

std::optional<LogTime> ParseDuration(std::string_view text) {
  LogTime sum = 0;
  if (text.empty()) return std::nullopt;
  while (!text.empty()) {
    const std::optional<LogTime> number = TakeNumber(text);
    if (!number) return std::nullopt;
    const std::optional<LogTime> unit = TakeUnit(text);
    if (!unit || *number > (kLongest - sum) / *unit) return std::nullopt;
    sum += *number * *unit;
  }
  return sum;
}

std::vector<std::string> NamesOfTests() {
  std::vector<std::string> names;
  for (int id = PM_TEST_VEXOR; id < PM_TEST_MAX; ++id) {
    std::string name = GetPMTestName(static_cast<VEXOR_PM_TEST_ID>(id));
    if (name != "NA") names.push_back(std::move(name));
  }
  return names;
}

std::string FormatDuration(LogTime milliseconds) {
  const LogTime magnitude = std::max(milliseconds, -milliseconds);
  const std::string sign = milliseconds < 0 ? "-" : "";
  const auto two_digits = [](LogTime number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
  };
  const auto join = [&](LogTime unit, const char* name, LogTime part, const char* part_name) {
    return sign + std::to_string(magnitude / unit) + name + two_digits(magnitude % unit / part) +
           part_name;
  };
  if (magnitude >= kDay) return join(kDay, " d ", kHour, " h");
  if (magnitude >= kHour) return join(kHour, " h ", kMinute, " min");
  if (magnitude >= kMinute) return join(kMinute, " min ", kSecond, " s");
  const std::string fraction = std::to_string(kSecond + magnitude % kSecond).substr(1);
  return sign + std::to_string(magnitude / kSecond) + "." + fraction + " s";
}

std::optional<LogTime> ParsePointInTime(std::string_view text, LogTime start, LogTime end) {
  if (text.starts_with('+') || text.starts_with('-')) {
    const std::optional<LogTime> duration = ParseDuration(text.substr(1));
    if (!duration) return std::nullopt;
    return text.starts_with('+') ? start + *duration : end - *duration;
  }
  if (text.find('-') != std::string_view::npos) return ParseStamp(std::string(text));
  if (text.size() < std::string_view("21:00").size()) return std::nullopt;
  const std::string day = vexor::FormatLogTime(start).substr(0, 10);
  std::optional<LogTime> time = ParseStamp(day + " " + std::string(text));
  if (time && *time < start) *time += kDay;
  return time;
}

RowFilter::RowFilter(const Selection& selection, LogTime start, LogTime end)
    : failed_(selection.failed) {
  for (const std::string& name : selection.tests) tests_.push_back(TestOf(name));
  if (!selection.level.empty()) level_ = LevelOf(selection.level);
  if (!selection.since.empty()) since_ = PointOf("--since", selection.since, start, end);
  if (!selection.until.empty()) until_ = PointOf("--until", selection.until, start, end);
  if (until_ && *until_ < since_) {
    Reject("--until", selection.until, "is before --since " + Quote(selection.since));
  }
  if (selection.grep.empty()) return;
  pattern_ = std::make_unique<re2::RE2>(selection.grep, RE2::Quiet);
  if (!pattern_->ok()) {
    Reject("--grep", selection.grep, "not a regular expression: " + pattern_->error());
  }
}

RowFilter::RowFilter(RowFilter&& other) noexcept = default;
RowFilter& RowFilter::operator=(RowFilter&& other) noexcept = default;
RowFilter::~RowFilter() = default;

bool RowFilter::Passes(const vexor::LogRow& row, LogTime time) const {
  if (row.Kind() == vexor::LogRowKind::kHeader || row.Kind() == vexor::LogRowKind::kNulBlock) {
    return false;
  }
  if (time < since_ || (until_ && time > *until_)) return false;
  if (!tests_.empty() && std::ranges::find(tests_, row.Test()) == tests_.end()) return false;
  if (level_ && row.Level().value_or(TRACE_DEBUG) > *level_) return false;
  if (failed_ && row.Result() != vexor::LogResult::kFail) return false;
  if (pattern_ == nullptr) return true;
  const std::string_view text = row.Text();
  return re2::RE2::PartialMatch(re2::StringPiece(text.data(), text.size()), *pattern_);
}

}  // namespace tools::vexorlog
