// Parsers of option texts, name tables and error words, compared with hand-written loops for the
// same inputs.

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "by_hand.h"
#include "comparison.h"
#include "vexor/syntax/affinity.h"
#include "vexor/syntax/cstates.h"
#include "vexor/syntax/error_codes.h"
#include "vexor/syntax/ice_states.h"
#include "vexor/syntax/keywords.h"
#include "vexor/syntax/power_scheme.h"
#include "vexor/syntax/ratios.h"
#include "vexor/syntax/sleep_states.h"
#include "vexor/syntax/wake_events.h"
#include "vexor/vocabulary/feature_names.h"
#include "vexor/vocabulary/pm_tests.h"
#include "works.h"

namespace {

using std::string_view;
using vexor::AddComparison;
using vexor::AddTextPair;
using vexor::ForEachItemByHand;
using vexor::ForEachNumberByHand;
using vexor::ReadByHand;

constexpr char ToUpperByHand(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualsByHand(string_view a, string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (ToUpperByHand(a[i]) != ToUpperByHand(b[i])) return false;
  }
  return true;
}

std::vector<int> AffinityByHand(string_view text) {
  std::vector<int> list;
  if (text == "All") return {0x7FFF};
  if (text.starts_with("Specific:")) {
    list.push_back(0x7FF3);
    text.remove_prefix(9);
  } else {
    list.push_back(0x7FFF);
  }
  ForEachNumberByHand(text, [&](int number) { list.push_back(number); });
  return list;
}

struct NamedValue {
  string_view name;
  int value;
};

// The value of a name, by the comparison that is meant; -1 for none.
template <std::size_t kSize>
int FindByHand(const std::array<NamedValue, kSize>& rows, string_view name, bool ignore_case) {
  for (const NamedValue& row : rows) {
    if (ignore_case ? EqualsByHand(row.name, name) : row.name == name) return row.value;
  }
  return -1;
}

constexpr auto kCstates = std::to_array<NamedValue>({{"C0", 1},
                                                     {"C1", 2},
                                                     {"C3", 4},
                                                     {"C6", 8},
                                                     {"C6r", 8},
                                                     {"C7", 16},
                                                     {"C7s", 16},
                                                     {"C8", 32},
                                                     {"C9", 64},
                                                     {"C10", 128}});

std::vector<CSTATE_MASK> CstatesByHand(string_view text) {
  std::vector<CSTATE_MASK> masks;
  ForEachItemByHand(text, ';', [&](string_view item) {
    masks.push_back(static_cast<CSTATE_MASK>(FindByHand(kCstates, item, false)));
  });
  return masks;
}

std::vector<int> SettingByHand(string_view text) {
  std::vector<int> values(11);
  ForEachItemByHand(text, ';', [&](string_view item) {
    const std::size_t colon = item.find(':');
    const int state = ReadByHand(item.substr(1, colon - 1));
    values[static_cast<std::size_t>(state)] = ReadByHand(item.substr(colon + 1));
  });
  return values;
}

constexpr auto kWakeEvents = std::to_array<NamedValue>({{"OS-Native", 0},
                                                        {"Time_MWait", 1},
                                                        {"External", 6},
                                                        {"RTC", 2},
                                                        {"Timer", 2},
                                                        {"WADT", 3},
                                                        {"Random", 5},
                                                        {"HWRTC", 4},
                                                        {"PwrBtn", 6},
                                                        {"USB", 7},
                                                        {"Audio", 8},
                                                        {"NFC", 9},
                                                        {"ISH", 10},
                                                        {"FingerPrint", 11},
                                                        {"HomeButton", 12}});

std::vector<WAKE_EVENT> WakeEventsByHand(string_view text) {
  std::vector<WAKE_EVENT> events;
  ForEachItemByHand(text, ';', [&](string_view item) {
    events.push_back(static_cast<WAKE_EVENT>(FindByHand(kWakeEvents, item, true)));
  });
  return events;
}

constexpr auto kFlows = std::to_array<NamedValue>({{"S0ix", 1},
                                                   {"CS", 1},
                                                   {"S3", 2},
                                                   {"S4", 4},
                                                   {"S5", 8},
                                                   {"ShutDown", 16},
                                                   {"S5-ShutDown", 16},
                                                   {"S5ShutDown", 16},
                                                   {"PowerOff", 128},
                                                   {"S5-PowerOff", 128},
                                                   {"S5PowerOff", 128},
                                                   {"Hybrid-ShutDown", 0x2000},
                                                   {"Warm-Reset", 32}});

constexpr auto kSchemes = std::to_array<NamedValue>(
    {{"Balanced", 1}, {"Power-Saver", 2}, {"High-Performance", 3}, {"Random", 4}, {"All", 5}});

constexpr auto kIceStates = std::to_array<NamedValue>({{"Power-On", 2},
                                                       {"PowerOn", 2},
                                                       {"Power-Off", 1},
                                                       {"PowerOff", 1},
                                                       {"D0", 3},
                                                       {"D0I3", 5},
                                                       {"D3", 4}});

constexpr string_view kTestNames[] = {"vexor",  "cstate",  "hwp",   "pstate", "tstate", "sdc",
                                      "gstate", "peci",    "dvfs",  "rc6",    "dgdvfs", "dgrc6",
                                      "dgsagv", "dgreset", "dgfan", "gcdrc6"};

constexpr string_view kFeatures[] = {"Orvel RateGlide",
                                     "Turbo Mode",
                                     "HWP",
                                     "Race-To-Halt",
                                     "Thermal Monitor",
                                     "Clock Modulation",
                                     "P-Control",
                                     "Energy Turbo",
                                     "Fast-MSR",
                                     "Turbo Activation Ratio",
                                     "SDC",
                                     "Time Mwait"};

template <std::size_t kSize>
int IndexByHand(const string_view (&names)[kSize], string_view name) {
  for (std::size_t i = 0; i < kSize; ++i) {
    if (names[i] == name) return static_cast<int>(i);
  }
  return -1;
}

// The first keywords of the table, up to the last that is measured.
constexpr auto kKeywords =
    std::to_array<std::pair<string_view, string_view>>({{"ActiveTime", "at"},
                                                        {"ExeCycles", "c"},
                                                        {"CoreAffinity", "core"},
                                                        {"StartDelayTime", "dt"},
                                                        {"ExitOnFail", "eof"},
                                                        {"SanityEarlyExit", "eop"},
                                                        {"FailTolerance", "ftol"},
                                                        {"InStateTime", "it"},
                                                        {"Log_Level", "log"},
                                                        {"TestMode", "mode"},
                                                        {"ModuleAffinity", "mod"},
                                                        {"PkgAffinity", "pkg"},
                                                        {"PxMxCxScope", "scope"},
                                                        {"Random", "r"},
                                                        {"SwitchTime", "st"}});

std::string KeywordByHand(string_view keyword) {
  for (const auto& [name, short_name] : kKeywords) {
    if (name == keyword) return std::string(short_name);
  }
  return {};
}

std::vector<std::uint16_t> RatiosByHand(string_view text) {
  std::vector<std::uint16_t> ratios;
  if (text == "P0...Pn") {
    for (int ratio = 24; ratio >= 8; --ratio) ratios.push_back(static_cast<std::uint16_t>(ratio));
    return ratios;
  }
  ForEachItemByHand(text, ',', [&](string_view item) {
    ratios.push_back(static_cast<std::uint16_t>((ReadByHand(item) + 2) / 3 * 3));
  });
  return ratios;
}

struct ErrorWord {
  VEXOR_PM_TEST_ID test;
  unsigned int code;
};

// The tags of the two tests that are measured.
std::string ErrorByHand(const ErrorWord& word) {
  const unsigned int code = word.code;
  const auto has = [code](unsigned int bits) { return (code & bits) == bits; };
  std::string text;
  if (has(0x20)) {
    if (has(0x00100000)) text += " EC_MCA; ";
    if (has(0x00200000)) text += " EC_GLOBAL_RESET; ";
    if (has(0x00400000)) text += " EC_DISP_UNDERRUN; ";
    if (has(0x00800000)) text += " EC_TDR; ";
  }
  if (word.test == PM_TEST_PECI) {
    if (has(0x20080)) text += " EC_PECI;";
    return text;
  }
  if (!has(0x4)) return text;
  text += " EC_CSTATE;";
  if (has(0x80000000)) text += " EC_C1;";
  if (has(0x00100000)) text += " EC_C3;";
  if (has(0x00200000)) text += " EC_C6;";
  if (has(0x00400000)) text += " EC_C7;";
  if (has(0x00800000)) text += " EC_C8;";
  if (has(0x01000000)) text += " EC_C9;";
  if (has(0x02000000)) text += " EC_C10;";
  if (has(0x10000000)) text += " EC_RC6;";
  if (has(0x20000000)) text += " EC_CX_LIMIT;";
  if (has(0x40000000)) text += " EC_CX_PRODEMOTION;";
  return text;
}

}  // namespace

