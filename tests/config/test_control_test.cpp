#include "vexor/config/test_control.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "config/config_files.h"
#include "vexor/config/legacy.h"

namespace {

using Texts = std::vector<std::string>;

std::string ControlDocument(const std::string& content, const std::string& version = "3.21.522.0") {
  return Document(Wrapped("TEST_CONTROL_CFG", content), version);
}

TEST(AutoRun, ReadsTheSwitchOfEachTest) {
  std::string switches;
  for (int id = 1; id <= 32; ++id) {
    switches += Wrapped(GetPMTestName(static_cast<VEXOR_PM_TEST_ID>(id)), id % 3 == 0   ? "true"
                                                                          : id % 3 == 1 ? "false"
                                                                                        : " true");
  }
  const _XML_FULL_CFG cfg = ReadDocument(ControlDocument(Wrapped("AutoRunCfg", switches)));
  for (int id = -1; id <= 36; ++id) {
    EXPECT_EQ(vexor::IsAutoRun(cfg.TestControl, static_cast<VEXOR_PM_TEST_ID>(id)),
              id > 0 && id <= 32 && id % 3 == 0)
        << id;
  }
}

TEST(AutoRun, OlderNamesAlsoSwitchTestsOn) {
  struct Case {
    const char* switches;
    std::vector<int> on;
  };
  const Case cases[] = {
      {"<GT-DVFS>true</GT-DVFS>", {8}},
      {"<GT-DVFS>true</GT-DVFS><iGFX-DVFS>false</iGFX-DVFS>", {8}},
      {"<GT-RC6>true</GT-RC6>", {9}},
      {"<PCIe-Link-DState>true</PCIe-Link-DState>", {29, 31}},
      {"<PCIe-Link>true</PCIe-Link><PCIe-Link-DState>no</PCIe-Link-DState>", {29}},
      {"<FANSPEED-CTR>true</FANSPEED-CTR><FANSPEED-CTR/><SDC/><SDC>true</SDC>", {14}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.switches);
    const _XML_FULL_CFG cfg = ReadDocument(ControlDocument(Wrapped("AutoRunCfg", c.switches)));
    std::vector<int> on;
    for (int id = 1; id <= 32; ++id) {
      if (vexor::IsAutoRun(cfg.TestControl, static_cast<VEXOR_PM_TEST_ID>(id))) on.push_back(id);
    }
    EXPECT_EQ(on, c.on);
  }
}

TEST(WorkloadRunner, KeepsDefaultsForMissingOptions) {
  struct Case {
    const char* content;
    Texts expected;
  };
  const Texts defaults = {"Generated/VexorWorkload.csv", "CM", "Max", "0", "1"};
  const Case cases[] = {
      {"", defaults},
      {"<WorkloadCfg/>", defaults},
      {"<WorkloadCfg><Log_File_Name>a</Log_File_Name><ExeMode> b </ExeMode><MaxWorkloads>c"
       "</MaxWorkloads><Delay>d</Delay><LoopNum>e</LoopNum></WorkloadCfg>",
       {"a", "b", "c", "d", "e"}},
      {"<WorkloadCfg><Delay/></WorkloadCfg>", defaults},
      {"<SETTING><Delay>5</Delay></SETTING>", {defaults[0], "CM", "Max", "5", "1"}},
      {"<SETTING><Delay>5</Delay></SETTING><WorkloadCfg/>", defaults},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.content);
    const auto control = ReadDocument(ControlDocument(c.content)).TestControl;
    EXPECT_EQ(Texts({control.Log_File_Name, control.ExeMode, control.MaxWorkloads, control.Delay,
                     control.LoopNum}),
              c.expected);
  }
}

TEST(TestControl, ReadingASecondFileResetsTheRecord) {
  _XML_FULL_CFG cfg = ReadDocument(
      ControlDocument("<AutoRunCfg><SDC>true</SDC></AutoRunCfg><TestTraceCfg><N>SDC_a_b</N>"
                      "</TestTraceCfg><WorkloadCfg><Delay>9</Delay></WorkloadCfg>"));
  cfg.TestControl.Enable1 = cfg.TestControl.Enable2 = false;
  cfg.TestControl.Switch1 = cfg.TestControl.Switch2 = true;
  EXPECT_TRUE(ReadInto(cfg, Document("")).read);
  EXPECT_FALSE(vexor::IsAutoRun(cfg.TestControl, PM_TEST_SDC));
  EXPECT_TRUE(cfg.TestControl.TestTraceCfg.empty());
  EXPECT_EQ(cfg.TestControl.Delay, "0");
  EXPECT_TRUE(cfg.TestControl.Enable1 && cfg.TestControl.Enable2);
  EXPECT_FALSE(cfg.TestControl.Switch1 || cfg.TestControl.Switch2);
}

