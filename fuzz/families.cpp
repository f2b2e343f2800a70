#include "families.h"

#include <stdexcept>

#include "fuzz.h"
#include "vexor/config/syntaxes.h"
#include "vexor/logging/console.h"
#include "vexor/syntax/affinity.h"
#include "vexor/syntax/cstates.h"
#include "vexor/syntax/ice_states.h"
#include "vexor/syntax/number_tuples.h"
#include "vexor/syntax/peci.h"
#include "vexor/syntax/power_scheme.h"
#include "vexor/syntax/ratios.h"
#include "vexor/syntax/sleep_states.h"
#include "vexor/syntax/time.h"
#include "vexor/syntax/wake_events.h"
#include "vexor/util/ipv4.h"
#include "vexor/util/numbers.h"
#include "vexor/vocabulary/state_names.h"

using namespace vexor;
using Text = std::string_view;

namespace {

int CountOf(const auto& items) { return static_cast<int>(items.size()); }

int ReadNumber(Text text) {
  try {
    return String2Integer(text, kNoNumber64) == kNoNumber64 ? 0 : 1;
  } catch (const std::out_of_range&) {  // beyond 64 bits
    return 0;
  }
}

int ReadAffinity(const std::vector<int>& affinity) {
  Require(!affinity.empty() && affinity.front() >= kAffinitySpecific, "an affinity has a mode");
  for (const int number : affinity) GetAffinityString(number);
  return -1;
}

int ReadRatios(Text text) {
  std::vector<std::uint16_t> list;
  DecodeRatios(text, {24, 8, 16, 1}, true, list, static_cast<std::uint8_t>(text.size()));
  for (const std::uint16_t ratio : list) Require(ratio >= 8 && ratio <= 24, "within bounds", text);
  DecodeRatios(text, {24, 8, 16, 1}, false, list, 1);
  std::uint16_t ratio = 0;
  DecodeP0PnRatioEnums(text, 24, 8, ratio);
  return CountOf(ParseTrendRatios(text));
}

int ReadCounts(Text text) {
  std::vector<int> values;
  const bool understood = ParsePerCStateSetting(text, values);
  Require(values.size() == 11, "a slot a state", text);
  return understood ? 1 : 0;
}

int ReadLists(Text text) {
  std::vector<std::vector<int>> lists;
  ParsePerCStateSetting(text, lists, true);
  return ParsePerCStateSetting(text, lists, false) ? 1 : 0;
}

int ReadConditions(Text text) {
  std::vector<CSTATE_PER_STATE_CFG> slots;
  bool flags[4] = {};
  const bool good = ParsePerStateConditions(text, slots, flags[0], flags[1], flags[2], flags[3]);
  Require(slots.size() == 8, "eight slots", text);
  return good ? 1 : 0;
}

int ReadCstates(Text text) {
  ParseLimitCstates(text);
  ParseCstate(text);
  ParseCstateToHint(text);
  return CountOf(ParseExeCstates(text));
}

int ReadSleepStates(Text text) {
  ParseGandSStates(text);
  return CountOf(ParseSleepStates(text));
}

int ReadPlainWords(Text text) {
  PowerSchemeName(ParsePowerScheme(text));
  BatterySimName(ParseBatteryOptions(text));
  return -1;
}

using enum Agreement;

constexpr Family kFamilies[] = {
    {"text", ReadPlainWords},
    {"boolean", ReadPlainWords},
    {"word", ReadPlainWords},
    {"words", ReadPlainWords},
    {"numbers", ReadPlainWords},
    {"exit-ratios", ReadPlainWords},
    {"power-scheme", ReadPlainWords},
    {"power-source", ReadPlainWords},
    {"knobs", ReadPlainWords},
    {"count", ReadNumber, kAlike},
    {"mask", ReadNumber, kAlike},
    {"address", [](Text text) { return text == "Default" ? 1 : ReadNumber(text); }, kAlike},
    {"ipv4", [](Text text) { return int{IsIpv4Address(text)}; }, kAlike},
    {"level", [](Text text) { return ParseTraceLevelID(text, TRACE_LEVEL(-1)) < 0 ? 0 : 1; },
     kAlike},
    {"mode", [](Text text) { return int{ParseTestModeID(text) != TEST_MODE_UNKNOWN}; }, kAlike},
    {"s0ix", [](Text text) { return static_cast<int>(ParseS0ixStatesID(text)); }},
    {"time", [](Text text) { return int{ParseOnTimeType(text).isSet || text == "Invalid"}; },
     kGoodIsRead},
    {"cycles", [](Text text) { return int{ParseExeCycleTimeType(text, 1, 1, 1).isValid}; }},
    {"timeout", [](Text text) { return int{ParseTimeout(text).has_value()}; }, kAlike},
    {"scope", [](Text text) { return int{ParseScope(text).has_value()}; }, kAlike},
    {"ratio-bytes", [](Text text) { return int{ParseRatioSpread(text).has_value()}; }, kAlike},
    {"packages", [](Text text) { return ReadAffinity(ParsePkgAffinity(text)); }},
    {"affinity", [](Text text) { return ReadAffinity(ParseUnitAffinity(text, 1)); }},
    {"threads", [](Text text) { return ReadAffinity(ParseThreadAffinity(text)); }},
    {"cstates", ReadCstates, kAlike},
    {"state-counts", ReadCounts, kAlike},
    {"state-lists", ReadLists, kAlike},
    {"condition", ReadConditions, kGoodIsRead},  // numbers are truncated to 32 bits
    {"ice", [](Text text) { return text == "None" ? 1 : int{ParseIceState(text) != 0}; }},
    {"ice-states", [](Text text) { return CountOf(ParseExeIceSleepStates(text)); }, kAlike},
    {"pstates", [](Text text) { return CountOf(ParseExePstates(text).ratios); }},
    {"ratios", ReadRatios, kGoodIsRead},
    {"sagv", [](Text text) { return CountOf(ParseSagvRatios(text)); }, kGoodIsRead},
    {"low-high", [](Text text) { return CountOf(ParseTurboActivationRatios(text)); }},
    {"sleep", ReadSleepStates, kGoodIsRead},
    {"wake", [](Text text) { return CountOf(ParseWakeEvents(text)); }, kGoodIsRead},
    {"peci", [](Text text) { return CountOf(ParsePECIMajorCmdsList(text)); }, kGoodIsRead},
    {"peci-services", [](Text text) { return CountOf(ParsePECIRdPkgCfgCmdsList(text, "")); },
     kGoodIsRead},
    {"peci-parameters", [](Text text) { return CountOf(ParsePECIRdPkgCfgCmdsList("a", text)); },
     kGoodIsRead},
    {"peci-data", [](Text text) { return CountOf(ParsePECIWrPkgCfgCmdsList("a", "", text)); },
     kGoodIsRead},
    {"peci-registers", [](Text text) { return CountOf(ParsePECIRdMSRCmdsList(text)); },
     kGoodIsRead},
    {"peci-pci", [](Text text) { return CountOf(ParsePECIPciCfgCmdsList(text)); }, kGoodIsRead},
};

}  // namespace

std::span<const Family> Families() { return kFamilies; }

void FuzzFamily(const Family& family, Text text) {
  if (HasLongRange(text)) return;
  int count = -1;
  try {
    count = family.read(text);
  } catch (const std::length_error&) {  // a list too long to hold
  }
  const std::optional<TextFault> fault = CheckSyntax(family.syntax, text);
  DescribeText(family.syntax, text);
  if (fault) {
    Require(fault->at <= text.size(), "a fault is inside the text", text);
    Require(!fault->what.empty() && !fault->expected.empty(), "a fault is explained", text);
  }
  if (count < 0 || text.find_first_not_of(" ;,") == Text::npos) return;
  const bool is_good = !fault || fault->severity != Severity::kError;  // a warning doubts the sense
  Require(!is_good || count > 0 || family.agreement == kNone, "a good text is read", text);
  Require(is_good || count == 0 || family.agreement != kAlike, "what is read is good", text);
}
