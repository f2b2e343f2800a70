// Every keyword of the command line for every test: it reaches the option of its name and nothing
// else, or it is a fault and changes nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <set>

#include "config/tables/pm_test_table.h"
#include "config/texts/fault_wording.h"
#include "syntax/keyword_table.h"
#include "vexor/config/overrides.h"

namespace vexor {
namespace {

constexpr const char* kCommon = "at c core dt eop ftol it log mode mod pkg scope st ";
constexpr const char* kGraphics = "dev tile eopratio fid rc0m lrm ";
constexpr const char* kDevices = "st dt c ftol mode log states ";
constexpr const char* kKnobs =
    "r eof autoEnable d3 d0i3 flr invmwait neodem neoprom norpv passpOn passOnPro mmd pcxon "
    "raplstat perfstat poweroff qclk sync chkyellow chkmem chkmca chksoc ";

// The short names of a test's options, its knobs included.
std::string ShortNamesOf(const PmTestRow& test) {
  const std::map<VEXOR_PM_TEST_ID, std::string> own = {
      {PM_TEST_CSTATES,
       "at c core dt eop ftol it log mode mod pkg scope rpv coreexcl ice states substates "},
      {PM_TEST_PSTATES, std::string(kCommon) + "lrm tlc gvpoints fql eopratio "},
      {PM_TEST_HWP,
       std::string(kCommon) + "lrm tlc value gvpoints fql pkgmode eppv minv maxv desv eopratio "},
      {PM_TEST_TSTATES, std::string(kCommon) + "duty eopratio "},
      {PM_TEST_SDC, "at c dt ftol it log mode pkg st duty "},
      {PM_TEST_FACT, std::string(kCommon) + "states "},
      {PM_TEST_GSTATES, "at it c dt ftol eop mode log lpm ss wakeevent sxloop sxfl "},
      {PM_TEST_PECI, "pkg core at c dt it ftol eop mode log "},
      {PM_TEST_PCIE_LINK, kDevices},
      {PM_TEST_PCIE_GEN_WIDTH, kDevices},
      {PM_TEST_DX_STATES, kDevices},
      {PM_TEST_DGFX_RESET, "st dt c states "},
      {PM_TEST_ICE_CSTATES, std::string(kCommon) + "idscope idaff states "},
      {PM_TEST_ICE_PSTATES, std::string(kCommon) + "idscope idaff gvpoints lrm "},
      {PM_TEST_VPU_DVFS, "st dt c ftol eop mode log eopratio "},
      {PM_TEST_MESH_GV,
       "st dt c ftol eop mode log eopratio ratioPUnit0 ratioPUnit1 ratioPUnit2 ratioPUnit3 "
       "ratioPUnit4 "},
  };
  if (test.id == PM_TEST_FANSPEED_CTR) return "st c dt log ctrlpoint dev ";
  const auto row = own.find(test.id);
  if (row != own.end()) return row->second + kKnobs;
  const bool is_rc6 = test.name.ends_with("RC6");
  return std::string(kCommon) + kGraphics + (is_rc6 ? "rc0t rc6t " : "") + kKnobs;
}

bool HasWord(std::string_view words, std::string_view word) {
  return (" " + std::string(words)).find(" " + std::string(word) + " ") != std::string::npos;
}

std::string Join(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += text + "|";
  return joined;
}

// A text that no default holds, and that leaves the checker nothing to say.
std::string TextFor(const Keyword& keyword, const PmTestRow& test) {
  const std::map<std::string_view, const char*> texts = {
      {"scope", "50:0:0"},     {"idscope", "50:0:0"},  {"log", "Debug"},
      {"mode", "Exercise"},    {"coreexcl", "C1:[0]"}, {"ice", "D3"},
      {"substates", "C1:[0]"}, {"gvpoints", "Turbo"},  {"core", "Specific:7"},
      {"mod", "Specific:7"},   {"pkg", "Specific:7"},  {"tlc", "Specific:7"},
      {"idaff", "Specific:7"}, {"dev", "Specific:7"},  {"tile", "Specific:7"},
      {"wakeevent", "USB"},    {"ss", "S3"},           {"pkgmode", "true"},
      {"sxfl", "S0i3"},
  };
  if (keyword.short_name == "states") return test.id == PM_TEST_ICE_CSTATES ? "D0I3" : "C6";
  const auto row = texts.find(keyword.short_name);
  if (row != texts.end()) return row->second;
  return keyword.kind == KeywordKind::kSwitch ? "false" : "7";
}

// An option of a test, with its text.
struct OptionText {
  const PmTestRow* test;
  const OptionRow* option;
  std::string text;
};

std::vector<OptionText> TextsOf(const _GLOBALPM_XMLCFG& pm) {
  std::vector<OptionText> texts;
  for (const PmTestRow& test : PmTests()) {
    const ConfigRecord& record = test.look(pm);
    for (const OptionRow& option : test.options) {
      std::string text;
      if (option.text != nullptr) text = record.*option.text;
      if (option.list != nullptr) text = Join(record.*option.list);
      texts.push_back({&test, &option, std::move(text)});
    }
  }
  return texts;
}

// A name without what writings of it differ in.
std::string Plain(std::string_view name) {
  std::string plain;
  for (const char c : name) {
    if (c != '-' && c != '_') plain += static_cast<char>(std::tolower(c));
  }
  return plain;
}

// The options that a short name stands for, and the words that it is in a list.
std::set<std::string> PlacesOf(std::string_view short_name, const PmTestRow& test) {
  std::set<std::string> names;
  for (const Keyword& keyword : Keywords()) {
    if (keyword.short_name == short_name) names.insert(Plain(keyword.name));
  }
  if (short_name == "states") names.insert("exestates");
  if (HasWord(kKnobs, short_name)) {
    const bool is_check = short_name == "chkyellow" || short_name == "chkmem";
    names = {test.id == PM_TEST_GSTATES && is_check ? "prepostcheck" : "knobs"};
  }
  return names;
}

struct Outcome {
  std::vector<OptionText> changed;
  std::vector<std::string> faults;
};

// What the arguments change of the defaults, and what is wrong with them.
Outcome RunOverDefaults(std::vector<std::string> arguments) {
  static const auto defaults = [] {
    auto cfg = std::make_unique<_XML_FULL_CFG>();
    ResetVexorXmlConfiguration(*cfg);
    return cfg;
  }();
  static const std::vector<OptionText> before = TextsOf(defaults->GlobalPM);
  const auto cfg = std::make_unique<_XML_FULL_CFG>(*defaults);
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  Outcome outcome;
  for (const auto& node :
       getCmdPMTestsOptions(argv.data(), static_cast<int>(argv.size()), outcome.faults)) {
    ApplyTestOptions(*cfg, node);
  }
  const std::vector<OptionText> after = TextsOf(cfg->GlobalPM);
  for (std::size_t i = 0; i < after.size(); ++i) {
    if (after[i].text != before[i].text) outcome.changed.push_back(after[i]);
  }
  return outcome;
}

void ExpectReached(const PmTestRow& test, const Keyword& keyword) {
  const std::string section = std::string("/") + GetPMTestNameByID(test.id);
  const std::string option = "-" + std::string(keyword.short_name);
  std::vector<std::string> arguments = {section, option};
  std::string text(keyword.name);
  if (keyword.kind != KeywordKind::kKnob) {
    text = arguments.emplace_back(TextFor(keyword, test));
  }
  const bool is_known = HasWord(ShortNamesOf(test), keyword.short_name);
  const std::set<std::string> places = PlacesOf(keyword.short_name, test);
  const Outcome outcome = RunOverDefaults(arguments);
  bool is_there = false;
  for (const OptionText& changed : outcome.changed) {
    EXPECT_EQ(changed.test, &test) << section << " " << option;
    EXPECT_NE(changed.text.find(text), std::string::npos) << section << " " << option;
    EXPECT_FALSE(JudgeText(*changed.option, changed.text)) << section << " " << option;
    is_there = is_there || places.contains(Plain(changed.option->name));
  }
  EXPECT_EQ(is_there, is_known) << section << " " << option;
  ASSERT_EQ(outcome.faults.size(), is_known ? 0U : 1U) << section << " " << option;
  if (is_known) return;
  EXPECT_TRUE(outcome.changed.empty()) << section << " " << option;
  const std::string& fault = outcome.faults.front();
  EXPECT_TRUE(fault.starts_with(section + " \"" + option + "\": no option of this test")) << fault;
  EXPECT_FALSE(fault.ends_with(" " + option)) << fault;
}

TEST(OptionTargets, EveryKeywordReachesItsOptionOrIsAFault) {
  for (const PmTestRow& test : PmTests()) {
    for (const Keyword& keyword : Keywords()) ExpectReached(test, keyword);
  }
}

}  // namespace
}  // namespace vexor
