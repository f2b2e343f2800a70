#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "placeholders.h"
#include "syntax/checks.h"
#include "syntax/fault.h"
#include "vexor/util/random.h"

namespace {

using namespace vexor;

using Check = std::optional<Fault> (*)(std::string_view);

struct FaultCase {
  Check check;
  const char* text;
  std::size_t at;
  const char* what;
  const char* expected = nullptr;  // null where it is not tested; "<...>" stands for any text
};

constexpr auto kFaults = std::to_array<FaultCase>({
    {CheckPkgAffinity, "BigCores", 0, "unknown affinity", "All, Any, Random or Specific:"},
    {CheckPkgAffinity, "Specific:", 9, "no numbers"},
    {CheckPkgAffinity, "Specific: 1, 2", 12, "not a number or a range"},
    {CheckPkgAffinity, "0,1,,2", 4, "not a number or a range"},
    {CheckPkgAffinity, "0-16777216", 0, "too many numbers"},
    {CheckPkgAffinity, "7,0-16777215,x", 2, "too many numbers"},
    {CheckUnitAffinity, "Any", 0, "Any is not supported here and reads as All"},
    {CheckUnitAffinity, "Specific", 0, "unknown affinity"},
    {CheckThreadAffinity, "0,1", 0, "unknown affinity", "All, Any:, Random or Specific:"},
    {CheckThreadAffinity, "Any:1-", 4, "not a number or a range"},
    {CheckPkgAffinity, "Any:0", 3, "text after the keyword, not read"},
    {CheckUnitAffinity, "BigCoresAndMore", 8, "text after the keyword, not read"},
    {CheckUnitAffinity, "Specific:0:1", 11, "text after the numbers, not read"},
    {DoubtPkgAffinity, "0,1", 0, "numbers alone, which mean All"},
    {DoubtUnitAffinity, "0,0", 0, "numbers alone, which mean All"},
    {DoubtUnitAffinity, "Specific:8,0-3,2,2", 15, "number that stands twice"},
    {DoubtUnitAffinity, "Specific:[5-3],6,[2]-9", 17, "number that stands twice"},
    {DoubtThreadAffinity, "Specific:1,0x1", 11, "number that stands twice"},
    {CheckExeCstates, "C1;C5", 3, "unknown C-state"},
    {CheckExeCstates, "C1; C6", 3, "unknown C-state"},
    {CheckLimitCstates, "C1,C6r", 3, "unknown C-state"},
    {CheckPerStateConditions, "0xDEADBEEF", 0, "not a number"},
    {CheckPerStateConditions, "0x100000000", 0, "number too large"},
    {CheckPerCStateNumbers, "C1:5; C2 :5", 6, "unknown C-state"},
    {CheckPerCStateNumbers, "C1:5;C3: x", 9, "not a number"},
    {CheckPerCStateLists, "C1:[];C3:0,2", 9, "not a list"},
    {CheckPerCStateLists, "C1:[0, 2]", 6, "not a number or a range"},
    {CheckPerCStateLists, "C1:[];[0-2396745]", 6, "too many numbers"},
    {CheckIceStates, "D0; D1", 4, "unknown device state",
     "Power-On, PowerOn, Power-Off, PowerOff, D0, D0I3, D3 or None"},
    {CheckExeIceSleepStates, "D0;;D3", 3, "unknown device state, so the list is not read",
     "Power-On, PowerOn, Power-Off, PowerOff, D0, D0I3 or D3"},
    {CheckExeIceSleepStates, "None", 0, "unknown device state, so the list is not read"},
    {DoubtPerCStateItems, "C1:1;C3:2; C1:3", 0, "replaced by a later item"},
    {DoubtPerCStateItems, "1;C1:2;2", 0, "replaced by a later item"},
    {DoubtPerCStateItems, "2;C1:[];C3:[1];;C1:[0]", 2, "replaced by a later item"},
    {DoubtIceStates, "D0;;D0", 4, "several states, of which only one is requested"},
    {DoubtExeCycles, "hour:0", 0, "zero cycles"},
    {DoubtExeCycles, "0x0", 0, "zero cycles"},
    {DoubtScope, "0:0:0", 0, "nothing takes part"},
    {DoubtRepeatedWord, "a; b;A ;b", 8, "word that stands twice"},
    {CheckScope, "100:0", 5, "too few numbers"},
    {CheckScope, "100:101:0", 4, "number too large"},
    {CheckScope, "0:0:0:0:7", 8, "too many numbers"},
    {CheckRatioBytes, "FF:FG:FF", 3, "not a number"},
    {CheckTimeout, "120:5:1", 6, "too many numbers"},
    {CheckPeciInterface, "eSPI,MCTP", 0, "unknown interface", "eSPI, MCTP or Serial"},
    {CheckPeciCommands, "Ping; Pong", 6, "unknown command"},
    {CheckPeciServices, "Pkg-Id;Pkg Temp", 10, "not a name"},
    {CheckPeciParameters, "0; 65536", 3, "number too large"},
    {CheckPeciData, "0;x", 2, "not a number"},
    {CheckPeciRegisters, "A:256", 2, "number too large"},
    {CheckPeciPciConfigs, "0:0:31:0:0x40;0:0:32:0:0x40", 18, "number too large",
     "a device from 0 to 31"},
    {CheckPeciPciConfigs, "0:0:31:0 ", 8, "too few numbers"},
    {CheckCount, "-1", 0, "not a number"},
    {CheckCount, "18446744073709551616", 0, "number too large"},
    {CheckMask, "0x", 0, "not a number"},
    {CheckAddress, "default", 0, "not a number"},
    {CheckNumbers, "0x10; 0xZZ", 6, "not a number"},
    {CheckBoolean, "TRUE", 0, "reads as false", "true or false"},
    {CheckBoolean, " true", 0, "reads as false"},
    {DoubtBoolean, "FALSE", 0, "reads as false, like any text but true"},
    {DoubtKnobs, "Random; M=M=D;GfxWorkLoad=2;random", 28, "unknown knob"},
    {CheckTestMode, "verify", 0, "unknown test mode"},
    {CheckS0ixState, "S0i4", 0, "unknown state"},
    {CheckPowerScheme, "Balance", 0, "unknown power scheme",
     "Default, Balanced, Power-Saver, High-Performance, Random or All"},
    {CheckBatteryOption, "USB", 0, "unknown power source", "Default, AC or DC"},
    {CheckTrendRatios, "P0,p1", 3, "not a ratio"},
    {CheckTrendRatios, "255", 0, "not a ratio"},
    {CheckTrendRatios, "P0,P0...Pn", 3, "not a ratio"},
    {CheckExePstates, "Specific:P0..P1", 9, "not a ratio"},
    {CheckExePstates, "P0....Pn", 0, "not a ratio"},
    {CheckExePstates, "Specific:", 9, "no ratios"},
    {CheckSagvRatios, "Low;Mid", 4, "unknown point", "Low, Med, High or Dynamic"},
    {CheckLowHighRatios, "Low,Med", 4, "unknown point", "Low or High"},
    {CheckTurboActivationRatios, "8-9", 0, "not a ratio"},
    {CheckGandSState, "S3;S4", 0, "unknown sleep state"},
    {CheckSleepStates, "S3; S6", 4, "unknown sleep state"},
    {CheckSleepStates, "S3= msek:5", 4, "unknown unit"},
    {CheckSleepStates, "S3=sec:1-x;S4", 9, "not a number"},
    {CheckSleepStates, "S3=;S4", 3, "no time"},
    {CheckWakeEvents, "RTC,NFC;Bluetooth", 8, "unknown wake event"},
    {CheckDuration, "msec80", 6, "not a unit and a value",
     "unit:value or unit:low-high with <...> (for example msec:80)"},
    {CheckDuration, "sec:1:2", 7, "not a unit and a value"},
    {CheckDuration, "msek:80", 0, "unknown unit"},
    {CheckDuration, "invalid:80", 0, "unknown unit"},
    {CheckDuration, "sec: 1-x", 7, "not a number"},
    {CheckDuration, "sec:1-", 6, "not a number"},
    {CheckDuration, "sec:1 - 3", 4, "not a number"},
    {CheckDuration, "sec:4294968", 4, "number too large"},
    {CheckDuration, "msec:500-200", 5, "reversed range"},
    {CheckDuration, "usec:99999999999999999999", 5, "number too large"},
    {CheckExeCycles, "ten", 0, "not a number"},
    {CheckExeCycles, "secs:10", 0, "unknown unit"},
    {CheckExeCycles, "sec:ten", 4, "not a number"},
    {CheckExeCycles, "PerSet:two", 0, "not a number"},
    {CheckExeCycles, "sec:10:20", 7, "third item, not read"},
});

// Returns every check: each has a row among the faults.
std::set<Check> AllChecks() {
  std::set<Check> checks;
  for (const FaultCase& row : kFaults) checks.insert(row.check);
  return checks;
}

TEST(OptionGrammar, ValidTextsHaveNoFault) {
  const std::pair<Check, std::vector<const char*>> cases[] = {
      {CheckPkgAffinity, {"any", "0,2-4"}},
      {CheckUnitAffinity, {"cCoreAtom", "Specific: [0,2]"}},
      {CheckThreadAffinity, {"Any:4,5"}},
      {DoubtThreadAffinity, {"Any:4,4", "All", "Specific:5-7,4,0-3,8"}},
      {DoubtPerCStateItems, {"5;C1:3", "C1:5;C3:5;", "5"}},
      {DoubtExeCycles, {"PerSet:3", "sec:1"}},
      {DoubtScope, {"0:0:1", "0:0:0:1"}},
      {CheckExeCstates, {"C1;C6r;C10;"}},
      {CheckLimitCstates, {"C1,C10"}},
      {CheckPerStateConditions, {"0x00000000", "0xFFFFFFFF"}},
      {CheckPerCStateNumbers, {"C1:5;C3:5;C6:5;C7:5;C8:5;C9:5;C10:5", "5"}},
      {CheckPerCStateLists, {"[0-2396744]", "C1:[];C3:[];C6:[];C7:[];C8:[];C9:[];C10:[0,2-4]"}},
      {CheckIceStates, {"None", "Power-On; d0i3"}},
      {CheckExeIceSleepStates, {"Power-On; d0i3;"}},
      {CheckScope, {"100:0:0"}},
      {CheckRatioBytes, {"FF:FF:FF"}},
      {CheckTimeout, {"120:5"}},
      {CheckPeciInterface, {"eSPI"}},
      {CheckPeciCommands, {"Ping;RdPkgConfig"}},
      {CheckPeciServices, {"Pkg-Id;;0x1A;"}},
      {CheckPeciParameters, {"0;;0xFFFF"}},
      {CheckPeciData, {"0xFFFFFFFF"}},
      {CheckPeciRegisters, {"0x1A2;Perf-Status:3"}},
      {CheckPeciPciConfigs, {"0:0:31:0:0x40;0:0:31:0:0x40:0xFFFFFF00:0x1"}},
      {CheckCount, {"100"}},
      {CheckMask, {"0xFFFFFFFF", "0x0"}},
      {CheckAddress, {"Default"}},
      {CheckNumbers, {"4711", "0x10,0x20;3"}},
      {CheckBoolean, {"true", " False "}},
      {CheckTestMode, {"Verify"}},
      {CheckS0ixState, {"S0i3-4"}},
      {CheckPowerScheme, {"power-saver"}},
      {CheckBatteryOption, {"Default"}},
      {CheckTrendRatios,
       {"P0, P1, Pe, Pn, Pn - -, P0++, P0Pn, 254, 0x0, 0xFE, ALL", "P0...Pn", "P0..P1", "P1..Pn"}},
      {CheckExePstates, {"P0...Pn", "Specific:8,P1;12-9"}},
      {CheckSagvRatios, {"Low,Med,,High;;Dynamic"}},
      {CheckLowHighRatios, {"Low,High"}},
      {CheckTurboActivationRatios, {"20,0xFE"}},
      {CheckGandSState, {"warm-reset"}},
      {CheckSleepStates,
       {"S0ix;S3;S4;S5", "ShutDown;PowerOff;Warm-Reset;Cold-Reset;Global-Reset;Hybrid-ShutDown",
        "G3OnSleep;G3OnS4;G3OnS5;G3;Reset-Button=sec:30-60;Power-Button"}},
      {CheckWakeEvents, {"RTC;External,HWRTC"}},
      {CheckDuration,
       {"Invalid", "msec:80", "msec:80-80", "Sec: 1-3", "usec:4294967295", "ticks:1"}},
      {CheckExeCycles, {"100", "2:PerSet", "#Set:2", "min:5"}},
  };
  for (const auto& [check, texts] : cases) {
    for (const char* text : texts) EXPECT_FALSE(check(text)) << text;
  }
  for (const Check check : AllChecks()) EXPECT_FALSE(check("")) << "the option is not given";
}

TEST(OptionGrammar, FaultsHaveAPlaceAndAReason) {
  for (const FaultCase& row : kFaults) {
    const std::optional<Fault> fault = row.check(row.text);
    ASSERT_TRUE(fault) << row.text;
    EXPECT_EQ(fault->at, row.at) << row.text;
    EXPECT_EQ(fault->what, row.what) << row.text;
    EXPECT_FALSE(fault->expected.text.empty()) << row.text;
    if (row.expected != nullptr) {
      EXPECT_TRUE(IsLike(fault->expected.text, row.expected))
          << row.text << ": " << fault->expected.text;
    }
  }
}

// Random texts of the pieces of the grammars and of other bytes, and long repetitions of a piece.
TEST(OptionGrammar, FaultsAreInsideRandomTexts) {
  constexpr std::string_view kPieces[] = {
      "Specific:", "Any:", "C1", "C10", "[",  "]",       ":",   ";",           ",",
      "-",         "=",    " ",  "0x",  "0",  "7",       "254", "99999999999", "P0",
      "Pn",        "...",  "S3", "sec", "\n", {"\0", 1}, "\xFF"};
  const std::set<Check> checks = AllChecks();
  UserRand random(7);
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (std::uint32_t pieces = random.NextUint() % 8; pieces > 0; --pieces) {
      text += kPieces[random.NextUint() % std::size(kPieces)];
    }
    for (const Check check : checks) {
      const std::optional<Fault> fault = check(text);
      EXPECT_LE(fault ? fault->at : 0, text.size()) << text;
    }
  }
  for (const std::string_view piece : kPieces) {
    std::string text;
    while (text.size() < 50'000) text += piece;
    for (const Check check : checks) check(text);
  }
}

}  // namespace
