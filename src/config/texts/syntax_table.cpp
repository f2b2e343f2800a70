#include "config/texts/syntax_table.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "config/texts/text_meaning.h"
#include "syntax/checks.h"
#include "syntax/fault_note.h"
#include "syntax/time_units.h"
#include "syntax/words.h"
#include "util/text.h"
#include "vexor/logging/console.h"
#include "vexor/util/ipv4.h"
#include "vocabulary/state_tables.h"

namespace vexor {
namespace {

using Result = std::optional<Fault>;

constexpr std::string_view kIpv4Form = "four numbers from 0 to 255 separated by dots";
constexpr auto kLogLevels =
    std::to_array<std::string_view>({"No-Log", "Critical", "Information", "Debug"});
constexpr Expectation kLogLevelWords = kOneOf<kLogLevels>;
constexpr Expectation kTestModeWords = kOneOf<kTestModes>;
constexpr Expectation kS0ixWords = kOneOf<kS0ixStates>;

Result FaultUnless(bool good, std::string_view what, const Expectation& expected) {
  if (good) return std::nullopt;
  return Fault{.at = 0, .what = what, .expected = expected};
}

Result CheckIpv4(std::string_view text) {
  return FaultUnless(IsIpv4Address(text), "not an IPv4 address, reads as empty", kIpv4Form);
}

Result CheckLogLevel(std::string_view text) {
  constexpr auto kUnknown = static_cast<TRACE_LEVEL>(-1);
  return FaultUnless(ParseTraceLevelID(text, kUnknown) != kUnknown, "unknown level",
                     kLogLevelWords);
}

Result CheckExitRatios(std::string_view text) {
  return EqualsIgnoreCase(text, "ALL") ? std::nullopt : CheckTrendRatios(text);
}

// GetSyntax indexes the table by the enumerator; the static_assert below enforces the order.
// clang-format off
constexpr auto kSyntaxes = std::to_array<SyntaxRow>({
    {.syntax = Syntax::kFreeText, .name = "text", .grammar = "any text", .example = "text"},
    {.syntax = Syntax::kBoolean, .name = "boolean", .grammar = "%w",
     .example = "true", .bad = "maybe",
     .check = CheckBoolean, .words = &kBooleanWords, .doubt = DoubtBoolean,
     .pattern = "true|%(false)"},
    {.syntax = Syntax::kWord, .name = "word", .grammar = "one of the words", .pattern = "%w"},
    {.syntax = Syntax::kWordList, .name = "words", .grammar = "words joined by \";\"",
     .doubt = DoubtRepeatedWord, .pattern = "%w", .separators = ";"},
    {.syntax = Syntax::kCount, .name = "count", .grammar = "a decimal or 0x number",
     .example = "100", .bad = "ten", .check = CheckCount, .meaning = DescribeCount,
     .pattern = "%n"},
    {.syntax = Syntax::kMask, .name = "mask", .grammar = "a decimal or 0x number",
     .example = "0xFFFFFFFF", .bad = "0xFG", .check = CheckMask, .meaning = DescribeMask,
     .pattern = "%n"},
    {.syntax = Syntax::kNumbers, .name = "numbers",
     .grammar = R"(decimal or 0x numbers joined by ";" or ",")",
     .example = "4711;0x10", .bad = "1;x", .check = CheckNumbers,
     .pattern = "%n", .separators = ";,"},
    {.syntax = Syntax::kAddress, .name = "address",
     .grammar = "Default, or a decimal or 0x number", .example = "0xC0000000", .bad = "default",
     .check = CheckAddress, .meaning = DescribeAddress, .pattern = "Default|%n"},
    {.syntax = Syntax::kIpv4, .name = "ipv4", .grammar = kIpv4Form,
     .example = "192.168.1.1", .bad = "1.2.3.256", .check = CheckIpv4,
     .pattern = R"(%n(\.%n){3})"},
    {.syntax = Syntax::kLogLevel, .name = "level", .grammar = "%w",
     .example = "Information", .bad = "Loud", .check = CheckLogLevel, .words = &kLogLevelWords,
     .pattern = "%w"},
    {.syntax = Syntax::kTestMode, .name = "mode", .grammar = "%w",
     .example = "Verify", .bad = "Verfy", .check = CheckTestMode, .words = &kTestModeWords,
     .pattern = "%w"},
    {.syntax = Syntax::kDuration, .name = "time",
     .grammar = "unit:value or unit:low-high with %u; Invalid is no time",
     .example = "msec:80-120", .bad = "msek:80",
     .check = CheckDuration, .meaning = DescribeDuration,
     .pattern = "Invalid|[: ]*(%u[: ]+%n(-%n)?|[^:]*%(usec)[^:]*[: ]+%n(-%n)?|"
                "[^:]*%(ticks)[^:]*[: ]+[^:]+)[: ]*"},
    {.syntax = Syntax::kExeCycles, .name = "cycles",
     .grammar = "a number, a time as unit:value, or count:PerSet",
     .example = "min:30", .bad = "min:x", .check = CheckExeCycles, .meaning = DescribeCycles,
     .doubt = DoubtExeCycles,
     .pattern = "%n|[: ]*%u[: ]+%n[: ]*|.*%(perset|#set).*"},
    {.syntax = Syntax::kTimeout, .name = "timeout", .grammar = "seconds, or seconds:count",
     .example = "120:5", .bad = "120:x", .check = CheckTimeout, .meaning = DescribeTimeout,
     .pattern = "%n( ?: ?%n)? ?:?"},
    {.syntax = Syntax::kScope, .name = "scope",
     .grammar = "percentages of packages:modules:cores, or with :threads",
     .example = "100:50:0", .bad = "100:50", .check = CheckScope, .meaning = DescribeScope,
     .doubt = DoubtScope,
     .pattern = "%n( ?: ?%n){2,3} ?:?"},
    {.syntax = Syntax::kPkgAffinity, .name = "packages", .grammar = "%w; numbers alone mean All",
     .example = "Specific:0,1", .bad = "Everything",
     .check = CheckPkgAffinity, .meaning = DescribePackages, .words = &kPkgAffinityWords,
     .doubt = DoubtPkgAffinity, .pattern = "%w.*|[0-9].*"},
    {.syntax = Syntax::kUnitAffinity, .name = "affinity", .grammar = "%w; numbers alone mean All",
     .example = "Specific:0-3,8", .bad = "Any",
     .check = CheckUnitAffinity, .meaning = DescribeUnits, .words = &kUnitAffinityWords,
     .doubt = DoubtUnitAffinity, .pattern = "%w.*|[0-9].*"},
    {.syntax = Syntax::kThreadAffinity, .name = "threads", .grammar = "%w",
     .example = "Specific:1,3", .bad = "0,1",
     .check = CheckThreadAffinity, .meaning = DescribeThreads, .words = &kThreadAffinityWords,
     .doubt = DoubtThreadAffinity, .pattern = "%w.*"},
    {.syntax = Syntax::kCstates, .name = "cstates", .grammar = "C-states joined by \";\"",
     .example = "C1;C6;C10", .bad = "C2",
     .check = CheckExeCstates, .meaning = DescribeCstates, .words = &kCstateWords,
     .pattern = "%w", .separators = ";"},
    {.syntax = Syntax::kPerStateCounts, .name = "state-counts",
     .grammar = "state:number items joined by \";\"", .example = "C1:5;C6:3", .bad = "C1:x",
     .check = CheckPerCStateNumbers, .meaning = DescribeCounts,
     .doubt = DoubtPerCStateItems,
     .pattern = "(C[0-9]+ ?: ?)?%n", .separators = ";"},
    {.syntax = Syntax::kPerStateLists, .name = "state-lists",
     .grammar = "state:[numbers] items joined by \";\"",
     .example = "C1:[];C6:[0,2]", .bad = "C1:0",
     .check = CheckPerCStateLists, .meaning = DescribeLists,
     .doubt = DoubtPerCStateItems,
     .pattern = R"((C[0-9]+ ?: ?)?\[[^;]*\])", .separators = ";"},
    {.syntax = Syntax::kPerStateCondition, .name = "condition",
     .grammar = "a 32-bit word, as a decimal or 0x number",
     .example = "0x00000F00", .bad = "bits",
     .check = CheckPerStateConditions, .meaning = DescribeMask, .pattern = "%n"},
    {.syntax = Syntax::kIceState, .name = "ice",
     .grammar = R"(%w; of several, joined by ";", the first of these)",
     .example = "D0I3", .bad = "D1",
     .check = CheckIceStates, .meaning = DescribeIceState, .words = &kIceStateWords,
     .doubt = DoubtIceStates, .pattern = "%w", .separators = ";"},
    {.syntax = Syntax::kExeIceStates, .name = "ice-states", .grammar = R"(%w, joined by ";")",
     .example = "D0I3;Power-Off", .bad = "None",
     .check = CheckExeIceSleepStates, .meaning = DescribeIceStates, .words = &kExeIceStateWords,
     .pattern = "%w", .separators = ";"},
    {.syntax = Syntax::kPstates, .name = "pstates",
     .grammar = "P0...Pn, P1...Pn, Turbo, Specific:ratios, or ratios",
     .example = "P0...Pn", .bad = "P5", .check = CheckExePstates, .meaning = DescribePstates,
     .pattern = R"((Specific: ?)?(%r|Turbo|P0\.\.\.Pn|P1\.\.\.?Pn|P0\.\.P1))", .separators = ";,"},
    {.syntax = Syntax::kRatios, .name = "ratios",
     .grammar = "P0, P1, Pe, Pn, Pn--, P0++, P0Pn, All, numbers from 0 to 254 or ranges of them, "
         "joined by \",\"; or P0...Pn, P0..P1 or P1..Pn alone",
     .example = "P0,0x10,8-12", .bad = "255",
     .check = CheckTrendRatios, .meaning = DescribeRatios,
     .pattern = R"(%r|P0\.\.\.Pn|P0\.\.P1|P1\.\.Pn)", .separators = ";,"},
    {.syntax = Syntax::kExitRatios, .name = "exit-ratios",
     .grammar = "ALL, or ratios joined by \",\"; or P0...Pn, P0..P1 or P1..Pn alone",
     .example = "ALL", .bad = "any", .check = CheckExitRatios, .meaning = DescribeExitRatios,
     .pattern = R"(%(all)|%r|P0\.\.\.Pn|P0\.\.P1|P1\.\.Pn)", .separators = ";,"},
    {.syntax = Syntax::kSagvRatios, .name = "sagv", .grammar = R"(%w, joined by ",")",
     .example = "Low,High", .bad = "Mid",
     .check = CheckSagvRatios, .meaning = DescribePoints, .words = &kSagvPoints,
     .pattern = "%w", .separators = ";,"},
    {.syntax = Syntax::kLowHighRatios, .name = "low-high", .grammar = R"(%w, joined by ",")",
     .example = "Low,High", .bad = "Med",
     .check = CheckLowHighRatios, .meaning = DescribePoints, .words = &kLowHighPoints,
     .pattern = "%w", .separators = ";,"},
    {.syntax = Syntax::kRatioBytes, .name = "ratio-bytes",
     .grammar = "three hexadecimal bytes joined by \":\"", .example = "FF:FF:FF", .bad = "FF:FF",
     .check = CheckRatioBytes, .meaning = DescribeSpread,
     .pattern = "[0-9A-Fa-fXx]+( ?: ?[0-9A-Fa-fXx]+){2} ?:?"},
    {.syntax = Syntax::kSleepStates, .name = "sleep",
     .grammar = "flows joined by \";\", each with a time of its own as flow=time",
     .example = "S0ix;S3;Warm-Reset", .bad = "S9",
     .check = CheckSleepStates, .meaning = DescribeSleepStates, .words = &kSleepFlowWords,
     .pattern = "%w( ?=[^;]*)?", .separators = ";"},
    {.syntax = Syntax::kS0ixState, .name = "s0ix", .grammar = "one of the words",
     .example = "S0i3", .bad = "S0i4", .check = CheckS0ixState, .words = &kS0ixWords,
     .pattern = "%w"},
    {.syntax = Syntax::kPowerScheme, .name = "power-scheme", .grammar = "%w",
     .example = "Balanced", .bad = "Balance",
     .check = CheckPowerScheme, .words = &kPowerSchemeWords, .pattern = "%w"},
    {.syntax = Syntax::kPowerSource, .name = "power-source", .grammar = "%w",
     .example = "AC", .bad = "Solar", .check = CheckBatteryOption, .words = &kPowerSourceWords,
     .pattern = "%w"},
    {.syntax = Syntax::kWakeEvents, .name = "wake",
     .grammar = R"(wake sources joined by ";" or ",")", .example = "RTC;USB", .bad = "RTX",
     .check = CheckWakeEvents, .meaning = DescribeWakeEvents, .words = &kWakeEventWords,
     .pattern = "%w", .separators = ";,"},
    {.syntax = Syntax::kPeciCommands, .name = "peci", .grammar = "PECI commands joined by \";\"",
     .example = "Ping;GetTemp", .bad = "Pong",
     .check = CheckPeciCommands, .words = &kPeciCommandWords, .pattern = "%w", .separators = ";"},
    {.syntax = Syntax::kPeciServices, .name = "peci-services",
     .grammar = "names of services joined by \";\"", .example = "Pkg-Temp;0x1A", .bad = "a?",
     .check = CheckPeciServices, .pattern = "[-0-9A-Za-z_.]+", .separators = ";"},
    {.syntax = Syntax::kPeciParameters, .name = "peci-parameters",
     .grammar = "numbers joined by \";\"", .example = "0x0;;0xFF", .bad = "x",
     .check = CheckPeciParameters, .pattern = "%n", .separators = ";"},
    {.syntax = Syntax::kPeciData, .name = "peci-data", .grammar = "numbers joined by \";\"",
     .example = "0x0;0xFFFFFFFF", .bad = "x", .check = CheckPeciData,
     .pattern = "%n", .separators = ";"},
    {.syntax = Syntax::kPeciRegisters, .name = "peci-registers",
     .grammar = "names of registers joined by \";\"",
     .example = "Perf-Status:3;0x1A", .bad = "A:x",
     .check = CheckPeciRegisters, .meaning = DescribeRegisters,
     .pattern = "[-0-9A-Za-z_.]+( ?: ?%n)?", .separators = ";"},
    {.syntax = Syntax::kPeciPci, .name = "peci-pci",
     .grammar = "segment:bus:device:function:offset, with :and:or for a write",
     .example = "0:0:31:0:0x40", .bad = "0:0",
     .check = CheckPeciPciConfigs, .meaning = DescribePci,
     .pattern = "%n( ?: ?%n){4,6} ?:?", .separators = ";"},
    {.syntax = Syntax::kKnobs, .name = "knobs",
     .grammar = "knobs joined by \";\"; a test may have others than the known ones",
     .example = "Random;ExitOnFail", .bad = "Randm", .words = &kKnobWords, .doubt = DoubtKnobs},
});
// clang-format on

constexpr bool AreInOrder() {
  for (std::size_t i = 0; i < kSyntaxes.size(); ++i) {
    if (static_cast<std::size_t>(kSyntaxes[i].syntax) != i) return false;
  }
  return true;
}
static_assert(AreInOrder());

// Joins words to a phrase, with "Specific:" as "Specific:numbers".
std::string ListOf(std::span<const std::string_view> words) {
  std::vector<std::string> forms;
  for (const std::string_view word : words) {
    forms.push_back(std::string(word).append(word.ends_with(':') ? "numbers" : ""));
  }
  return JoinWordList(Words(forms.begin(), forms.end()));
}

std::string ExpandGrammar(const SyntaxRow& row) {
  std::string grammar(row.grammar);
  const std::size_t sign = grammar.find('%');
  if (sign == std::string::npos) return grammar;
  const bool is_unit = grammar[sign + 1] == 'u';
  assert(is_unit || row.words != nullptr);
  return grammar.replace(
      sign, 2,
      ListOf(is_unit ? std::span<const std::string_view>(kDurationUnits) : row.words->words));
}

bool IsOneOf(std::string_view words, std::string_view text) {
  for (std::string_view word; TakeItem(words, ';', word);) {
    if (word == text) return true;
  }
  return false;
}

Result CheckWords(std::string_view words, std::string_view text) {
  FaultNote note(text);
  std::string_view rest = text;
  for (std::string_view item; TakeItem(rest, ';', item);) {
    const std::string_view word = TrimBlanks(item);
    if (!word.empty() && !IsOneOf(words, word)) note.At(item, "unknown word", words);
  }
  return note.First();
}

}  // namespace

std::span<const SyntaxRow> Syntaxes() { return kSyntaxes; }

const SyntaxRow* FindSyntax(std::string_view name) {
  const auto row = std::ranges::find(Syntaxes(), name, &SyntaxRow::name);
  return row == Syntaxes().end() ? nullptr : &*row;
}

const SyntaxRow& GetSyntax(Syntax syntax) {
  assert(static_cast<std::size_t>(syntax) < kSyntaxes.size());
  return kSyntaxes[static_cast<std::size_t>(syntax)];
}

std::string_view GrammarOf(Syntax syntax) {
  // Views of the texts are handed out, so they are made once and kept.
  static const auto kGrammars = [] {
    std::array<std::string, kSyntaxes.size()> grammars;
    std::ranges::transform(kSyntaxes, grammars.begin(), ExpandGrammar);
    return grammars;
  }();
  return kGrammars[static_cast<std::size_t>(syntax)];
}

Words GetWords(const OptionRow& option) {
  return option.words.empty() ? GetWords(option.syntax) : SplitWords(option.words);
}

Words GetWords(Syntax syntax) {
  const Expectation* const expected = GetSyntax(syntax).words;
  return expected == nullptr ? Words() : Words(expected->words.begin(), expected->words.end());
}

std::optional<Fault> CheckOption(const OptionRow& option, std::string_view text) {
  if (text.empty()) return std::nullopt;
  if (option.syntax == Syntax::kWord) {
    return FaultUnless(IsOneOf(option.words, text), "unknown word", option.words);
  }
  if (option.syntax == Syntax::kWordList) return CheckWords(option.words, text);
  const auto check = GetSyntax(option.syntax).check;
  return check == nullptr ? std::nullopt : check(text);
}

std::optional<Fault> DoubtOption(const OptionRow& option, std::string_view text) {
  if (option.syntax == Syntax::kKnobs) {
    const auto unknown = DoubtKnobs(text, SplitWords(option.words));
    return unknown ? unknown : DoubtRepeatedWord(text);
  }
  const auto doubt = GetSyntax(option.syntax).doubt;
  return doubt == nullptr || text.empty() ? std::nullopt : doubt(text);
}

}  // namespace vexor
