#include "vexor/config/syntaxes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "source_dir.h"
#include "temporary_folder.h"
#include "vexor/config/describe.h"

namespace vexor {
namespace {

TEST(Syntaxes, ReportThePositionOfTheFault) {
  const auto fault = CheckSyntax("time", "msec:80-x");
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->at, 8);
  EXPECT_EQ(fault->what, "not a number");
  EXPECT_NE(fault->expected, "");
  EXPECT_TRUE(CheckSyntax("tme", "msec:80"));
}

TEST(Syntaxes, DifferFromSimilarSyntaxes) {
  struct Case {
    const char* good;
    const char* bad;
    const char* text;  // by the first syntax good, by the second bad
  };
  const Case cases[] = {
      {"peci-data", "peci-parameters", "65536"},
      {"sagv", "low-high", "Med"},
      {"exit-ratios", "ratios", "all"},
      {"state-lists", "state-counts", "C1:[]"},
      {"scope", "timeout", "1:2:3"},
      {"address", "mask", "Default"},
      {"affinity", "packages", "EvenCores"},
      {"peci-registers", "peci-services", "A:3"},
  };
  for (const Case& c : cases) {
    EXPECT_FALSE(CheckSyntax(c.good, c.text)) << c.good;
    EXPECT_TRUE(CheckSyntax(c.bad, c.text)) << c.bad;
  }
}

TEST(Syntaxes, SayWhichTextsMeanTheSame) {
  struct Case {
    const char* syntax;
    const char* a;
    const char* b;
    bool same;
  };
  const Case cases[] = {
      {"time", "sec:1", "msec:1000", true},  {"time", "Invalid", "", true},
      {"time", "msec:0", "", false},         {"time", "msek:1", "", false},
      {"affinity", "", "All", true},         {"cycles", "", "1", false},
      {"boolean", "", "false", false},       {"text", "a", "A", false},
      {"no-such-syntax", "a", "a", true},    {"no-such-syntax", "a", "", false},
      {"affinity", "0,1", "All:0-1", false}, {"mask", "0x10", "16", true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(MeanTheSame(c.syntax, c.a, c.b), c.same) << c.syntax << " " << c.a << " " << c.b;
    EXPECT_EQ(MeanTheSame(c.syntax, c.b, c.a), c.same) << c.syntax << " " << c.b << " " << c.a;
  }
}

// Each setting of a file has an option, and each default is valid.
TEST(Options, CoverEverySetting) {
  std::set<std::string> paths;
  for (const OptionInfo& option : GetOptions()) {
    EXPECT_TRUE(paths.insert(option.path).second) << option.path;
    EXPECT_TRUE(option.about.ends_with('.')) << option.path;
    EXPECT_FALSE(CheckOptionText(option, option.preset)) << option.path << option.preset;
    EXPECT_FALSE(CheckOptionText(option, option.fallback)) << option.path << option.fallback;
  }
  const std::string lab = ReadBytes(std::string(VEXOR_SOURCE_DIR) + "/examples/lab.xml");
  const Description description = DescribeXMLConfigText(lab);
  EXPECT_GT(description.settings.size(), 700);
  for (const Setting& setting : description.settings) {
    std::string path = std::regex_replace(setting.path, std::regex(R"(\[\d+\])"), "");
    const auto named_values = path.substr(0, path.rfind('/'));
    const bool is_known = paths.contains(path) || paths.contains(named_values);
    EXPECT_TRUE(is_known) << setting.path;
  }
}

TEST(Syntaxes, SuggestTrueOrFalseForTheirOtherNames) {
  for (const auto& [text, meant] : std::initializer_list<std::pair<const char*, const char*>>{
           {"\"true\"", "true"}, {"Enabled", "true"}, {"off", "false"}, {"maybe", ""}}) {
    EXPECT_EQ(CheckSyntax("boolean", text)->suggestion, meant) << text;
  }
}

TEST(Options, AreFoundByTheirPath) {
  const auto find = [](std::string_view name) {
    std::string found;
    for (const OptionInfo& option : FindOptions(name)) found += option.path + "\n";
    return found;
  };
  EXPECT_EQ(find("HoldPower"), "GLOBALPM/SYSTEM/GSTATES/HoldPower\n");
  EXPECT_EQ(find("cstates/activetime"), "GLOBALPM/CORE/CSTATES/ActiveTime\n");
  EXPECT_EQ(find("SYSTEM/OS"),
            "GLOBALCONFIGURATION/SysConfiguration/SYSTEM/OS\n"
            "GLOBALCONFIGURATION/SysConfiguration/SYSTEM/OS/Power_Scheme\n"
            "GLOBALCONFIGURATION/SysConfiguration/SYSTEM/OS/Battery_Simulation\n");
  EXPECT_EQ(find("-switchTime"), "GLOBALPM/UNCORE/MESH-GV/-switchTime\n");
  EXPECT_TRUE(find("switchtime").ends_with("GLOBALPM/UNCORE/MESH-GV/-switchTime\n"));
  EXPECT_EQ(find("ExeCstates"),
            "GLOBALPM/CORE/CSTATES/ExeCstates\nGLOBALPM/ICE/Ice-Cstates/ExeStates\n");
  EXPECT_EQ(find("ice-cstates/execstates"), "GLOBALPM/ICE/Ice-Cstates/ExeStates\n");
  EXPECT_EQ(find("LPM"), "GLOBALPM/SYSTEM/GSTATES/LPM_EN\n");
  EXPECT_EQ(find("eof"), "") << "the short name of a knob";
  for (const std::string_view none : {"", "Hold", "HoldPowerX", "/", "GSTATES/GSTATES"}) {
    EXPECT_EQ(find(none), "") << none;
  }
  EXPECT_EQ(FindNearestOption("holdpowr"), "HoldPower");
  EXPECT_EQ(FindNearestOption("SomethingElse"), "");
  EXPECT_EQ(FindNearestOption(std::string(1000, 'x')), "");
}

TEST(Options, ContainTheFieldsOfTheTables) {
  const auto find = [](std::string_view path) { return FindOptions(path).front(); };
  const OptionInfo knobs = find("GSTATES/KNOBS");
  EXPECT_EQ(knobs.syntax.name, "knobs");
  EXPECT_FALSE(CheckOptionText(knobs, "Random;Sx_Legacy"));
  EXPECT_EQ(CheckOptionText(knobs, "Random;Rndom")->at, 7);
  EXPECT_NE(find("iGFX-DVFS/KNOBS").hint, "");
  EXPECT_NE(find("CORE/CONFIG/ITEM").hint, find("POWER/CONFIG/ITEM").hint);
  EXPECT_TRUE(find("CORE/CONFIG/ITEM").repeats);
  EXPECT_EQ(find("PSTATES/ActiveTime").preset, "Invalid");
  EXPECT_FALSE(find("PSTATES/ActiveTime").is_written);
  EXPECT_EQ(find("CSTATES/ActiveTime").preset, "msec:200");
  EXPECT_TRUE(find("MESH-GV/-switchTime").is_argument);
  EXPECT_EQ(find("AutoRunCfg/GT-DVFS").stands_for, "iGFX-DVFS");
  EXPECT_FALSE(find("LoopTracker").is_read);
}

}  // namespace
}  // namespace vexor
