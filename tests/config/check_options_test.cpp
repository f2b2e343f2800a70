// The checker against the rows: a text that a parser answers with its neutral value is found in
// every option of that grammar, of every test.
#include <gtest/gtest.h>

#include <algorithm>

#include "config/config_files.h"
#include "config/pm_test_table.h"
#include "config/syntax_table.h"
#include "vexor/config/check.h"
#include "vexor/logging/console.h"
#include "vexor/syntax/affinity.h"
#include "vexor/syntax/cstates.h"
#include "vexor/syntax/ice_states.h"
#include "vexor/syntax/number_tuples.h"
#include "vexor/syntax/peci.h"
#include "vexor/syntax/ratios.h"
#include "vexor/syntax/sleep_states.h"
#include "vexor/syntax/time.h"
#include "vexor/syntax/wake_events.h"
#include "vexor/util/numbers.h"
#include "vexor/vocabulary/state_names.h"

namespace vexor {
namespace {

// Bad by every grammar.
constexpr const char* kBadText = "no such text!";

using ReadsNeutral = bool (*)(const std::string&);

bool ReadsNoNumber(const std::string& text) { return String2Integer(text, 7) == 7; }
bool ReadsNoRatio(const std::string& text) { return ParseTrendRatios(text).empty(); }
bool ReadsNoPoint(const std::string& text) { return ParseSagvRatios(text).empty(); }
bool ReadsNoMsr(const std::string& text) { return ParsePECIRdMSRCmdsList(text).empty(); }
bool ReadsNoConfig(const std::string& text) {
  return ParsePECIWrPkgCfgCmdsList(text, text, text).empty();
}

struct NeutralRow {
  Syntax syntax;
  ReadsNeutral reads_neutral;
};

constexpr NeutralRow kNeutral[] = {
    {Syntax::kCount, ReadsNoNumber},
    {Syntax::kMask, ReadsNoNumber},
    {Syntax::kAddress, ReadsNoNumber},
    {Syntax::kLogLevel,
     [](const auto& t) { return ParseTraceLevelID(t, TRACE_DEBUG) == TRACE_DEBUG; }},
    {Syntax::kTestMode, [](const auto& t) { return ParseTestModeID(t) == TEST_MODE_UNKNOWN; }},
    {Syntax::kDuration, [](const auto& t) { return ParseOnTimeType(t).maxMs == 0; }},
    {Syntax::kExeCycles, [](const auto& t) { return !ParseExeCycleTimeType(t, 1, 1, 1).isValid; }},
    {Syntax::kTimeout, [](const auto& t) { return !ParseTimeout(t); }},
    {Syntax::kScope, [](const auto& t) { return !ParseScope(t); }},
    {Syntax::kPkgAffinity,
     [](const auto& t) { return ParsePkgAffinity(t) == std::vector{kAffinityAll}; }},
    {Syntax::kUnitAffinity,
     [](const auto& t) { return ParseUnitAffinity(t, 1) == std::vector{kAffinityAll}; }},
    {Syntax::kThreadAffinity,
     [](const auto& t) { return ParseThreadAffinity(t).front() == kAffinityAll; }},
    {Syntax::kCstates, [](const auto& t) { return ParseExeCstates(t).empty(); }},
    {Syntax::kPerStateCounts,
     [](const auto& t) {
       std::vector<int> values;
       return !ParsePerCStateSetting(t, values) && values == std::vector(11, 0);
     }},
    {Syntax::kPerStateLists,
     [](const auto& t) {
       std::vector<std::vector<int>> lists;
       return !ParsePerCStateSetting(t, lists, false);
     }},
    {Syntax::kPerStateCondition,
     [](const auto& t) {
       std::vector<CSTATE_PER_STATE_CFG> slots;
       bool a = false;
       return !ParsePerStateConditions(t, slots, a, a, a, a);
     }},
    {Syntax::kIceStates, [](const auto& t) { return ParseIceState(t) == ICE_STATE_UNKNOWN; }},
    {Syntax::kPstates, [](const auto& t) { return ParseExePstates(t).ratios.empty(); }},
    {Syntax::kRatios, ReadsNoRatio},
    {Syntax::kExitRatios, ReadsNoRatio},
    {Syntax::kSagvRatios, ReadsNoPoint},
    {Syntax::kLowHighRatios, ReadsNoPoint},
    {Syntax::kRatioBytes, [](const auto& t) { return !ParseRatioSpread(t); }},
    {Syntax::kSleepStates, [](const auto& t) { return ParseSleepStates(t).empty(); }},
    {Syntax::kS0ixState, [](const auto& t) { return ParseS0ixStatesID(t) == S0IX_UNKNOWN; }},
    {Syntax::kWakeEvents, [](const auto& t) { return ParseWakeEvents(t).empty(); }},
    {Syntax::kPeciCommands, [](const auto& t) { return ParsePECIMajorCmdsList(t).empty(); }},
    {Syntax::kPeciServices, ReadsNoConfig},
    {Syntax::kPeciParameters, ReadsNoConfig},
    {Syntax::kPeciData, ReadsNoConfig},
    {Syntax::kPeciRegisters, ReadsNoMsr},
    {Syntax::kPeciPci, [](const auto& t) { return ParsePECIPciCfgCmdsList(t).empty(); }},
    // words that the suite's programs compare themselves
    {Syntax::kBoolean, nullptr},
    {Syntax::kWord, nullptr},
    {Syntax::kWordList, nullptr},
};

std::string Element(const PmTestRow& test, const OptionRow& option) {
  const std::string name(option.name);
  if (test.shape == PmTestRow::Shape::kArguments) {
    return "<arg name='" + name + "' val='" + kBadText + "'/>";
  }
  const std::string item(option.item);
  return Wrapped(name, item.empty() ? kBadText : Wrapped(item, kBadText));
}

// The path and the text of every error.
std::vector<std::string> Errors(const std::string& document) {
  std::vector<std::string> errors;
  for (const Finding& finding : CheckXMLConfigText(document)) {
    if (finding.severity == Severity::kError) errors.push_back(finding.path + "=" + finding.text);
  }
  return errors;
}

TEST(CheckOptions, FindWhatReadsAsANeutralValue) {
  for (const PmTestRow& test : PmTests()) {
    std::string elements;
    std::vector<std::string> expected;
    for (const OptionRow& option : test.options) {
      if (option.flow == Flow::kResetOnly) continue;
      elements += Element(test, option);
      if (option.syntax == Syntax::kFreeText) continue;
      std::string& path = expected.emplace_back(test.group);
      path.append("/").append(test.name).append("/").append(option.name);
      if (!option.item.empty()) path.append("/").append(option.item).append("[1]");
      const auto* const row = std::ranges::find(kNeutral, option.syntax, &NeutralRow::syntax);
      ASSERT_NE(row, std::end(kNeutral)) << path;
      EXPECT_TRUE(row->reads_neutral == nullptr || row->reads_neutral(kBadText)) << path;
      path.append("=").append(kBadText);
    }
    const std::string section = Wrapped(std::string(test.name), elements);
    EXPECT_EQ(Errors(Document(Wrapped("GLOBALPM", Wrapped(std::string(test.group), section)))),
              expected);
  }
}

}  // namespace
}  // namespace vexor
