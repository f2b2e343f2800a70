#include "vexor/syntax/ratios.h"

#include <algorithm>
#include <array>
#include <optional>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/number_list.h"
#include "syntax/words.h"
#include "util/table_checks.h"
#include "util/text.h"
#include "vexor/util/numbers.h"

namespace vexor {

namespace {

constexpr std::uint16_t kLargestRatio = 0xFE;

// When DecodeRatios accepts a keyword.
enum class InList { kNever, kAlways, kUnbounded };

// A keyword's ratio is a ratio of the machine plus a difference, or the difference alone.
struct RatioKeyword {
  std::string_view text;
  std::uint16_t _P0_PN_RATIOS::*base;
  int difference;
  bool is_single;  // accepted by DecodeP0PnRatioEnums
  InList in_list;
};

constexpr auto kRatioKeywords = std::to_array<RatioKeyword>({
    {"P0", &_P0_PN_RATIOS::P0, 0, true, InList::kAlways},
    {"Pn", &_P0_PN_RATIOS::Pn, 0, true, InList::kAlways},
    {"P1", &_P0_PN_RATIOS::P1, 0, false, InList::kAlways},
    {"Pn--", &_P0_PN_RATIOS::Pn, -1, true, InList::kUnbounded},
    {"P0++", &_P0_PN_RATIOS::P0, +1, true, InList::kUnbounded},
    {"P0Pn", nullptr, -1, true, InList::kUnbounded},
    {"XX", nullptr, -2, true, InList::kNever},
    {"All", nullptr, -3, true, InList::kNever},
});
static_assert(AreDistinct(kRatioKeywords, &RatioKeyword::text));

struct ListRange {
  std::string_view text;
  std::uint16_t _P0_PN_RATIOS::*upper;
  std::uint16_t _P0_PN_RATIOS::*lower;
};

constexpr auto kListRanges = std::to_array<ListRange>({
    {"P1..Pn", &_P0_PN_RATIOS::P1, &_P0_PN_RATIOS::Pn},
    {"P0..P1", &_P0_PN_RATIOS::P0, &_P0_PN_RATIOS::P1},
    {"P0...Pn", &_P0_PN_RATIOS::P0, &_P0_PN_RATIOS::Pn},
});
static_assert(AreDistinct(kListRanges, &ListRange::text));

// Wraps around in 16 bits.
std::uint16_t ValueOf(const RatioKeyword& keyword, const _P0_PN_RATIOS& ratios) {
  const int base = keyword.base != nullptr ? ratios.*keyword.base : 0;
  return static_cast<std::uint16_t>(base + keyword.difference);
}

void AppendDownwards(std::uint16_t upper, std::uint16_t lower, std::uint8_t step,
                     std::vector<std::uint16_t>& list) {
  for (int ratio = upper; ratio >= lower; ratio -= step) {
    list.push_back(static_cast<std::uint16_t>(ratio));
    if (step == 0) return;  // would never end
  }
}

// The hardware supports multiples of three: listed values are rounded up.
std::uint16_t RaiseToStep(std::uint16_t ratio) {
  return static_cast<std::uint16_t>((ratio + 2) / 3 * 3);
}

void AppendListed(std::string_view text, const _P0_PN_RATIOS& ratios, bool bounded,
                  std::vector<std::uint16_t>& list) {
  std::vector<int> numbers;
  FaultNote unused(text);
  ReadNumberList(text, &numbers, unused);
  for (const int number : numbers) {
    const std::uint16_t ratio = RaiseToStep(static_cast<std::uint16_t>(number));
    if (!bounded || (ratio >= ratios.Pn && ratio <= ratios.P0)) list.push_back(ratio);
  }
}

struct NamedRatio {
  std::string_view text;
  RatioName name;
};

constexpr auto kNamedRatios = std::to_array<NamedRatio>({
    {"P0", RatioName::kP0},
    {"P1", RatioName::kP1},
    {"Pe", RatioName::kPe},
    {"Pn", RatioName::kPn},
    {"Pn--", RatioName::kBelowPn},
    {"Pn - -", RatioName::kBelowPn},  // in comments of XML, which must not contain "--"
    {"P0++", RatioName::kAboveP0},
    {"P0Pn", RatioName::kAnyPair},
    {"XX", RatioName::kAny},
    {"All", RatioName::kAll},
    {"ALL", RatioName::kAll},
});
static_assert(AreDistinct(kNamedRatios, &NamedRatio::text));

// Valid only as the whole text, as in `DecodeRatios`.
constexpr auto kTrendRanges = std::to_array<NamedRatio>({
    {"P0...Pn", RatioName::kP0ToPn},
    {"P0..P1", RatioName::kP0ToP1},
    {"P1..Pn", RatioName::kP1ToPn},
});
static_assert(AreDistinct(kTrendRanges, &NamedRatio::text));

struct NamedPstateRange {
  std::string_view text;
  PstateRange range;
};

constexpr auto kPstateRanges = std::to_array<NamedPstateRange>({
    {"P0...Pn", PstateRange::kAll},
    {"P1...Pn", PstateRange::kGuaranteed},
    {"P1..Pn", PstateRange::kGuaranteed},
    {"Turbo", PstateRange::kTurbo},
    {"P0..P1", PstateRange::kTurbo},
});
static_assert(AreDistinct(kPstateRanges, &NamedPstateRange::text));

constexpr std::string_view kSpecific = "Specific:";

constexpr auto kPoints = std::to_array<Word<RatioPoint>>({
    {"Low", RatioPoint::kLow},
    {"Med", RatioPoint::kMed},
    {"High", RatioPoint::kHigh},
    {"Dynamic", RatioPoint::kDynamic},
});

// The points of a test that supports only two.
constexpr std::array kLowAndHigh = {kPoints[0], kPoints[2]};

constexpr std::string_view kRatioForm =
    "P0, P1, Pe, Pn, Pn--, P0++, P0Pn, All, a number from 0 to 254 (0xFE) or two of them as 8-12";
constexpr std::string_view kTrendForm =
    "P0, P1, Pe, Pn, Pn--, P0++, P0Pn, All, a number from 0 to 254 (0xFE), two of them as 8-12, or "
    "alone P0...Pn, P0..P1 or P1..Pn";

std::optional<std::uint16_t> ReadRatioNumber(std::string_view text) {
  const std::uint64_t number = ParseUnsigned(text).value_or(kNoNumber64);
  if (number > kLargestRatio) return std::nullopt;
  return static_cast<std::uint16_t>(number);
}

std::optional<Ratio> ReadRatio(std::string_view text) {
  for (const NamedRatio& row : kNamedRatios) {
    if (row.text == text) return Ratio{.name = row.name};
  }
  const std::size_t dash = text.find('-');
  const auto first = ReadRatioNumber(text.substr(0, dash));
  const auto last = dash == std::string_view::npos ? first : ReadRatioNumber(text.substr(dash + 1));
  if (!first || !last) return std::nullopt;
  return Ratio{RatioName::kNumber, *first, *last};
}

std::vector<Ratio> ReadRatios(std::string_view text, std::string_view form, FaultNote& note) {
  std::vector<Ratio> ratios;
  ForEachItem(text, [&](std::string_view item) {
    if (const auto ratio = ReadRatio(item)) {
      ratios.push_back(*ratio);
    } else {
      note.At(item, "not a ratio", form);
    }
  });
  return ratios;
}

std::vector<Ratio> ReadTrendRatios(std::string_view text, FaultNote& note) {
  for (const NamedRatio& range : kTrendRanges) {
    if (range.text == text) return {{.name = range.name}};
  }
  return ReadRatios(text, kTrendForm, note);
}

PstateSelection ReadExePstates(std::string_view text, FaultNote& note) {
  const std::string_view trimmed = TrimBlanks(text);
  for (const NamedPstateRange& row : kPstateRanges) {
    if (row.text == trimmed) return {.range = row.range, .ratios = {}};
  }
  const bool is_specific = trimmed.starts_with(kSpecific);
  const std::string_view listed = trimmed.substr(is_specific ? kSpecific.size() : 0);
  PstateSelection selection{.range = PstateRange::kSpecific,
                            .ratios = ReadRatios(listed, kRatioForm, note)};
  if (selection.ratios.empty()) selection.range = PstateRange::kAll;
  if (selection.ratios.empty() && is_specific) note.At(listed, "no ratios", kRatioForm);
  return selection;
}

std::vector<RatioPoint> ReadPoints(std::string_view text, FaultNote& note) {
  std::vector<RatioPoint> points;
  ForEachItem(text, [&](std::string_view item) {
    if (const auto* const point = FindWord(kPoints, item)) {
      points.push_back(point->value);
    } else {
      note.At(item, "unknown point", kSagvPoints);
    }
  });
  return points;
}

std::vector<std::uint16_t> ReadTurboActivationRatios(std::string_view text, FaultNote& note) {
  std::vector<std::uint16_t> ratios;
  ForEachItem(text, [&](std::string_view item) {
    if (const auto ratio = ReadRatioNumber(item)) {
      ratios.push_back(*ratio);
    } else {
      note.At(item, "not a ratio", "a number from 0 to 254 (0xFE)");
    }
  });
  return ratios;
}

}  // namespace

constinit const Expectation kSagvPoints = kOneOf<kPoints>;
constinit const Expectation kLowHighPoints = kOneOf<kLowAndHigh>;

std::optional<Fault> CheckTrendRatios(std::string_view text) {
  FaultNote note(text);
  ReadTrendRatios(text, note);
  return note.First();
}

std::optional<Fault> CheckExePstates(std::string_view text) {
  FaultNote note(text);
  ReadExePstates(text, note);
  return note.First();
}

std::optional<Fault> CheckSagvRatios(std::string_view text) {
  FaultNote note(text);
  ReadPoints(text, note);
  return note.First();
}

std::optional<Fault> CheckLowHighRatios(std::string_view text) {
  FaultNote note(text);
  ForEachItem(text, [&](std::string_view item) {
    if (FindWord(kLowAndHigh, item) == nullptr) note.At(item, "unknown point", kLowHighPoints);
  });
  return note.First();
}

std::optional<Fault> CheckTurboActivationRatios(std::string_view text) {
  FaultNote note(text);
  ReadTurboActivationRatios(text, note);
  return note.First();
}

std::vector<Ratio> ParseTrendRatios(std::string_view text) {
  FaultNote unused(text);
  return ReadTrendRatios(text, unused);
}

PstateSelection ParseExePstates(std::string_view text) {
  FaultNote unused(text);
  return ReadExePstates(text, unused);
}

std::vector<RatioPoint> ParseSagvRatios(std::string_view text) {
  FaultNote unused(text);
  return ReadPoints(text, unused);
}

std::vector<std::uint16_t> ParseTurboActivationRatios(std::string_view text) {
  FaultNote unused(text);
  return ReadTurboActivationRatios(text, unused);
}

}  // namespace vexor

using namespace vexor;

bool DecodeP0PnRatioEnums(std::string_view text, std::uint16_t p0, std::uint16_t pn,
                          std::uint16_t& result) {
  for (const RatioKeyword& keyword : kRatioKeywords) {
    if (!keyword.is_single || keyword.text != text) continue;
    result = ValueOf(keyword, {.P0 = p0, .Pn = pn});
    return true;
  }
  return false;
}

void DecodeRatios(std::string_view text, _P0_PN_RATIOS ratios, bool bounded,
                  std::vector<std::uint16_t>& list, std::uint8_t step) {
  if (ratios.valid == 0) return;
  for (const RatioKeyword& keyword : kRatioKeywords) {
    const bool is_known =
        keyword.in_list == InList::kAlways || (keyword.in_list == InList::kUnbounded && !bounded);
    if (is_known && keyword.text == text) {
      list.push_back(ValueOf(keyword, ratios));
      return;
    }
  }
  for (const ListRange& range : kListRanges) {
    if (range.text == text) {
      AppendDownwards(ratios.*range.upper, ratios.*range.lower, step, list);
      return;
    }
  }
  AppendListed(text, ratios, bounded, list);
}
