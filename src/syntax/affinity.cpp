#include "vexor/syntax/affinity.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>

#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/number_list.h"
#include "syntax/words.h"
#include "util/table_checks.h"
#include "util/text.h"

namespace vexor {

namespace {

// The mode of a text is that of the first row whose keyword the text begins with.
using Mode = Word<int>;

constexpr auto kPkgModes = std::to_array<Mode>({
    {"All", kAffinityAll},
    {"Any", kAffinityAnyPackage},
    {"Random", kAffinityRandom},
    {"Specific:", kAffinitySpecific},
});

constexpr auto kUnitModes = std::to_array<Mode>({
    {"All", kAffinityAll},
    {"Random", kAffinityRandom},
    {"BigCores", kAffinityBigCores},
    {"SmallCores", kAffinitySmallCores},
    {"EvenCores", kAffinityEvenCores},
    {"OddCores", kAffinityOddCores},
    {"sCores", kAffinitySCores},
    {"cCores", kAffinityCCores},
    {"cCoreAtom", kAffinityCCoreAtom},
    {"Specific:", kAffinitySpecific},
});

constexpr auto kThreadModes = std::to_array<Mode>({
    {"All", kAffinityAll},
    {"Any:", kAffinityAnyOfList},
    {"Random", kAffinityRandom},
    {"Specific:", kAffinitySpecific},
});

// Returns whether no row begins with the text of a row above it, which would be taken instead.
constexpr bool IsEveryModeReached(std::span<const Mode> modes) {
  return NoTwo(modes, [](const Mode& upper, const Mode& lower) {
    return StartsWithIgnoreCase(lower.text, upper.text);
  });
}
static_assert(IsEveryModeReached(kPkgModes) && IsEveryModeReached(kUnitModes) &&
              IsEveryModeReached(kThreadModes));

// The modes that have a name for display. The even and odd cores deliberately have none and are
// shown by their codes.
constexpr auto kModeNames = std::to_array<Mode>({
    {"All", kAffinityAll},
    {"Any", kAffinityAnyPackage},
    {"Any", kAffinityAnyOfList},
    {"Random", kAffinityRandom},
    {"BigCores", kAffinityBigCores},
    {"SmallCores", kAffinitySmallCores},
    {"sCores", kAffinitySCores},
    {"cCores", kAffinityCCores},
    {"cCoreAtom", kAffinityCCoreAtom},
    {"Specific", kAffinitySpecific},
});
static_assert(AreDistinct(kModeNames, &Mode::value));

constexpr std::string_view kAnyCoreWarning =
    "AnyCore is potentially unstable in this release. Replacing with All core affinty. See errata "
    "for details.";

// An affinity text, split into its parts.
struct AffinityText {
  int mode = kAffinityAll;
  std::string_view numbers;  // not parsed yet
};

bool NeedsNumbers(int mode) { return mode == kAffinitySpecific || mode == kAffinityAnyOfList; }

std::string_view NumbersBehindColon(std::string_view text, FaultNote& note) {
  std::string_view rest = text;
  std::string_view keyword;
  std::string_view numbers = text.substr(text.size());
  TakeFilledItem(rest, ':', keyword);
  TakeFilledItem(rest, ':', numbers);
  if (!rest.empty()) {
    note.At(rest, "text after the numbers, not read", "the end of the text", FaultKind::kSurplus);
  }
  numbers = TrimBlanks(numbers);
  if (numbers.empty()) note.At(numbers, "no numbers", "a list such as 0,2-4");
  return numbers;
}

enum class ListAlone { kRefused, kAccepted };

// Readers recognise a keyword by the beginning of the text and ignore what follows it.
void RefuseSurplus(std::string_view surplus, const Expectation& keywords, FaultNote& note) {
  if (TrimBlanks(surplus).empty()) return;
  note.At(surplus, "text after the keyword, not read", keywords, FaultKind::kSurplus);
}

AffinityText SplitAffinity(std::string_view text, std::span<const Mode> modes,
                           const Expectation& keywords, ListAlone list_alone, FaultNote& note) {
  const auto mode = std::ranges::find_if(
      modes, [text](const Mode& row) { return StartsWithIgnoreCase(text, row.text); });
  if (mode != modes.end()) {
    if (NeedsNumbers(mode->value)) return {mode->value, NumbersBehindColon(text, note)};
    RefuseSurplus(text.substr(mode->text.size()), keywords, note);
    return {mode->value, ""};
  }
  if (text.empty()) return {};
  const bool is_list = list_alone == ListAlone::kAccepted && IsDecDigit(text.front());
  if (is_list) return {kAffinityAll, text};
  note.At(text, "unknown affinity", keywords);
  return {};
}

AffinityText SplitPkgAffinity(std::string_view text, FaultNote& note) {
  return SplitAffinity(text, kPkgModes, kOneOf<kPkgModes>, ListAlone::kAccepted, note);
}

bool IsAnyCore(std::string_view text) { return StartsWithIgnoreCase(text, "Any"); }

// "Any" reads as "All".
AffinityText SplitUnitAffinity(std::string_view text, FaultNote& note) {
  if (!IsAnyCore(text)) {
    return SplitAffinity(text, kUnitModes, kOneOf<kUnitModes>, ListAlone::kAccepted, note);
  }
  note.At(text, "Any is not supported here and reads as All", kOneOf<kUnitModes>);
  return {};
}

AffinityText SplitThreadAffinity(std::string_view text, FaultNote& note) {
  return SplitAffinity(text, kThreadModes, kOneOf<kThreadModes>, ListAlone::kRefused, note);
}

std::optional<Fault> CheckAffinity(AffinityText (*split)(std::string_view, FaultNote&),
                                   std::string_view text) {
  FaultNote note(text);
  const AffinityText affinity = split(text, note);
  if (!affinity.numbers.empty()) ReadNumberList(affinity.numbers, nullptr, note);
  return note.First();
}

std::optional<Fault> DoubtAffinity(AffinityText (*split)(std::string_view, FaultNote&),
                                   std::string_view text) {
  FaultNote note(text);
  const AffinityText affinity = split(text, note);
  if (affinity.numbers.empty()) return std::nullopt;
  if (affinity.mode == kAffinityAll) {
    return Fault{.what = "numbers alone, which mean All",
                 .expected = "Specific: in front of the numbers, or All",
                 .kind = FaultKind::kListAlone};
  }
  const std::string_view repeated = FindRepeatedNumber(affinity.numbers);
  if (affinity.mode != kAffinitySpecific || repeated.empty()) return std::nullopt;
  note.At(repeated, "number that stands twice", "each number once", FaultKind::kRepeatedItem);
  return note.First();
}

}  // namespace

constinit const Expectation kPkgAffinityWords = kOneOf<kPkgModes>;
constinit const Expectation kUnitAffinityWords = kOneOf<kUnitModes>;
constinit const Expectation kThreadAffinityWords = kOneOf<kThreadModes>;

std::optional<Fault> CheckPkgAffinity(std::string_view text) {
  return CheckAffinity(SplitPkgAffinity, text);
}

std::optional<Fault> CheckUnitAffinity(std::string_view text) {
  return CheckAffinity(SplitUnitAffinity, text);
}

std::optional<Fault> CheckThreadAffinity(std::string_view text) {
  return CheckAffinity(SplitThreadAffinity, text);
}

std::optional<Fault> DoubtPkgAffinity(std::string_view text) {
  return DoubtAffinity(SplitPkgAffinity, text);
}

std::optional<Fault> DoubtUnitAffinity(std::string_view text) {
  return DoubtAffinity(SplitUnitAffinity, text);
}

std::optional<Fault> DoubtThreadAffinity(std::string_view text) {
  return DoubtAffinity(SplitThreadAffinity, text);
}

}  // namespace vexor

