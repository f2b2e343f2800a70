#include "vexor/vocabulary/pm_tests.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "vexor/util/strings.h"

namespace {

TEST(PmTests, NamesAreParsedBack) {
  std::string names;
  for (int value = PM_TEST_VEXOR; value <= PM_TEST_END; ++value) {
    const auto id = static_cast<VEXOR_PM_TEST_ID>(value);
    const std::string name = GetPMTestName(id);
    SCOPED_TRACE(name);
    const bool is_read = id != PM_TEST_FANSPEED_CTR && name != "NA";
    EXPECT_EQ(GetPMTestID(name, false), is_read ? id : PM_TEST_MAX);
    EXPECT_EQ(GetPMTestID(StringToUpper(name), true), is_read ? id : PM_TEST_MAX);
    EXPECT_EQ(ParsePMTestID(StringToUpper(GetPMTestNameByID(value)), true), id);
    names += name + ";";
  }
  EXPECT_EQ(names,
            "VEXOR;CSTATES;HWP;PSTATES;TSTATES;SDC;GSTATES;PECI;iGFX-DVFS;iGFX-RC6;dGFX-DVFS;"
            "dGFX-RC6;dGFX-SAGV;DGFX-RESET;FANSPEED-CTR;GCD-RC6;GCD-DVFS;SAMedia-RC6;SAMedia-DVFS;"
            "Vpu-DVFS;PS-DVFS;IS-DVFS;UFS;SAGV;PSF0-GV;MESH-GV;Ice-Pstates;Ice-Cstates;FACT;"
            "PCIe-Link;PCIe-GenWidth;Dx-States;TestControl;NA;NA;Vexor-Start;Vexor-End;");
  for (const int value : {37, 255, -1, -2147483647 - 1, 2147483647}) {
    EXPECT_EQ(GetPMTestName(static_cast<VEXOR_PM_TEST_ID>(value)), "NA");
  }
}

TEST(PmTests, CaseOfLongNamesMattersExceptForOne) {
  EXPECT_EQ(GetPMTestID("cstates", false), PM_TEST_MAX);
  EXPECT_EQ(GetPMTestID("DGFX-SAGV", false), PM_TEST_DGFX_SAGV);
  EXPECT_EQ(GetPMTestID("dgfx-sagv", false), PM_TEST_DGFX_SAGV);
  EXPECT_EQ(GetPMTestID("DGFX-RC6", false), PM_TEST_MAX);
}

TEST(PmTests, OlderNamesAreAcceptedButNotReturned) {
  EXPECT_EQ(GetPMTestID("GT-DVFS", false), PM_TEST_IGFX_DVFS);
  EXPECT_EQ(GetPMTestID("GT-RC6", false), PM_TEST_IGFX_RC6);
  EXPECT_EQ(GetPMTestID("gt-rc6", true), PM_TEST_IGFX_RC6);
  EXPECT_EQ(GetPMTestID("gt-rc6", false), PM_TEST_MAX);
}

TEST(PmTests, UnknownTextsParseToMax) {
  for (const char* text : {"", " ", "CSTATE", "CSTATES ", "FANSPEED-CTR"}) {
    EXPECT_EQ(GetPMTestID(text, true), PM_TEST_MAX) << text;
  }
  EXPECT_EQ(ParsePMTestID("cstates", true), PM_TEST_MAX) << "a long name";
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
  char* null = nullptr;
  EXPECT_FALSE(HasPMTestId(&null, 1));
  std::string argument = "/cstate";
  char* one = argument.data();
  EXPECT_FALSE(HasPMTestId(&one, 0)) << "no argument is looked at";
}

}  // namespace
