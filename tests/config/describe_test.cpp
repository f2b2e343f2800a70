#include "vexor/config/describe.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "config/config_files.h"
#include "temporary_folder.h"

namespace {

using vexor::DescribeXMLConfigText;
using vexor::Description;
using vexor::Origin;
using vexor::Setting;

// "value origin line" of the setting; empty for an unknown path.
std::string SettingAt(const Description& description, const std::string& path) {
  constexpr const char* kOrigins[] = {"file",    "older",   "corrected",
                                      "derived", "missing", "default"};
  const auto& settings = description.settings;
  const auto found = std::ranges::find(settings, path, &Setting::path);
  if (found == settings.end()) return {};
  return found->value + " " + kOrigins[static_cast<std::size_t>(found->origin)] + " " +
         std::to_string(found->line);
}

// One element on each line, so that line numbers identify them.
constexpr const char* kDocument = R"(<VEXOR>
<Version>3.18.400.0</Version>
<TEST_CONTROL_CFG>
<AutoRunCfg>
<CSTATES>true</CSTATES>
<HWP>True</HWP>
<PCIe-Link-DState>true</PCIe-Link-DState>
<iGFX-DVFS>false</iGFX-DVFS>
<GT-DVFS>true</GT-DVFS>
<iGFX-RC6>false</iGFX-RC6>
<GT-RC6>false</GT-RC6>
</AutoRunCfg>
<TestTraceCfg>
<a/>
<b>PCIe-Link-DState_Core_0</b>
<c>CSTATES_Core_Con</c>
</TestTraceCfg>
<SETTING>
<Delay>5</Delay>
</SETTING>
</TEST_CONTROL_CFG>
<GLOBALPM>
<CORE>
<CSTATES>
<ExeCycles>7</ExeCycles>
<ExeCycles>8</ExeCycles>
<KNOBS/>
</CSTATES>
<PSTATES>
<SwitchTime/>
<ActiveTime>msec:3</ActiveTime>
</PSTATES>
<HWP>
<SwitchTime>msec:6</SwitchTime>
</HWP>
</CORE>
<ICE>
<Ice-Cstates/>
<Ice-Pstates><SwitchTime/></Ice-Pstates>
</ICE>
<SYSTEM>
<PECI>
<RdPCIConfig>
<PCIE/>
<PCIE>0:0:31:0:0x40</PCIE>
</RdPCIConfig>
</PECI>
</SYSTEM>
<GT>
<GT-RC6>
<InStateTime>sec:1</InStateTime>
<RC6Time>sec:2</RC6Time>
</GT-RC6>
<DGFX-RESET>
<ConfigState>1</ConfigState>
</DGFX-RESET>
</GT>
<Device>
<PCIe-Link-DState>
<ConfigState/>
<ConfigState>0:14:0 D3</ConfigState>
</PCIe-Link-DState>
</Device>
<UNCORE>
<MESH-GV>
<arg name="-exeCycles" val="9"/>
</MESH-GV>
</UNCORE>
</GLOBALPM>
<GLOBALCONFIGURATION>
<SystemSetup>
<SETTING>
<Host_IP_Config>localhost</Host_IP_Config>
<Ordered_Interleave_ICE_Flow/>
<Ordered_Flow_Interleave>true</Ordered_Flow_Interleave>
</SETTING>
</SystemSetup>
<SysConfiguration>
<CORE>
<CONFIG>
<ITEM> </ITEM>
<OTHER>x</OTHER>
<ITEM>0; Turbo; Enable</ITEM>
</CONFIG>
</CORE>
<SYSTEM>
<GSTATES>
<Fast_Startup>Disable</Fast_Startup>
</GSTATES>
<KNOBS>
<Empty/>
<Twice>1</Twice>
<Twice>2</Twice>
</KNOBS>
</SYSTEM>
</SysConfiguration>
<CustomConfiguration>
<MSR_CFG>
<MMIO/>
<MSR><Address>0x1FC</Address></MSR>
<MSR>
<Address>0xE2</Address>
</MSR>
</MSR_CFG>
</CustomConfiguration>
</GLOBALCONFIGURATION>
<WORKLOADS>
<MemoryStress>
<L1>
<AutoRun>true</AutoRun>
</L1>
</MemoryStress>
</WORKLOADS>
</VEXOR>
)";

