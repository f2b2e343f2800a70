// Tests every keyword of the command line with every test: it either sets exactly the option of its
// name, or it is reported and changes nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <set>

#include "config/tables/pm_test_table.h"
#include "config/texts/fault_wording.h"
#include "config/texts/syntax_table.h"
#include "syntax/keyword_table.h"
#include "vexor/config/overrides.h"

namespace vexor {
namespace {

constexpr const char* kKnobs[] = {
    "r",       "eof",      "autoEnable", "d3",        "d0i3",   "flr",    "invmwait", "neodem",
    "neoprom", "norpv",    "passpOn",    "passOnPro", "mmd",    "pcxon",  "raplstat", "perfstat",
    "qclk",    "poweroff", "chkyellow",  "chkmem",    "chkmca", "chksoc", "sync"};

std::string Join(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += text + "|";
  return joined;
}

// Returns a valid text other than the option's default.
std::string TextFor(const Keyword& keyword, const OptionRow& option) {
  if (keyword.kind == KeywordKind::kSwitch) return option.reset == "false" ? "true" : "false";
  for (const char* const text : {"7", "Specific:7", "Debug", "Exercise"}) {
    if (!JudgeText(option, std::string(keyword.unit) + text)) return text;
  }
  return std::string(GetSyntax(option.syntax).example);
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
    const ConfigRecord& record = test.const_record(pm);
    for (const OptionRow& option : test.options) {
      std::string text;
      if (option.text != nullptr) text = record.*option.text;
      if (option.list != nullptr) text = Join(record.*option.list);
      texts.push_back({&test, &option, std::move(text)});
    }
  }
  return texts;
}

// Normalises a name: its spellings differ in case and punctuation.
std::string Plain(std::string_view name) {
  std::string plain;
  for (const char c : name) {
    if (c != '-' && c != '_') plain += static_cast<char>(std::tolower(c));
  }
  return plain;
}

// Returns the option for a keyword by name, or null if the test has none.
const OptionRow* FindByName(const PmTestRow& test, const Keyword& keyword) {
  std::set<std::string> names;
  for (const Keyword& other : Keywords()) {
    if (other.short_name == keyword.short_name) names.insert(Plain(other.name));
  }
  if (keyword.short_name == "states") names.insert("exestates");
  if (keyword.kind == KeywordKind::kKnob) {
    const bool is_check = keyword.short_name == "chkyellow" || keyword.short_name == "chkmem";
    names = {test.id == PM_TEST_GSTATES && is_check ? "prepostcheck" : "knobs"};
  }
  const auto option = std::ranges::find_if(
      test.options, [&names](const OptionRow& row) { return names.contains(Plain(row.name)); });
  return option == test.options.end() ? nullptr : &*option;
}

struct Outcome {
  std::vector<OptionText> changed;
  std::vector<std::string> faults;
};

// The changes that arguments make to the defaults, and the faults reported.
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
  const OptionRow* const wanted = FindByName(test, keyword);
  std::string text(keyword.name);
  if (keyword.kind != KeywordKind::kKnob) {
    text = arguments.emplace_back(wanted != nullptr ? TextFor(keyword, *wanted) : "7");
  }
  const Outcome outcome = RunOverDefaults(arguments);
  bool is_there = false;
  for (const OptionText& changed : outcome.changed) {
    EXPECT_EQ(changed.test, &test) << section << " " << option;
    EXPECT_NE(changed.text.find(text), std::string::npos) << section << " " << option;
    EXPECT_FALSE(JudgeText(*changed.option, changed.text)) << section << " " << option;
    is_there = is_there || changed.option == wanted;
  }
  EXPECT_EQ(is_there, wanted != nullptr) << section << " " << option;
  ASSERT_EQ(outcome.faults.size(), wanted != nullptr ? 0U : 1U) << section << " " << option;
  if (wanted != nullptr) return;
  EXPECT_TRUE(outcome.changed.empty()) << section << " " << option;
  const std::string& fault = outcome.faults.front();
  EXPECT_TRUE(fault.starts_with(section + " \"" + option + "\": not an option of this test"))
      << fault;
  EXPECT_FALSE(fault.ends_with(" " + option)) << fault;
}

TEST(OptionTargets, EveryKeywordSetsItsOptionOrIsReported) {
  for (const PmTestRow& test : PmTests()) {
    for (const Keyword& keyword : Keywords()) ExpectReached(test, keyword);
  }
  for (const char* const knob : kKnobs) {
    EXPECT_EQ(FindShortName(knob)->kind, KeywordKind::kKnob) << knob;
  }
}

}  // namespace
}  // namespace vexor