void vexor::AddSyntaxes() {
  AddTextPair("ParsePkgAffinity", {"All", "Specific:0,2-4", "0,1,12"}, ParsePkgAffinity,
              AffinityByHand);
  AddTextPair(
      "ParseUnitAffinity", {"All", "Specific:0,2-4", "0,1,12"},
      [](string_view text) { return ParseUnitAffinity(text, 1); }, AffinityByHand);
  AddTextPair("ParseCstate", {"C1", "C6", "C10"}, ParseCstate,
              [](string_view text) { return FindByHand(kCstates, text, false); });
  AddTextPair("ParseExeCstates", {"C1", "C1;C6;C10"}, ParseExeCstates, CstatesByHand);
  AddTextPair(
      "ParsePerCStateSetting", {"C1:5;C3:5;C6:5;C7:5;C8:5;C9:5;C10:5", "C6:10"},
      [](string_view text) {
        std::vector<int> values;
        ParsePerCStateSetting(text, values);
        return values;
      },
      SettingByHand);
  AddTextPair("ParseIceState", {"Power-On", "D0I3", "D3"}, ParseIceState,
              [](string_view text) { return FindByHand(kIceStates, text, true); });
  AddTextPair("ParseWakeEvents", {"RTC", "RTC;External;HWRTC"}, ParseWakeEvents, WakeEventsByHand);
  AddTextPair(
      "ParseGandSStates", {"S0ix", "S3", "PowerOff", "Warm-Reset"}, ParseGandSStates,
      [](string_view text) { return static_cast<unsigned int>(FindByHand(kFlows, text, true)); });
  AddTextPair("ParsePowerScheme", {"Balanced", "High-Performance"}, ParsePowerScheme,
              [](string_view text) { return FindByHand(kSchemes, text, true); });
  AddTextPair(
      "DecodeRatios", {"P0...Pn", "8,9,31"},
      [](string_view text) {
        std::vector<std::uint16_t> ratios;
        DecodeRatios(text, {24, 8, 16, 1}, false, ratios, 1);
        return ratios;
      },
      RatiosByHand);
  AddTextPair("GetKeywordShortName", {"ActiveTime", "CoreAffinity", "SwitchTime"},
              GetKeywordShortName, KeywordByHand);
  AddTextPair(
      "ParsePMTestID", {"cstate", "hwp", "gcdrc6"},
      [](string_view text) { return ParsePMTestID(text, false); },
      [](string_view text) { return IndexByHand(kTestNames, text); });
  AddTextPair("ParseIDOfCore", {"Turbo Mode", "HWP", "Time Mwait"}, ParseIDOfCore,
              [](string_view text) { return IndexByHand(kFeatures, text); });
  AddComparison<ErrorWord>(
      "GetErrorCode",
      {{PM_TEST_CSTATES, 0x4}, {PM_TEST_CSTATES, 0x80300024}, {PM_TEST_PECI, 0x20080}},
      [](const ErrorWord& word) { return GetErrorCode(word.test, word.code); },
      vexor::Peer{"loop by hand", ErrorByHand});
}
