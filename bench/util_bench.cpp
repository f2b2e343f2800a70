// String and number functions and time parsers, compared with hand-written loops for the same
// texts.

#include <absl/strings/numbers.h>
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>
#include <absl/time/time.h>
#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "by_hand.h"
#include "comparison.h"
#include "vexor/logging/log_file.h"
#include "vexor/syntax/time.h"
#include "vexor/util/numbers.h"
#include "vexor/util/random.h"
#include "vexor/util/strings.h"
#include "works.h"

namespace {

using std::string_view;
using vexor::AddTextPair;
using vexor::ForEachItemByHand;
using vexor::ForEachNumberByHand;
using vexor::ReadByHand;

std::uint64_t IntegerByHand(string_view text) {
  if (text.starts_with("0x")) return ReadByHand<std::uint64_t>(text.substr(2), 16);
  return ReadByHand<std::uint64_t>(text);
}

string_view TrimByHand(string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

std::vector<std::string> SplitByHand(string_view text) {
  std::vector<std::string> items;
  ForEachItemByHand(text, ';', [&](string_view item) { items.emplace_back(TrimByHand(item)); });
  return items;
}

bool KeywordByHand(string_view text) {
  bool found = false;
  ForEachItemByHand(text, ';',
                    [&](string_view item) { found |= TrimByHand(item) == "ExitOnFail"; });
  return found;
}

std::vector<int> IntegersByHand(string_view text) {
  std::vector<int> values;
  ForEachNumberByHand(text, [&](int number) { values.push_back(number); });
  return values;
}

std::vector<double> DoublesByHand(string_view text) {
  const auto read = [](string_view number) {
    double value = 0;
    std::from_chars(number.data(), number.data() + number.size(), value);
    return value;
  };
  std::vector<double> values;
  ForEachItemByHand(text, ',', [&](string_view item) {
    const std::size_t dash = item.find('-');
    const double low = read(item.substr(0, dash));
    const double high = dash == string_view::npos ? low : read(item.substr(dash + 1));
    for (double value = low; value <= high; value += 0.5) values.push_back(value);
  });
  return values;
}

unsigned UnitByHand(string_view word) {
  if (word == "msec") return 1;
  if (word == "sec") return 1000;
  if (word == "min") return 60000;
  return 3600000;
}

ONTIME_TYPE OnTimeByHand(string_view text) {
  const std::size_t colon = text.find(':');
  const unsigned factor = UnitByHand(text.substr(0, colon));
  const string_view range = text.substr(colon + 1);
  const std::size_t dash = range.find('-');
  const auto low = ReadByHand<unsigned>(range.substr(0, dash));
  const auto high = dash == string_view::npos ? low : ReadByHand<unsigned>(range.substr(dash + 1));
  return {.avgMs = factor * (low + high) / 2,
          .minMs = factor * low,
          .maxMs = factor * high,
          .isSet = true};
}

unsigned UnitTimeByHand(string_view text) {
  static unsigned seed = 1;
  const std::size_t colon = text.find(':');
  const string_view range = text.substr(colon + 1);
  const std::size_t dash = range.find('-');
  auto value = ReadByHand<unsigned>(range.substr(0, dash));
  if (dash != string_view::npos) {
    value = UserRand(seed++).Next32(value, ReadByHand<unsigned>(range.substr(dash + 1)));
  }
  return UnitByHand(text.substr(0, colon)) * value;
}

unsigned BracketTimeByHand(string_view text) {
  const std::size_t open = text.find('[');
  return UnitByHand(text.substr(open + 1, text.size() - open - 2)) *
         ReadByHand<unsigned>(text.substr(0, open));
}

_EXECYCLETIME ExeCyclesByHand(string_view text) {
  const volatile float given_cycle_ms = 20;  // keeps the compiler from removing the division
  const float cycle_ms = given_cycle_ms;
  const std::size_t colon = text.find(':');
  if (colon == string_view::npos) {
    const auto cycles = ReadByHand<std::uint64_t>(text);
    const auto ms = static_cast<std::uint64_t>(static_cast<float>(cycles) * cycle_ms);
    return {true, true, cycles, std::max<std::uint64_t>(ms / 1000, 1)};
  }
  const std::uint64_t ms =
      UnitByHand(text.substr(0, colon)) * ReadByHand<std::uint64_t>(text.substr(colon + 1));
  const double cycles = std::ceil(static_cast<double>(ms) / static_cast<double>(cycle_ms));
  return {true, false, static_cast<std::uint64_t>(cycles), std::max<std::uint64_t>(ms / 1000, 1)};
}

std::string ReplaceByHand(string_view original) {
  const std::string text(original);
  std::string replaced;
  std::size_t at = 0;
  for (std::size_t next; (next = text.find(", ", at)) != std::string::npos; at = next + 2) {
    replaced.append(text, at, next - at).append("; ");
  }
  return replaced.append(text, at);
}

// The same with general-purpose libraries.

std::uint64_t IntegerByAbseil(string_view text) {
  std::uint64_t number = 0;
  const auto view = absl::string_view(text.data(), text.size());
  if (!absl::SimpleAtoi(view, &number)) (void)absl::SimpleHexAtoi(view, &number);
  return number;
}

std::vector<int> IntegersByAbseil(const std::string& text) {
  std::vector<int> values;
  for (const absl::string_view item : absl::StrSplit(text, ',')) {
    const std::pair<absl::string_view, absl::string_view> bounds =
        absl::StrSplit(item, absl::MaxSplits('-', 1));
    int low = 0;
    int high = 0;
    if (!absl::SimpleAtoi(bounds.first, &low)) low = -1;
    if (bounds.second.empty() || !absl::SimpleAtoi(bounds.second, &high)) high = low;
    for (int value = low; value <= high; ++value) values.push_back(value);
  }
  return values;
}

std::vector<std::string> SplitByAbseil(const std::string& text) {
  std::vector<std::string> items;
  for (const absl::string_view item : absl::StrSplit(text, ';')) {
    items.emplace_back(absl::StripAsciiWhitespace(item));
  }
  return items;
}

std::string ReplaceByAbseil(const std::string& text) {
  return absl::StrReplaceAll(text, {{", ", "; "}});
}

// A duration as the library spells it and as abseil does.
struct Duration {
  std::string text;
  std::string abseil;
};

unsigned DurationByAbseil(const Duration& duration) {
  absl::Duration parsed;
  (void)absl::ParseDuration(duration.abseil, &parsed);
  return static_cast<unsigned>(absl::ToInt64Milliseconds(parsed));
}

struct PackageCore {
  unsigned short package;
  unsigned short core;
};

std::string LabelByFmt(const PackageCore& place) {
  return fmt::format("{:02}:{:03}", place.package, place.core);
}

std::string JoinIntegers(int last) {
  std::string text = "0";
  for (int i = 1; i < last; ++i) text += ',' + std::to_string(i % 1000);
  return text;
}

std::vector<int> ReadList(const std::string& text) { return GetIntegerList(text, ',', -1); }

}  // namespace

void vexor::AddUtilities() {
  AddTextPair(
      "String2Integer", {"0", "80", "123456789", "0x1F", "0xFFFFFFFF"},
      [](string_view text) { return String2Integer(text, 0); }, IntegerByHand,
      Peer{"abseil", IntegerByAbseil});
  AddTextPair("GetIntegerList", {"1", "1,2,3", "0-7,12,16-19"}, ReadList, IntegersByHand,
              Peer{"abseil", IntegersByAbseil});
  AddGrowth("GetIntegerList", JoinIntegers(1000), JoinIntegers(16000), ReadList);
  AddTextPair(
      "GetDoubleList", {"0.5", "0.5-4", "1,2.5,10-12"},
      [](string_view text) { return GetDoubleList(text, ',', -1, 0.5); }, DoublesByHand);
  AddTextPair(
      "Split", {"C6", "C6; C8; C10", "Random; ExitOnFail; RunDeviceCheck"},
      [](string_view text) { return Split(text, ';', true); }, SplitByHand,
      Peer{"abseil", SplitByAbseil});
  AddTextPair(
      "StringContainsKeyword", {"ExitOnFail", "Random; Sx_Legacy; ExitOnFail", "Random"},
      [](string_view text) { return StringContainsKeyword(text, "ExitOnFail", ';', false); },
      KeywordByHand);
  AddTextPair(
      "StringReplaceSubstring", {"a, b, c", std::string(1000, 'x') + ", y"},
      [](string_view text) {
        std::string replaced(text);
        StringReplaceSubstring(replaced, ", ", "; ");
        return replaced;
      },
      ReplaceByHand, Peer{"abseil", ReplaceByAbseil});
  AddTextPair("ParseOnTimeType", {"msec:80", "sec:10", "sec:1-3", "min:2", "hour:1"},
              ParseOnTimeType, OnTimeByHand);
  AddComparison<Duration>(
      "ParseOnTimeType, one duration", {{"msec:80", "80ms"}, {"sec:10", "10s"}, {"hour:1", "1h"}},
      [](const Duration& duration) { return ParseOnTimeType(duration.text).avgMs; },
      Peer{"abseil, its own spelling", DurationByAbseil});
  AddComparison<PackageCore>(
      "GetPkgCoreInfo", {{0, 7}, {1, 119}},
      [](const PackageCore& place) {
        return VexorLogging::GetPkgCoreInfo(place.package, place.core);
      },
      Peer{"fmt", LabelByFmt});
  AddTextPair(
      "ParseUnitTime", {"msec:80", "sec:10", "min:2", "hour:1"},
      [](string_view text) { return ParseUnitTime(text, 0, 0); }, UnitTimeByHand);
  AddTextPair(
      "ParseUnitTime (range)", {"sec:10-11"},
      [](string_view text) { return ParseUnitTime(text, 0, 0); }, UnitTimeByHand);
  AddTextPair("GetTime", {"10[sec]", "2[min]", "1[hour]"}, GetTime, BracketTimeByHand);
  AddTextPair(
      "ParseExeCycleTimeType", {"100", "sec:10", "min:5"},
      [](string_view text) { return ParseExeCycleTimeType(text, 1, 15, 5); }, ExeCyclesByHand);
}
