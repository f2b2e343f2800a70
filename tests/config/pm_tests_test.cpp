#include "vexor/config/pm_tests.h"

#include <gtest/gtest.h>

#include "config/config_files.h"

namespace {

using Texts = std::vector<std::string>;

_GLOBALPM_XMLCFG ReadPm(const std::string& content) {
  return ReadDocument(Document(Wrapped("GLOBALPM", content))).GlobalPM;
}

TEST(PmTests, EachTestHasItsGroupElementAndRecord) {
  _XML_FULL_CFG cfg;
  const _GLOBALPM_XMLCFG& pm = cfg.GlobalPM;
  struct Case {
    const char* group;
    std::vector<const char*> tests;
    std::vector<const _PM_TEST_NODE*> records;
  };
  const Case cases[] = {
      {"CORE",
       {"CSTATES", "PSTATES", "HWP", "TSTATES", "SDC", "FACT"},
       {&pm.CSTATES, &pm.PSTATES, &pm.HWP, &pm.TSTATES, &pm.SDC, &pm.FACT}},
      {"ICE", {"Ice-Cstates", "Ice-Pstates"}, {&pm.Ice_Cstates, &pm.Ice_Pstates}},
      {"SYSTEM", {"GSTATES", "PECI"}, {&pm.GSTATES, &pm.PECI}},
      {"GT",
       {"iGFX-DVFS", "iGFX-RC6", "dGFX-DVFS", "dGFX-RC6", "dGFX-SAGV", "DGFX-RESET"},
       {&pm.iGFX_DVFS, &pm.iGFX_RC6, &pm.dGFX_DVFS, &pm.dGFX_RC6, &pm.dGFX_SAGV, &pm.DGFX_RESET}},
      {"GT",
       {"GCD-RC6", "GCD-DVFS", "SAMedia-RC6", "SAMedia-DVFS", "FANSPEED-CTR"},
       {&pm.GCD_RC6, &pm.GCD_DVFS, &pm.SAMedia_RC6, &pm.SAMedia_DVFS, &pm.FANSPEED_CTR}},
      {"Device",
       {"PCIe-Link", "Dx-States", "PCIe-GenWidth"},
       {&pm.PCIe_Link, &pm.Dx_States, &pm.PCIe_GenWidth}},
      {"IPU", {"IS-DVFS", "PS-DVFS"}, {&pm.IS_DVFS, &pm.PS_DVFS}},
      {"UNCORE",
       {"SAGV", "PSF0-GV", "UFS", "MESH-GV"},
       {&pm.SAGV, &pm.PSF0_GV, &pm.UFS, &pm.MESH_GV}},
      {"Vpu", {"Vpu-DVFS"}, {&pm.Vpu_DVFS}},
  };
  for (const Case& c : cases) {
    std::string strangers;
    std::string tests;
    for (const char* const test : c.tests) {
      strangers += Wrapped(test, "<c/>");
      tests += Wrapped(test, Wrapped(test, " x ") + "<b/>");
    }
    const std::string groups = Wrapped("Elsewhere", strangers) + Wrapped(c.group, tests);
    EXPECT_TRUE(ReadInto(cfg, Document(Wrapped("GLOBALPM", groups))).read);
  }
  for (const Case& c : cases) {
    for (std::size_t i = 0; i < c.tests.size(); ++i) {
      EXPECT_EQ(c.records[i]->AllOptions, "<" + std::string(c.tests[i]) + ">x  <b/>  ");
    }
  }
}

TEST(PmTests, PrefersCurrentNamesAndFirstElements) {
  const auto pm = ReadPm(
      "<GT><GT-DVFS><Ratios>old</Ratios></GT-DVFS><iGFX-DVFS><Ratios>new</Ratios></iGFX-DVFS>"
      "<GT-RC6><Ratios>old</Ratios></GT-RC6><iGFX-DVFS/><GT-RC6/></GT><Device><PCIe-Link-DState>"
      "<ConfigState>old</ConfigState></PCIe-Link-DState><PCIe-Link/></Device>");
  EXPECT_EQ(pm.iGFX_DVFS.Ratios, "new");
  EXPECT_EQ(pm.iGFX_RC6.Ratios, "old");
  EXPECT_EQ(pm.PCIe_Link.ConfigState, Texts());
  EXPECT_FALSE(pm.PCIe_Link.FromLegacyElement);
  EXPECT_EQ(pm.Dx_States.ConfigState, Texts({"old"}));
  EXPECT_TRUE(pm.Dx_States.FromLegacyElement);
}

TEST(PmTests, AbsentTestsKeepTheirRecord) {
  _XML_FULL_CFG cfg;
  cfg.GlobalPM.CSTATES.ActiveTime = "kept";
  cfg.GlobalPM.Dx_States.FromLegacyElement = true;
  EXPECT_TRUE(ReadInto(cfg, Document("<GLOBALPM><CORE><SDC/></CORE><Device/></GLOBALPM>")).read);
  EXPECT_EQ(cfg.GlobalPM.CSTATES.ActiveTime, "kept");
  EXPECT_TRUE(cfg.GlobalPM.Dx_States.FromLegacyElement);
  EXPECT_FALSE(GetGlobalPMXML(cfg.GlobalPM, nullptr));
}

TEST(PmTests, DerivesAMissingSwitchTime) {
  struct Case {
    const char* options;
    Texts expected;  // of PSTATES, FACT, SDC, Ice-Pstates, Ice-Cstates and iGFX-RC6
  };
  const Case cases[] = {
      {"<ActiveTime>msec:500</ActiveTime><InStateTime>sec:1-2</InStateTime><RC0Time>sec:9</"
       "RC0Time>",
       {"msec:1500-2500", "", "", "msec:80", "msec:1500-2500", "msec:1500-2500"}},
      {"<SwitchTime>x</SwitchTime>", {"x", "x", "x", "x", "x", "x"}},
      {"", {"hour:0", "", "", "msec:80", "hour:0", "hour:0"}},
      {"<ActiveTime>sec:99999999999999999999</ActiveTime>",
       {"hour:0", "", "", "msec:80", "hour:0", "hour:0"}},
  };
  for (const Case& c : cases) {
    const auto test = [&c](const char* name) { return Wrapped(name, c.options); };
    const auto pm = ReadPm(Wrapped("CORE", test("PSTATES") + test("FACT") + test("SDC")) +
                           Wrapped("ICE", test("Ice-Pstates") + test("Ice-Cstates")) +
                           Wrapped("GT", test("iGFX-RC6")));
    EXPECT_EQ(Texts({pm.PSTATES.SwitchTime, pm.FACT.SwitchTime, pm.SDC.SwitchTime,
                     pm.Ice_Pstates.SwitchTime, pm.Ice_Cstates.SwitchTime, pm.iGFX_RC6.SwitchTime}),
              c.expected)
        << c.options;
  }
}

TEST(PmTests, Rc6TestsPreferTheirOwnNamesOfTheTimes) {
  const auto pm = ReadPm(
      "<GT><iGFX-RC6><RC0Time>a</RC0Time><ActiveTime>b</ActiveTime><InStateTime>c</InStateTime>"
      "<RC6Time/></iGFX-RC6></GT>");
  EXPECT_EQ(pm.iGFX_RC6.ActiveTime, "a");
  EXPECT_EQ(pm.iGFX_RC6.InStateTime, "c");
}

TEST(PmTests, ReadsListsOfStatesAndCommands) {
  const auto pm = ReadPm(
      "<Device><Dx-States><ConfigState> a </ConfigState><ConfigState/><KNOBS>k</KNOBS>"
      "<ConfigState>b</ConfigState></Dx-States></Device><SYSTEM><PECI><WrPCIConfig><PCIE>1</PCIE>"
      "<X>2</X><PCIE/><PCIE>3</PCIE></WrPCIConfig></PECI></SYSTEM>"
      "<CORE><FACT><ConfigState>unread</ConfigState></FACT></CORE>");
  EXPECT_EQ(pm.Dx_States.ConfigState, Texts({"a", "b"}));
  EXPECT_EQ(pm.Dx_States.KNOBS, "k");
  EXPECT_EQ(pm.PECI.WrPCIConfig, Texts({"1", "3"}));
  EXPECT_EQ(pm.PECI.RdPCIConfig, Texts());
  EXPECT_EQ(pm.FACT.ConfigState, Texts());
  EXPECT_EQ(pm.PECI.AllOptions, "<WrPCIConfig/>  ");
}

TEST(PmTests, ReadsTheFirstArgumentOfEachName) {
  const auto pm = ReadPm(
      "<Vpu><Vpu-DVFS><other name='Ratios' val='no'/><arg name='Ratios' val=' 1 '/>"
      "<arg name='Ratios' val='2'/><arg name='KNOBS'/><arg name='KNOBS' val='late'/>"
      "<arg val='nameless'/></Vpu-DVFS></Vpu>"
      "<UNCORE><MESH-GV><arg name='-switchTime' randVal='sec:1-2'/>"
      "<arg name='-checkDelayTime' val='c'/><arg name='-ratioPUnit3' val='r3'/>"
      "<arg name='SwitchTime' val='no'/></MESH-GV></UNCORE>");
  EXPECT_EQ(pm.Vpu_DVFS.Ratios, " 1 ");
  EXPECT_EQ(pm.Vpu_DVFS.KNOBS, "");
  EXPECT_EQ(pm.Vpu_DVFS.SwitchTime, "");
  EXPECT_EQ(pm.Vpu_DVFS.AllOptions.substr(0, 22), "<other/>  <arg/>  <arg");
  EXPECT_EQ(pm.MESH_GV.SwitchTime, "");
  EXPECT_EQ(pm.MESH_GV.CheckDelayTime, "c");
  EXPECT_EQ(pm.MESH_GV.RatioPUnit3, "r3");
}

// These are neither in the written defaults nor in the reference.
TEST(PmTests, ResetSetsMembersThatNoFileHolds) {
  _XML_FULL_CFG cfg;
  _SDC_CFG& sdc = cfg.GlobalPM.SDC;
  sdc.PxMxCxTxScope = sdc.AllOptions = "gone";
  sdc.SpareNumber = 5;
  cfg.GlobalPM.Dx_States.FromLegacyElement = true;
  ResetVexorXmlConfiguration(cfg);
  EXPECT_EQ(Texts({sdc.PxMxCxScope, sdc.PxMxCxTxScope, sdc.ModuleAffinity, sdc.CoreAffinity,
                   sdc.SanityEarlyExit, sdc.AllOptions, sdc.SpareTime}),
            Texts({"100:0:0", "", "All", "All", "0", "", "msec:10"}));
  EXPECT_EQ(sdc.SpareNumber, 0);
  EXPECT_EQ(cfg.GlobalPM.CSTATES.IdleMethod, "OS-Native");
  EXPECT_FALSE(cfg.GlobalPM.Dx_States.FromLegacyElement);
}

}  // namespace
