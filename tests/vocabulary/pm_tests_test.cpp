#include "vexor/vocabulary/pm_tests.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

struct TestNames {
  const char* long_name;
  const char* short_name;
};

// As the interface lists them, in the order of the identifiers.
constexpr auto kNames = std::to_array<TestNames>({
    {"VEXOR", "vexor"},
    {"CSTATES", "cstate"},
    {"HWP", "hwp"},
    {"PSTATES", "pstate"},
    {"TSTATES", "tstate"},
    {"SDC", "sdc"},
    {"GSTATES", "gstate"},
    {"PECI", "peci"},
    {"iGFX-DVFS", "dvfs"},
    {"iGFX-RC6", "rc6"},
    {"dGFX-DVFS", "dgdvfs"},
    {"dGFX-RC6", "dgrc6"},
    {"dGFX-SAGV", "dgsagv"},
    {"DGFX-RESET", "dgreset"},
    {"FANSPEED-CTR", "dgfan"},
    {"GCD-RC6", "gcdrc6"},
    {"GCD-DVFS", "gcddvfs"},
    {"SAMedia-RC6", "mediarc6"},
    {"SAMedia-DVFS", "mediadvfs"},
    {"Vpu-DVFS", "vpudvfs"},
    {"PS-DVFS", "ipups"},
    {"IS-DVFS", "ipuis"},
    {"UFS", "ufs"},
    {"SAGV", "sagv"},
    {"PSF0-GV", "psf0"},
    {"MESH-GV", "meshgv"},
    {"Ice-Pstates", "icep"},
    {"Ice-Cstates", "icec"},
    {"FACT", "fact"},
    {"PCIe-Link", "link"},
    {"PCIe-GenWidth", "gen"},
    {"Dx-States", "dxstates"},
    {"TestControl", "testcontrol"},
    {"NA", "all"},
    {"NA", "max"},
    {"Vexor-Start", "start"},
    {"Vexor-End", "end"},
});

TEST(PmTests, NamesGoOutAndComeBack) {
  for (int value = 0; value < static_cast<int>(kNames.size()); ++value) {
    const TestNames& names = kNames[static_cast<std::size_t>(value)];
    SCOPED_TRACE(names.short_name);
    const auto id = static_cast<VEXOR_PM_TEST_ID>(value);
    const bool has_input_name = id != PM_TEST_FANSPEED_CTR && id != PM_TEST_ALL;
    EXPECT_EQ(GetPMTestName(id), names.long_name);
    EXPECT_STREQ(GetPMTestNameByID(value), names.short_name);
    EXPECT_EQ(GetPMTestID(names.long_name, false), has_input_name ? id : PM_TEST_MAX);
    EXPECT_EQ(GetPMTestID(Upper(names.long_name), true), has_input_name ? id : PM_TEST_MAX);
    EXPECT_EQ(ParsePMTestID(names.short_name, false), id);
    EXPECT_EQ(ParsePMTestID(Upper(names.short_name), false), PM_TEST_MAX);
    EXPECT_EQ(ParsePMTestID(Upper(names.short_name), true), id);
  }
}

TEST(PmTests, ValuesThatAreNoTestHaveNeutralNames) {
  for (const int value : {37, 255, -1, -2147483647 - 1, 2147483647}) {
    EXPECT_EQ(GetPMTestName(static_cast<VEXOR_PM_TEST_ID>(value)), "NA");
    EXPECT_STREQ(GetPMTestNameByID(value), "");
  }
}

TEST(PmTests, LongNamesHonourCaseExceptOne) {
  EXPECT_EQ(GetPMTestID("cstates", true), PM_TEST_CSTATES);
  EXPECT_EQ(GetPMTestID("cstates", false), PM_TEST_MAX);
  EXPECT_EQ(GetPMTestID("DGFX-SAGV", false), PM_TEST_DGFX_SAGV);
  EXPECT_EQ(GetPMTestID("dgfx-sagv", false), PM_TEST_DGFX_SAGV);
  EXPECT_EQ(GetPMTestID("DGFX-RC6", false), PM_TEST_MAX);
}

TEST(PmTests, OlderNamesAreAcceptedAndNotGivenBack) {
  EXPECT_EQ(GetPMTestID("GT-DVFS", false), PM_TEST_IGFX_DVFS);
  EXPECT_EQ(GetPMTestID("GT-RC6", false), PM_TEST_IGFX_RC6);
  EXPECT_EQ(GetPMTestID("gt-rc6", true), PM_TEST_IGFX_RC6);
  EXPECT_EQ(GetPMTestID("gt-rc6", false), PM_TEST_MAX);
}

TEST(PmTests, UnknownTextsParseToMax) {
  for (const char* text : {"", " ", "CSTATE", "CSTATES ", "FANSPEED-CTR"}) {
    EXPECT_EQ(GetPMTestID(text, true), PM_TEST_MAX) << text;
  }
  for (const char* text : {"", "cstates", " cstate", "CSTATES"}) {
    EXPECT_EQ(ParsePMTestID(text, true), PM_TEST_MAX) << text;
  }
}

bool Selects(std::vector<std::string> arguments) {
  std::vector<char*> argv(arguments.size());
  std::transform(arguments.begin(), arguments.end(), argv.begin(),
                 [](std::string& argument) { return argument.data(); });
  return HasPMTestId(argv.data(), static_cast<int>(argv.size()));
}

TEST(PmTests, ArgumentsWithASlashSelectTests) {
  EXPECT_TRUE(Selects({"tool.exe", "/cstate"}));
  EXPECT_TRUE(Selects({"/all"})) << "the program's own name counts too";
  EXPECT_TRUE(Selects({"tool.exe", "/max", "-at", "/start"}));
  EXPECT_TRUE(Selects({"tool.exe", "//cst/ate/"})) << "every slash is taken out";
  EXPECT_FALSE(Selects({"tool.exe", "cstate"}));
  EXPECT_FALSE(Selects({"tool.exe", "/max", "/CSTATE", "/"}));
  EXPECT_FALSE(HasPMTestId(nullptr, 0));
  std::string argument = "/cstate";
  char* one = argument.data();
  EXPECT_FALSE(HasPMTestId(&one, 0)) << "no argument is looked at";
}

}  // namespace