TEST(Describe, ReportsTheOriginOfEachSetting) {
  NameHostIpFile("no such file");
  const Description description = DescribeXMLConfigText(kDocument);
  EXPECT_EQ(description.error, "");
  EXPECT_EQ(description.version, "3.18.400.0");
  struct Case {
    const char* path;
    const char* expected;
  };
  const Case cases[] = {
      {"TEST_CONTROL_CFG/AutoRunCfg/CSTATES", "true file 5"},
      {"TEST_CONTROL_CFG/AutoRunCfg/HWP", "false file 6"},
      {"TEST_CONTROL_CFG/AutoRunCfg/SDC", "false default 0"},
      {"TEST_CONTROL_CFG/AutoRunCfg/iGFX-DVFS", "true older 9"},
      {"TEST_CONTROL_CFG/AutoRunCfg/iGFX-RC6", "false file 10"},
      {"TEST_CONTROL_CFG/AutoRunCfg/PCIe-Link", "true older 7"},
      {"TEST_CONTROL_CFG/AutoRunCfg/PCIe-Link-DState", ""},
      {"TEST_CONTROL_CFG/TestTraceCfg/Name[1]", "PCIe-Link_Core_Con corrected 15"},
      {"TEST_CONTROL_CFG/TestTraceCfg/Name[2]", "Dx-States_Core_Con corrected 15"},
      {"TEST_CONTROL_CFG/TestTraceCfg/Name[3]", "CSTATES_Core_Con file 16"},
      {"TEST_CONTROL_CFG/WorkloadCfg/Delay", "5 older 19"},
      {"TEST_CONTROL_CFG/WorkloadCfg/ExeMode", "CM default 0"},
      {"GLOBALPM/CORE/CSTATES/ExeCycles", "7 file 25"},
      {"GLOBALPM/CORE/CSTATES/KNOBS", " file 27"},
      {"GLOBALPM/CORE/CSTATES/ConfigLoop", " missing 0"},
      {"GLOBALPM/CORE/SDC/ConfigLoop", "1 default 0"},
      {"GLOBALPM/CORE/PSTATES/SwitchTime", "msec:3 derived 30"},
      {"GLOBALPM/CORE/HWP/SwitchTime", "msec:6 file 34"},
      {"GLOBALPM/ICE/Ice-Cstates/SwitchTime", "hour:0 derived 0"},
      {"GLOBALPM/ICE/Ice-Pstates/SwitchTime", "msec:80 default 0"},
      {"GLOBALPM/SYSTEM/GSTATES/WakeEvent", "RTC default 0"},
      {"GLOBALPM/SYSTEM/GSTATES/Fast_Startup", ""},
      {"GLOBALPM/SYSTEM/PECI/RdPCIConfig/PCIE[1]", "0:0:31:0:0x40 file 45"},
      {"GLOBALPM/GT/iGFX-RC6/InStateTime", "sec:2 older 52"},
      {"GLOBALPM/GT/iGFX-RC6/ActiveTime", " missing 0"},
      {"GLOBALPM/GT/iGFX-RC6/RC6Time", ""},
      {"GLOBALPM/GT/DGFX-RESET/ConfigState[1]", ""},
      {"GLOBALPM/Device/PCIe-Link/ConfigState[1]", "0:14:0 D3 older 61"},
      {"GLOBALPM/Device/Dx-States/ConfigState[1]", "0:14:0 D3 older 61"},
      {"GLOBALPM/UNCORE/MESH-GV/-exeCycles", "9 file 66"},
      {"GLOBALPM/UNCORE/MESH-GV/-knobs", " missing 0"},
      {"GLOBALCONFIGURATION/SystemSetup/SETTING/Host_IP_Config", " derived 73"},
      {"GLOBALCONFIGURATION/SystemSetup/SETTING/Ordered_Interleave_ICE_Flow", "true older 75"},
      {"GLOBALCONFIGURATION/SystemSetup/SETTING/Log_File_Name", " missing 0"},
      {"GLOBALCONFIGURATION/SysConfiguration/CORE/CONFIG/ITEM[1]", "0; Turbo; Enable file 83"},
      {"GLOBALCONFIGURATION/SysConfiguration/SYSTEM/GSTATES/Fast_Startup", "Disable file 88"},
      {"GLOBALCONFIGURATION/SysConfiguration/SYSTEM/KNOBS/Twice", "1 file 92"},
      {"GLOBALCONFIGURATION/SysConfiguration/SYSTEM/KNOBS/LTR_IGN_Mask", ""},
      {"GLOBALCONFIGURATION/CustomConfiguration/MSR_CFG/MSR[1]/Pkg", " missing 0"},
      {"GLOBALCONFIGURATION/CustomConfiguration/MSR_CFG/MSR[2]/Address", "0xE2 file 102"},
      {"WORKLOADS/MemoryStress/L1/AutoRun", "true file 110"},
      {"WORKLOADS/MemoryStress/L2/AutoRun", "false default 0"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(SettingAt(description, row.path), row.expected) << row.path;
  }
}

TEST(Describe, ReportsTheTestSwitchedOffForAnOlderFile) {
  const std::string device = Wrapped("Device",
                                     "<PCIe-Link/><PCIe-Link-DState><ConfigState>D3"
                                     "</ConfigState></PCIe-Link-DState>");
  const std::string control = Wrapped("AutoRunCfg", "<PCIe-Link-DState>true</PCIe-Link-DState>");
  const Description description = DescribeXMLConfigText(
      Document(Wrapped("TEST_CONTROL_CFG", control) + Wrapped("GLOBALPM", device)));
  EXPECT_EQ(SettingAt(description, "TEST_CONTROL_CFG/AutoRunCfg/PCIe-Link"), "false corrected 1");
  EXPECT_EQ(SettingAt(description, "TEST_CONTROL_CFG/AutoRunCfg/Dx-States"), "true older 1");
}

TEST(Describe, ReadsTheHostIpFile) {
  const TemporaryFolder folder;
  WriteBytes(folder / "HostIP.txt", "10.0.0.7");
  NameHostIpFile(folder / "HostIP.txt");
  const std::string path = "GLOBALCONFIGURATION/SystemSetup/SETTING/Host_IP_Config";
  const auto describe = [&](const std::string& content) {
    return SettingAt(DescribeXMLConfigText(Document(content)), path);
  };
  EXPECT_EQ(describe(""), "10.0.0.7 default 0");
  EXPECT_EQ(describe("<GLOBALCONFIGURATION><SystemSetup><SETTING/></SystemSetup>"
                     "</GLOBALCONFIGURATION>"),
            "10.0.0.7 derived 0");
  NameHostIpFile("no such file");
}

TEST(Describe, ReportsWhyAFileCannotBeRead) {
  struct Case {
    std::string document;
    const char* error;
    int line;
  };
  const Case cases[] = {
      {"\n<vexor/>", "wrong root vexor, expected VEXOR", 2},
      {"<!-- a -->", "no root element VEXOR", 0},
      {"<VEXOR>\n<?a?></VEXOR>",
       "not well-formed XML: a processing instruction (<?...?>) that is not at the beginning of "
       "the "
       "file, expected it before all comments and elements",
       2},
      {Document("\n<TEST_CONTROL_CFG><TestTraceCfg/></TEST_CONTROL_CFG>", "3"),
       "trace entries need a version of four pieces, expected 3.21.522.0", 2},
      {Document("<TEST_CONTROL_CFG><TestTraceCfg><a/>\n<b>CSTATES_a</b></TestTraceCfg>"
                "</TEST_CONTROL_CFG>"),
       "malformed trace entry \"CSTATES_a\", expected test_target_code, such as "
       "CSTATES_Core_Con:10",
       2},
  };
  for (const Case& row : cases) {
    const Description description = DescribeXMLConfigText(row.document);
    EXPECT_EQ(description.error, row.error);
    EXPECT_EQ(description.error_line, row.line);
    EXPECT_EQ(description.settings.size(), 0U);
  }
}

TEST(Describe, ListsContentThatIsNotRead) {
  const auto pm = [](const std::string& content) {
    return Document("\n" + Wrapped("GLOBALPM", content));
  };
  const auto cstates = [&pm](const std::string& content) {
    return pm(Wrapped("CORE", Wrapped("CSTATES", content)));
  };
  constexpr const char* kKinds[] = {"text", "element", "attribute", "comment", "markup", "rest"};
  using Texts = std::vector<std::string>;
  const struct {
    std::string document;
    Texts unread;
  } cases[] = {
      {Document("<LoopTracker>7</LoopTracker>"), {}},
      {Document("<LoopTracker>seven</LoopTracker>"), {"text 1 LoopTracker seven"}},
      {"a" + Document("<LoopTracker>7<!-- b -->8</LoopTracker>"),
       {"text 1  a", "comment 1 LoopTracker  b ", "text 1 LoopTracker 8"}},
      {cstates("<KNOBS/><ActiveTime> sec:1\n</ActiveTime>"), {}},
      {cstates("<KNOBS/>x<KNOBS>a</KNOBS><Foo/><Bar><Baz>1</Baz></Bar>"),
       {"text 2 GLOBALPM/CORE/CSTATES x", "text 2 GLOBALPM/CORE/CSTATES/KNOBS a",
        "element 2 GLOBALPM/CORE/CSTATES/Foo ", "text 2 GLOBALPM/CORE/CSTATES/Bar/Baz 1"}},
      {cstates("<KNOBS><!-- b -->a</KNOBS><ExeCycles>1<!-- c -->0</ExeCycles>"),
       {"comment 2 GLOBALPM/CORE/CSTATES/KNOBS  b ", "text 2 GLOBALPM/CORE/CSTATES/KNOBS a",
        "comment 2 GLOBALPM/CORE/CSTATES/ExeCycles  c ",
        "text 2 GLOBALPM/CORE/CSTATES/ExeCycles 0"}},
      {cstates("<PxMxCxScope><b/></PxMxCxScope><ExeCycles a='1'>1</ExeCycles>"),
       {"element 2 GLOBALPM/CORE/CSTATES/PxMxCxScope/b ",
        "attribute 2 GLOBALPM/CORE/CSTATES/ExeCycles a=\"1\""}},
      {pm("<GT><iGFX-RC6/><GT-RC6><ExeCycles>1</ExeCycles></GT-RC6></GT>"),
       {"text 2 GLOBALPM/GT/GT-RC6/ExeCycles 1"}},
      {pm("<UNCORE><MESH-GV><arg name='-exeCycles' val='9' randVal='1-2'/>"
          "<arg name='x' val='1'/><arg name='-exeCycles' val='8'/><arg/></MESH-GV></UNCORE>"),
       {"attribute 2 GLOBALPM/UNCORE/MESH-GV/-exeCycles randVal=\"1-2\"",
        "text 2 GLOBALPM/UNCORE/MESH-GV/x 1", "text 2 GLOBALPM/UNCORE/MESH-GV/-exeCycles 8",
        "element 2 GLOBALPM/UNCORE/MESH-GV/arg "}},
      {Document("<GLOBALCONFIGURATION><SysConfiguration><SYSTEM><KNOBS><LTR_IGN_Mask/><b/><c>1</c>"
                "</KNOBS></SYSTEM></SysConfiguration></GLOBALCONFIGURATION>"),
       {"element 1 GLOBALCONFIGURATION/SysConfiguration/SYSTEM/KNOBS/b "}},
      {R"(<?xml version="1.0" encoding="utf-8"?><!DOCTYPE VEXOR>)" + Document("") + "<a>b</a>",
       {"markup 1  DOCTYPE VEXOR", "text 1 a b"}},
      {R"(<?xml version="1.0" encoding="ISO-8859-1"?>)" + Document(""),
       {R"(markup 1  xml version="1.0" encoding="ISO-8859-1")"}},
      {Document("<a></a b='1'\nc=\"2\">") + "\n<!--c-->",
       {"element 1 a ", "markup 1  b='1'", "markup 2  c=\"2\"", "comment 3  c"}},
      {cstates("<KNOBS>&#x1FFFFF;</KNOBS>"), {}},
      {cstates("<KNOBS a='&#;1'>R&#x0;X</KNOBS><ExeCycles>1&#4294967296;</ExeCycles>"),
       {"attribute 2 GLOBALPM/CORE/CSTATES/KNOBS a=\"\"", "markup 2  &#;1", "markup 2  &#x0;X",
        "markup 2  &#4294967296;"}},
      {Document("") + "</a><VEXOR/>",
       {"rest 1  </a> closes no open element: the rest of the file is not read"}},
  };
  for (const auto& row : cases) {
    Texts found;
    for (const vexor::Unread& unread : DescribeXMLConfigText(row.document).unread) {
      found.push_back(std::string(kKinds[static_cast<std::size_t>(unread.kind)]) + " " +
                      std::to_string(unread.line) + " " + unread.path + " " + unread.text);
    }
    EXPECT_EQ(found, row.unread) << row.document;
  }
}

TEST(Describe, ShowsTheTextIfItDiffersFromTheValue) {
  const struct {
    const char* element;
    std::string path;
    const char* text;
  } cases[] = {
      {"<TEST_CONTROL_CFG><AutoRunCfg><HWP>True</HWP></AutoRunCfg></TEST_CONTROL_CFG>",
       "TEST_CONTROL_CFG/AutoRunCfg/HWP", "True"},
      {"<TEST_CONTROL_CFG><AutoRunCfg><HWP> true</HWP></AutoRunCfg></TEST_CONTROL_CFG>",
       "TEST_CONTROL_CFG/AutoRunCfg/HWP", " true"},
      {"<TEST_CONTROL_CFG><AutoRunCfg><HWP> False</HWP></AutoRunCfg></TEST_CONTROL_CFG>",
       "TEST_CONTROL_CFG/AutoRunCfg/HWP", ""},
      {"<GLOBALPM><Vpu><Vpu-DVFS><arg name='KNOBS' val=' a '/></Vpu-DVFS></Vpu></GLOBALPM>",
       "GLOBALPM/Vpu/Vpu-DVFS/KNOBS", ""},
  };
  for (const auto& row : cases) {
    const Description description = DescribeXMLConfigText(Document(row.element));
    const auto setting = std::ranges::find(description.settings, row.path, &Setting::path);
    ASSERT_NE(setting, description.settings.end()) << row.path;
    EXPECT_EQ(setting->text, row.text) << row.element;
    EXPECT_EQ(description.unread.size(), 0U);
  }
}

TEST(Describe, HasOneEntryForEachSetting) {
  const Description defaults = DescribeXMLConfigText("<VEXOR/>");
  std::set<std::string> paths;
  for (const Setting& setting : defaults.settings) {
    EXPECT_TRUE(paths.insert(setting.path).second) << setting.path;
    EXPECT_EQ(setting.origin, Origin::kDefault) << setting.path;
  }
  EXPECT_TRUE(paths.contains("WORKLOADS/CopyCompare/Thread"));
}

}  // namespace
