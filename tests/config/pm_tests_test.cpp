#include "vexor/config/pm_tests.h"

#include <gtest/gtest.h>

#include "config/config_files.h"

namespace {

using Texts = std::vector<std::string>;

_GLOBALPM_XMLCFG ReadPm(const std::string& content) {
  return ReadDocument(Document(Wrapped("GLOBALPM", content))).GlobalPM;
}

_GLOBALPM_XMLCFG ReadTest(const std::string& group, const std::string& test,
                          const std::string& options) {
  return ReadPm(Wrapped(group, Wrapped(test, options)));
}

TEST(PmTests, EachTestHasItsGroupElementAndRecord) {
  using Pm = _GLOBALPM_XMLCFG;
  struct Case {
    const char* group;
    const char* test;
    const std::string& (*text)(const Pm&);
  };
#define VEXOR_TEXT(member) [](const Pm& pm) -> const std::string& { return pm.member.AllOptions; }
  const Case cases[] = {
      {"CORE", "CSTATES", VEXOR_TEXT(CSTATES)},
      {"CORE", "PSTATES", VEXOR_TEXT(PSTATES)},
      {"CORE", "HWP", VEXOR_TEXT(HWP)},
      {"CORE", "TSTATES", VEXOR_TEXT(TSTATES)},
      {"CORE", "SDC", VEXOR_TEXT(SDC)},
      {"CORE", "FACT", VEXOR_TEXT(FACT)},
      {"ICE", "Ice-Cstates", VEXOR_TEXT(Ice_Cstates)},
      {"ICE", "Ice-Pstates", VEXOR_TEXT(Ice_Pstates)},
      {"SYSTEM", "GSTATES", VEXOR_TEXT(GSTATES)},
      {"SYSTEM", "PECI", VEXOR_TEXT(PECI)},
      {"GT", "iGFX-DVFS", VEXOR_TEXT(iGFX_DVFS)},
      {"GT", "GT-DVFS", VEXOR_TEXT(iGFX_DVFS)},
      {"GT", "iGFX-RC6", VEXOR_TEXT(iGFX_RC6)},
      {"GT", "GT-RC6", VEXOR_TEXT(iGFX_RC6)},
      {"GT", "dGFX-DVFS", VEXOR_TEXT(dGFX_DVFS)},
      {"GT", "dGFX-RC6", VEXOR_TEXT(dGFX_RC6)},
      {"GT", "dGFX-SAGV", VEXOR_TEXT(dGFX_SAGV)},
      {"GT", "DGFX-RESET", VEXOR_TEXT(DGFX_RESET)},
      {"GT", "GCD-RC6", VEXOR_TEXT(GCD_RC6)},
      {"GT", "GCD-DVFS", VEXOR_TEXT(GCD_DVFS)},
      {"GT", "SAMedia-RC6", VEXOR_TEXT(SAMedia_RC6)},
      {"GT", "SAMedia-DVFS", VEXOR_TEXT(SAMedia_DVFS)},
      {"GT", "FANSPEED-CTR", VEXOR_TEXT(FANSPEED_CTR)},
      {"Device", "PCIe-Link", VEXOR_TEXT(PCIe_Link)},
      {"Device", "PCIe-Link-DState", VEXOR_TEXT(PCIe_Link)},
      {"Device", "PCIe-Link-DState", VEXOR_TEXT(Dx_States)},
      {"Device", "Dx-States", VEXOR_TEXT(Dx_States)},
      {"Device", "PCIe-GenWidth", VEXOR_TEXT(PCIe_GenWidth)},
      {"IPU", "IS-DVFS", VEXOR_TEXT(IS_DVFS)},
      {"IPU", "PS-DVFS", VEXOR_TEXT(PS_DVFS)},
      {"UNCORE", "SAGV", VEXOR_TEXT(SAGV)},
      {"UNCORE", "PSF0-GV", VEXOR_TEXT(PSF0_GV)},
      {"UNCORE", "UFS", VEXOR_TEXT(UFS)},
      {"UNCORE", "MESH-GV", VEXOR_TEXT(MESH_GV)},
      {"Vpu", "Vpu-DVFS", VEXOR_TEXT(Vpu_DVFS)},
  };
#undef VEXOR_TEXT
  for (const Case& c : cases) {
    SCOPED_TRACE(c.test);
    EXPECT_EQ(c.text(ReadTest(c.group, c.test, "<a> x </a><b/>")), "<a>x  <b/>  ");
    EXPECT_EQ(c.text(ReadTest("Elsewhere", c.test, "<a/>")), "");
  }
}

TEST(PmTests, ReadsTheNewerOfTwoElements) {
  const auto pm = ReadPm(
      "<GT><GT-DVFS><Ratios>old</Ratios></GT-DVFS><iGFX-DVFS><Ratios>new"
      "</Ratios></iGFX-DVFS></GT><Device><PCIe-Link-DState><ConfigState>old"
      "</ConfigState></PCIe-Link-DState><PCIe-Link/></Device>");
  EXPECT_EQ(pm.iGFX_DVFS.Ratios, "new");
  EXPECT_EQ(pm.PCIe_Link.ConfigState, Texts());
  EXPECT_FALSE(pm.PCIe_Link.FromLegacyElement);
  EXPECT_EQ(pm.Dx_States.ConfigState, Texts({"old"}));
  EXPECT_TRUE(pm.Dx_States.FromLegacyElement);
}

TEST(PmTests, LeavesAbsentTestsAlone) {
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
    const char* group;
    const char* test;
    const char* options;
    std::string _PM_TEST_NODE::*text;
    const char* expected;
    const _PM_TEST_NODE& (*record)(const _GLOBALPM_XMLCFG&);
  };
  const auto pstates = [](const _GLOBALPM_XMLCFG& pm) -> const _PM_TEST_NODE& {
    return pm.PSTATES;
  };
  const auto fact = [](const _GLOBALPM_XMLCFG& pm) -> const _PM_TEST_NODE& { return pm.FACT; };
  const auto ice = [](const _GLOBALPM_XMLCFG& pm) -> const _PM_TEST_NODE& {
    return pm.Ice_Pstates;
  };
  const auto icec = [](const _GLOBALPM_XMLCFG& pm) -> const _PM_TEST_NODE& {
    return pm.Ice_Cstates;
  };
  const auto rc6 = [](const _GLOBALPM_XMLCFG& pm) -> const _PM_TEST_NODE& { return pm.iGFX_RC6; };
  const auto sdc = [](const _GLOBALPM_XMLCFG& pm) -> const _PM_TEST_NODE& { return pm.SDC; };
  const char* const times =
      "<ActiveTime>msec:500</ActiveTime><InStateTime>sec:1-2</InStateTime><RC0Time>sec:9</RC0Time>";
  const Case cases[] = {
      {"CORE", "PSTATES", times, &_PM_TEST_NODE::SwitchTime, "msec:1500-2500", pstates},
      {"CORE", "PSTATES", "<SwitchTime>x</SwitchTime>", &_PM_TEST_NODE::SwitchTime, "x", pstates},
      {"CORE", "PSTATES", "", &_PM_TEST_NODE::SwitchTime, "hour:0", pstates},
      {"CORE", "FACT", times, &_PM_TEST_NODE::SwitchTime, "", fact},
      {"CORE", "SDC", times, &_PM_TEST_NODE::SwitchTime, "", sdc},
      {"ICE", "Ice-Pstates", times, &_PM_TEST_NODE::SwitchTime, "msec:80", ice},
      {"ICE", "Ice-Pstates", "<SwitchTime>x</SwitchTime>", &_PM_TEST_NODE::SwitchTime, "x", ice},
      {"ICE", "Ice-Cstates", times, &_PM_TEST_NODE::SwitchTime, "msec:1500-2500", icec},
      {"GT", "iGFX-RC6", times, &_PM_TEST_NODE::SwitchTime, "msec:1500-2500", rc6},
      {"GT", "iGFX-RC6", times, &_PM_TEST_NODE::ActiveTime, "sec:9", rc6},
      {"GT", "iGFX-RC6", times, &_PM_TEST_NODE::InStateTime, "sec:1-2", rc6},
      {"GT", "iGFX-RC6", "<InStateTime>a</InStateTime><RC6Time/>", &_PM_TEST_NODE::InStateTime, "a",
       rc6},
      {"CORE", "PSTATES", "<ActiveTime>sec:99999999999999999999</ActiveTime>",
       &_PM_TEST_NODE::SwitchTime, "hour:0", pstates},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.test) + " " + c.options);
    EXPECT_EQ(c.record(ReadTest(c.group, c.test, c.options)).*c.text, c.expected);
  }
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