using namespace vexor;

std::vector<int> ParsePkgAffinity(std::string_view text) {
  FaultNote unused(text);
  const AffinityText affinity = SplitPkgAffinity(text, unused);
  std::vector<int> list = {affinity.mode};
  // Deliberately twice: callers expect two entries for an empty text at this level.
  if (text.empty()) list.push_back(affinity.mode);
  ReadNumberList(affinity.numbers, &list, unused);
  return list;
}

std::vector<int> ParseUnitAffinity(std::string_view text, int enabled) {
  if (enabled == 0) return {kAffinityAll};
  FaultNote unused(text);
  const AffinityText affinity = SplitUnitAffinity(text, unused);
  if (IsAnyCore(text)) std::puts(kAnyCoreWarning.data());
  std::vector<int> list = {affinity.mode};
  ReadNumberList(affinity.numbers, &list, unused);
  return list;
}

std::vector<int> ParseThreadAffinity(std::string_view text) {
  FaultNote unused(text);
  const AffinityText affinity = SplitThreadAffinity(text, unused);
  if (!NeedsNumbers(affinity.mode)) return {affinity.mode, affinity.mode};
  std::vector<int> list = {affinity.mode};
  ReadNumberList(affinity.numbers, &list, unused);
  return list;
}

std::string GetAffinityString(int code) {
  for (const Mode& mode : kModeNames) {
    if (mode.value == code) return std::string(mode.text);
  }
  std::array<char, 16> digits{};
  const int size = std::snprintf(digits.data(), digits.size(), "%03d", code);
  return {digits.data(), static_cast<std::size_t>(size)};
}

bool IsInAffinity(const std::vector<int>& affinity, int number) {
  if (affinity.empty()) return false;
  return affinity.front() == kAffinityAll || std::ranges::find(affinity, number) != affinity.end();
}
