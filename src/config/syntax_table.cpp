#include "config/syntax_table.h"

#include <algorithm>
#include <array>

#include "syntax/affinity_grammar.h"
#include "syntax/cstates_grammar.h"
#include "syntax/fault_note.h"
#include "syntax/ice_states_grammar.h"
#include "syntax/knobs_grammar.h"
#include "syntax/number_tuples_grammar.h"
#include "syntax/peci_grammar.h"
#include "syntax/plain_grammar.h"
#include "syntax/power_scheme_grammar.h"
#include "syntax/ratios_grammar.h"
#include "syntax/sleep_states_grammar.h"
#include "syntax/time_grammar.h"
#include "syntax/wake_events_grammar.h"
#include "syntax/words.h"
#include "util/text.h"
#include "vexor/logging/console.h"
#include "vexor/util/ipv4.h"
#include "vocabulary/state_tables.h"

namespace vexor {
namespace {

using Result = std::optional<Fault>;

constexpr std::string_view kIpv4Form = "four numbers from 0 to 255 joined by points";
constexpr std::string_view kLogLevels = "No-Log, Critical, Information or Debug";

Result Unless(bool good, std::string_view what, std::string_view expected) {
  if (good) return std::nullopt;
  return Fault{.at = 0, .what = what, .expected = expected};
}

Result CheckIpv4(std::string_view text) {
  return Unless(IsIpv4Address(text), "no IPv4 address, and reads as empty", kIpv4Form);
}

Result CheckLogLevel(std::string_view text) {
  constexpr auto kUnknown = static_cast<TRACE_LEVEL>(-1);
  return Unless(ParseTraceLevelID(text, kUnknown) != kUnknown, "unknown level", kLogLevels);
}

Result CheckExitRatios(std::string_view text) {
  return EqualsIgnoreCase(text, "ALL") ? std::nullopt : CheckTrendRatios(text);
}

// In the order of the enumeration.
constexpr auto kSyntaxes = std::to_array<SyntaxRow>({
    {Syntax::kFreeText, "text", "any text", "text", nullptr},
    {Syntax::kBoolean, "boolean", "true or false", "true", CheckBoolean, "true|%(false)", "",
     DoubtBoolean},
    {Syntax::kWord, "word", "one of the words", "", nullptr, "%w"},
    {Syntax::kWordList, "words", "words joined by \";\"", "", nullptr, "%w", ";"},
    {Syntax::kCount, "count", "a decimal or 0x number", "100", CheckCount, "%n"},
    {Syntax::kMask, "mask", "a decimal or 0x number", "0xFFFFFFFF", CheckMask, "%n"},
    {Syntax::kNumbers, "numbers", R"(decimal or 0x numbers joined by ";" or ",")", "4711;0x10",
     CheckNumbers, "%n", ";,"},
    {Syntax::kAddress, "address", "Default, or a decimal or 0x number", "0xC0000000", CheckAddress,
     "Default|%n"},
    {Syntax::kIpv4, "ipv4", kIpv4Form, "192.168.1.1", CheckIpv4, R"(%n(\.%n){3})"},
    {Syntax::kLogLevel, "level", kLogLevels, "Information", CheckLogLevel, "%w"},
    {Syntax::kTestMode, "mode", kListOf<kTestModes>, "Verify", CheckTestMode, "%w"},
    {Syntax::kDuration, "time",
     "unit:value or unit:low-high with usec, msec, sec, min or hour; Invalid is no time",
     "msec:80-120", CheckDuration,
     "Invalid|[: ]*(%(msec|sec|min|hour)[: ]+%n(-%n)?|[^:]*%(usec)[^:]*[: ]+%n(-%n)?|"
     "[^:]*%(ticks)[^:]*[: ]+[^:]+)[: ]*"},
    {Syntax::kExeCycles, "cycles", "a number, a time as unit:value, or count:PerSet", "min:30",
     CheckExeCycles, "%n|[: ]*%(msec|sec|min|hour)[: ]+%n[: ]*|.*%(perset|#set).*"},
    {Syntax::kTimeout, "timeout", "seconds, or seconds:count", "120:5", CheckTimeout,
     "%n( ?: ?%n)? ?:?"},
    {Syntax::kScope, "scope", "percentages of packages:modules:cores, or with :threads", "100:50:0",
     CheckScope, "%n( ?: ?%n){2,3} ?:?"},
    {Syntax::kPkgAffinity, "packages",
     "All, Any, Random or Specific:numbers; numbers alone mean All", "Specific:0,1",
     CheckPkgAffinity, "%w.*|[0-9].*", "", DoubtListAlone},
    {Syntax::kUnitAffinity, "affinity",
     "All, Random, BigCores, SmallCores, EvenCores, OddCores, sCores, cCores, cCoreAtom or "
     "Specific:numbers; numbers alone mean All",
     "Specific:0-3,8", CheckUnitAffinity, "%w.*|[0-9].*", "", DoubtListAlone},
    {Syntax::kThreadAffinity, "threads", "All, Any:numbers, Random or Specific:numbers",
     "Specific:1,3", CheckThreadAffinity, "%w.*"},
    {Syntax::kCstates, "cstates", "C-states joined by \";\"", "C1;C6;C10", CheckExeCstates, "%w",
     ";"},
    {Syntax::kPerStateCounts, "state-counts", "state:number items joined by \";\"", "C1:5;C6:3",
     CheckPerCStateNumbers, "(C[0-9]+ ?: ?)?%n", ";"},
    {Syntax::kPerStateLists, "state-lists", "state:[numbers] items joined by \";\"",
     "C1:[];C6:[0,2]", CheckPerCStateLists, R"((C[0-9]+ ?: ?)?\[[^;]*\])", ";"},
    {Syntax::kPerStateCondition, "condition", "a 32-bit word, as a decimal or 0x number",
     "0x00000F00", CheckPerStateConditions, "%n"},
    {Syntax::kIceState, "ice",
     "Power-On, Power-Off, D0, D0I3, D3 or None; of several, joined by \";\", the first of these",
     "D0I3", CheckIceStates, "%w", ";"},
    {Syntax::kExeIceStates, "ice-states", "Power-On, Power-Off, D0, D0I3 or D3, joined by \";\"",
     "D0I3;Power-Off", CheckExeIceSleepStates, "%w", ";"},
    {Syntax::kPstates, "pstates", "P0...Pn, P1...Pn, Turbo, Specific:ratios, or ratios", "P0...Pn",
     CheckExePstates, R"((Specific: ?)?(%r|Turbo|P0\.\.\.Pn|P1\.\.\.?Pn|P0\.\.P1))", ";,"},
    {Syntax::kRatios, "ratios",
     "P0, P1, Pe, Pn, Pn--, P0++, P0Pn, All, numbers from 0 to 254 or ranges of them, joined by "
     "\",\"; or P0...Pn, P0..P1 or P1..Pn alone",
     "P0,0x10,8-12", CheckTrendRatios, R"(%r|P0\.\.\.Pn|P0\.\.P1|P1\.\.Pn)", ";,"},
    {Syntax::kExitRatios, "exit-ratios",
     "ALL, or ratios joined by \",\"; or P0...Pn, P0..P1 or P1..Pn alone", "ALL", CheckExitRatios,
     R"(%(all)|%r|P0\.\.\.Pn|P0\.\.P1|P1\.\.Pn)", ";,"},
    {Syntax::kSagvRatios, "sagv", "Low, Med, High or Dynamic, joined by \",\"", "Low,High",
     CheckSagvRatios, "%w", ";,"},
    {Syntax::kLowHighRatios, "low-high", "Low or High, joined by \",\"", "Low,High",
     CheckLowHighRatios, "%w", ";,"},
    {Syntax::kRatioBytes, "ratio-bytes", "three hexadecimal bytes joined by \":\"", "FF:FF:FF",
     CheckRatioSpread, "[0-9A-Fa-fXx]+( ?: ?[0-9A-Fa-fXx]+){2} ?:?"},
    {Syntax::kSleepStates, "sleep",
     "flows joined by \";\", each with a time of its own as flow=time", "S0ix;S3;Warm-Reset",
     CheckSleepStates, "%w( ?=[^;]*)?", ";"},
    {Syntax::kS0ixState, "s0ix", "one of the words", "S0i3", CheckS0ixState, "%w"},
    {Syntax::kPowerScheme, "power-scheme",
     "Default, Balanced, Power-Saver, High-Performance, Random or All", "Balanced",
     CheckPowerScheme, "%w"},
    {Syntax::kPowerSource, "power-source", "Default, AC or DC", "AC", CheckBatteryOption, "%w"},
    {Syntax::kWakeEvents, "wake", R"(wake sources joined by ";" or ",")", "RTC;USB",
     CheckWakeEvents, "%w", ";,"},
    {Syntax::kPeciCommands, "peci", "PECI commands joined by \";\"", "Ping;GetTemp",
     CheckPeciCommands, "%w", ";"},
    {Syntax::kPeciServices, "peci-services", "names of services joined by \";\"", "Pkg-Temp;0x1A",
     CheckPeciServices, "[-0-9A-Za-z_.]+", ";"},
    {Syntax::kPeciParameters, "peci-parameters", "numbers joined by \";\"", "0x0;;0xFF",
     CheckPeciParameters, "%n", ";"},
    {Syntax::kPeciData, "peci-data", "numbers joined by \";\"", "0x0;0xFFFFFFFF", CheckPeciData,
     "%n", ";"},
    {Syntax::kPeciRegisters, "peci-registers", "names of registers joined by \";\"",
     "Perf-Status:3;0x1A", CheckPeciRegisters, "[-0-9A-Za-z_.]+( ?: ?%n)?", ";"},
    {Syntax::kPeciPci, "peci-pci", "segment:bus:device:function:offset, with :and:or for a write",
     "0:0:31:0:0x40", CheckPeciPciConfigs, "%n( ?: ?%n){4,6} ?:?", ";"},
    {Syntax::kKnobs, "knobs", "knobs joined by \";\"; a test may have others than the known ones",
     "Random;ExitOnFail", nullptr, "", "", DoubtKnobs},
});

constexpr bool AreInOrder() {
  for (std::size_t i = 0; i < kSyntaxes.size(); ++i) {
    if (static_cast<std::size_t>(kSyntaxes[i].syntax) != i) return false;
  }
  return true;
}
static_assert(AreInOrder());

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

const SyntaxRow& GetSyntax(Syntax syntax) { return kSyntaxes[static_cast<std::size_t>(syntax)]; }

Words GetWords(const OptionRow& option) {
  return option.words.empty() ? GetWords(option.syntax) : SplitWords(option.words);
}

Words GetWords(Syntax syntax) {
  const SyntaxRow& row = GetSyntax(syntax);
  const auto check = row.check != nullptr ? row.check : row.doubt;
  if (check == nullptr) return {};
  const std::optional<Fault> fault = check("?");  // good by no grammar
  return fault ? SplitWordList(fault->expected) : Words();
}

std::optional<Fault> CheckOption(const OptionRow& option, std::string_view text) {
  if (text.empty()) return std::nullopt;
  if (option.syntax == Syntax::kWord) {
    return Unless(IsOneOf(option.words, text), "unknown word", option.words);
  }
  if (option.syntax == Syntax::kWordList) return CheckWords(option.words, text);
  const auto check = GetSyntax(option.syntax).check;
  return check == nullptr ? std::nullopt : check(text);
}

std::optional<Fault> DoubtOption(const OptionRow& option, std::string_view text) {
  if (option.syntax == Syntax::kKnobs) return DoubtKnobs(text, SplitWords(option.words));
  const auto doubt = GetSyntax(option.syntax).doubt;
  return doubt == nullptr || text.empty() ? std::nullopt : doubt(text);
}

}  // namespace vexor