TEST(PmTests, TakesTheFirstArgumentOfAName) {
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

TEST(PmTests, ResetGivesTheTextsOfALab) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  const _GLOBALPM_XMLCFG& pm = cfg.GlobalPM;
  const _PM_TEST_NODE& common = pm.SDC;
  EXPECT_EQ(
      Texts({common.PxMxCxScope, common.PxMxCxTxScope, common.PkgAffinity, common.ModuleAffinity,
             common.CoreAffinity, common.ActiveTime, common.InStateTime, common.SwitchTime,
             common.ExeCycles, common.ConfigLoop, common.StartDelayTime, common.FailTolerance,
             common.SanityEarlyExit, common.TestMode, common.Log_Level, common.KNOBS,
             common.KnobHint, common.AllOptions, common.SpareTime}),
      Texts({"100:0:0", "", "All", "All", "All", "Invalid", "Invalid", "Invalid", "100", "1",
             "msec:10", "5", "0", "Verify", "Information", "", "", "", "msec:10"}));
  const _CSTATES_CFG& c = pm.CSTATES;
  const char* const no_cores = "C1:[];C3:[];C6:[];C7:[];C8:[];C9:[];C10:[]";
  EXPECT_EQ(Texts({c.ActiveTime, c.InStateTime, c.ExeCycles, c.FailTolerance, c.SanityEarlyExit,
                   c.CoreExclusion, c.SubStates, c.IceState, c.PerStateCond, c.ExeCstates,
                   c.RandomPkgVoting, c.IdleMethod, c.StartDelayTime}),
            Texts({"msec:200", "msec:200", "10", "C1:5;C3:5;C6:5;C7:5;C8:5;C9:5;C10:5",
                   "C1:0;C3:0;C6:0;C7:0;C8:0;C9:0;C10:0", no_cores, no_cores, "None", "0x00000000",
                   "", "", "OS-Native", "msec:10"}));
  const _GSTATES_CFG& g = pm.GSTATES;
  EXPECT_EQ(
      Texts({g.ActiveTime, g.InStateTime, g.ExeCycles, g.ConfigLoop, g.StartDelayTime, g.KavritTime,
             g.WakeEvent, g.LoopEachSx, g.S0ixFailureLevel, g.WakeUpTimeout, g.HoldPower}),
      Texts({"sec:60", "sec:60", "2:PerSet", "1", "msec:100", "10", "RTC", "1", "S0iR", "120:5",
             "sec:5"}));
  for (const _GFX_CFG* const gfx : {&pm.iGFX_DVFS, &pm.dGFX_RC6, &pm.SAGV, &pm.UFS}) {
    EXPECT_EQ(Texts({gfx->SwitchTime, gfx->InStateTime, gfx->ActiveTime, gfx->ExeCycles,
                     gfx->Ratios, gfx->ExitOnPassRatios, gfx->Device, gfx->Tile,
                     gfx->ForceIdleDelay, gfx->Rc0Method, gfx->LimitReasonMask}),
              Texts({"sec:1", "sec:1", "msec:100", "10", "", "ALL", "All", "All", "usec:0", "Force",
                     "0x0"}));
  }
  EXPECT_EQ(pm.PSTATES.ExePstates + pm.PSTATES.RatioDistLoMeHi, "P0...PnFF:FF:FF");
}

}  // namespace