TEST(TestTrace, ConvertsOlderEntries) {
  struct Case {
    const char* version;
    const char* entry;
    Texts expected;
  };
  const char* const now = "3.21.522.0";
  const char* const old = "3.18.400.0";
  const Case cases[] = {
      {now, " CSTATES_Core_0:10 ", {"CSTATES_Core_0:10"}},
      {now, "any _ text _ 0 ", {"any _ text _ 0"}},
      {now, "  ", {}},
      {old, "CSTATES_Core_0:10", {"CSTATES_Core_Con:1Con"}},
      {old, "CSTATES_Core_0", {"CSTATES_Core_Con"}},
      {old, "CSTATES_Core_0:5_tail", {"CSTATES_Core_Con:5_tail"}},
      {old, "CSTATES__ Core _0:5_ ", {"CSTATES_Core_Con:5"}},
      {old, "CSTATES_Core_00:10", {"CSTATES_Core_00:10"}},
      {old, "CSTATES_Core_Con:10", {"CSTATES_Core_Con:10"}},
      {old, "CSTATES_0_1:0", {"CSTATES_0_1:0"}},
      {"3.19.489.0", "A_B_0", {"A_B_Con"}},
      {"3.20.489.0", "A_B_0", {"A_B_0"}},
      {"3.19.490.0", "A_B_0", {"A_B_0"}},
      {"3.x.y.0_debug", "A_B_0", {"A_B_Con"}},
      {"3.0xFFFFFFFF.1.0", "A_B_0", {"A_B_Con"}},
      {"3.1.99999999999999999999.0", "A_B_0", {"A_B_Con"}},
      {"3.1.4294967295.0", "A_B_0", {"A_B_Con"}},
      {"3.1.2147483647.0", "A_B_0", {"A_B_0"}},
      {now, "PCIe-Link-DState_a_b", {"PCIe-Link_a_b", "Dx-States_a_b"}},
      {now, "pcie-link-dstate_a_b", {"PCIe-Link_a_b", "Dx-States_a_b"}},
      {old, "PCIe-Link-DState_a_0:0", {"PCIe-Link_a_Con:Con", "Dx-States_a_Con:Con"}},
      {now, "a_PCIe-Link-DState_b", {"a_PCIe-Link-DState_b"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.version) + " " + c.entry);
    const std::string trace = Wrapped("TestTraceCfg", "<Name/>" + Wrapped("Any", c.entry));
    _XML_FULL_CFG cfg;
    EXPECT_TRUE(ReadInto(cfg, ControlDocument(trace, c.version)).read);
    EXPECT_EQ(cfg.TestControl.TestTraceCfg, c.expected);
  }
}

TEST(TestTrace, RejectsMalformedEntriesAndVersions) {
  struct Case {
    const char* version;
    const char* traces;
    bool throws;
  };
  const Case cases[] = {
      {"3.21.522.0", "<N>CSTATES_Core</N>", true},
      {"3.21.522.0", "<N>CSTATES__Core</N>", true},
      {"3.21.522.0", "<N>CSTATES_Core_ _x</N>", true},
      {"3.21.522.0", "<N>CSTATES_Core_:_x</N>", true},
      {"3.21.522.0", "<N>good_one_here</N><N>bad</N>", true},
      {"3.21.522", "", true},
      {"", "", true},
      {"3.21.522.0", "", false},
  };
  const TemporaryFolder folder;
  const std::string path = folder / "config.xml";
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.version) + " " + c.traces);
    WriteBytes(path, ControlDocument(Wrapped("TestTraceCfg", c.traces), c.version));
    _XML_FULL_CFG cfg;
    std::string error;
    try {
      VexorConfigParser().ReadXMLPar(path, &cfg, false, false);
    } catch (const std::out_of_range& e) {
      error = e.what();
    }
    EXPECT_EQ(error, c.throws ? "invalid vector<T> subscript" : "");
  }
  _XML_FULL_CFG cfg;
  EXPECT_TRUE(ReadInto(cfg, Document("<TEST_CONTROL_CFG/>", "3")).read);
}

TEST(LegacyLxDx, SwitchesOffTheTestWithoutDeviceStates) {
  const std::string states = "<ConfigState>0:1:2</ConfigState>";
  const auto device = [](const std::string& name, const std::string& content) {
    return Wrapped(name, content);
  };
  const std::string old_switch = "<PCIe-Link-DState>true</PCIe-Link-DState>";
  const std::string link_switch = "<PCIe-Link>true</PCIe-Link>";
  struct Case {
    std::string switches;
    std::string devices;
    bool link;
    bool dx;
  };
  const Case cases[] = {
      {old_switch, device("PCIe-Link-DState", states), true, true},
      {old_switch, device("PCIe-Link-DState", ""), true, true},
      {old_switch, device("PCIe-Link-DState", states) + device("PCIe-Link", ""), false, true},
      {old_switch, device("PCIe-Link-DState", "") + device("PCIe-Link", states), true, false},
      {old_switch, device("Dx-States", states) + device("PCIe-Link", ""), true, true},
      {old_switch, device("Dx-States", "") + device("PCIe-Link-DState", states), true, true},
      {link_switch, device("PCIe-Link-DState", states) + device("PCIe-Link", ""), true, false},
      {old_switch, "", true, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.switches + c.devices);
    const _XML_FULL_CFG cfg =
        ReadDocument(Document(Wrapped("TEST_CONTROL_CFG", Wrapped("AutoRunCfg", c.switches)) +
                              Wrapped("GLOBALPM", Wrapped("Device", c.devices))));
    EXPECT_EQ(vexor::IsAutoRun(cfg.TestControl, PM_TEST_PCIE_LINK), c.link);
    EXPECT_EQ(vexor::IsAutoRun(cfg.TestControl, PM_TEST_DX_STATES), c.dx);
  }
  CheckLegacyLxDx(nullptr);
}

}  // namespace
