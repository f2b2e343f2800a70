#include "vexor/config/global_config.h"

#include <gtest/gtest.h>

#include "config/config_files.h"

namespace {

using Texts = std::vector<std::string>;
using vexor::NamedValues;

_XML_FULL_CFG ReadGlobal(const std::string& content) {
  return ReadDocument(Document(Wrapped("GLOBALCONFIGURATION", content)));
}

NamedValues DefaultKnobs() { return {{"LTR_IGN_Mask", "0"}, {"Snoop_Latency_Mask", "0"}}; }

// tests/config/data/default.xml holds the default texts.
TEST(GlobalConfig, ResetRestoresAllButTheMembersThatItKeeps) {
  NameHostIpFile("no such file");
  _XML_FULL_CFG cfg = ReadGlobal(
      "<SysConfiguration><CORE><CONFIG><ITEM>a</ITEM></CONFIG></CORE></SysConfiguration>"
      "<CustomConfiguration><MSR_CFG><MSR/></MSR_CFG><MailBoxCfg><MailBox/></MailBoxCfg>"
      "</CustomConfiguration><SystemSetup><OverwriteCfg><CPU>c</CPU></OverwriteCfg><SETTING>"
      "<Seeds>s</Seeds></SETTING></SystemSetup>");
  _GLOBALCONFIG_XMLCFG& g = cfg.GlobalConfig;
  g.Spare1 = g.Spare2 = g.Spare4 = "s";
  g.LoopTracker = 9;
  g.VersionMatch = false;
  cfg.SelectionIndex = 4;
  cfg.SelectionText = "x";
  ResetVexorXmlConfiguration(cfg);
  EXPECT_TRUE(g.CORE_CONFIG.empty() && g.CustomConfiguration.MSR_CFG.empty() &&
              g.CustomConfiguration.MailBoxCfg.empty());
  EXPECT_EQ(g.KNOBS, DefaultKnobs());
  EXPECT_EQ(Texts({g.Version, g.TopoMode, g.CPU, g.Seeds, g.Spare2, g.Spare3, g.Spare4}),
            Texts({"3.21.522.0", "OS", "", "", "", "", ""}));
  EXPECT_EQ(g.Spare1, "s");
  EXPECT_EQ(g.OverwriteCfg + g.SETTING, "<CPU>c  <Seeds>s  ");
  EXPECT_EQ(g.LoopTracker, 9u);
  EXPECT_FALSE(g.VersionMatch);
  EXPECT_EQ(cfg.SelectionIndex, -1);
  EXPECT_EQ(cfg.SelectionText, "");
}

TEST(GlobalConfig, ReplacesAllSystemListsOfAPresentSection) {
  const auto lists =
      ReadGlobal(
          "<SysConfiguration>"
          "<CORE><CONFIG><ITEM> a </ITEM><ITEM/><X>b</X><ITEM>c</ITEM></CONFIG>"
          "<SETTING><ITEM>d</ITEM></SETTING><SETTING><ITEM>second</ITEM></SETTING></CORE>"
          "<POWER><CONFIG><ITEM>e</ITEM></CONFIG><SETTING><ITEM>f</ITEM></SETTING></POWER>"
          "<UNCORE><CONFIG><A>1</A><B/></CONFIG><SETTING><C>2</C></SETTING></UNCORE>"
          "<SYSTEM><GSTATES><G>3</G></GSTATES><OS><O>4</O></OS><KNOBS><K>5</K><K> 6 </K></KNOBS>"
          "</SYSTEM></SysConfiguration>")
          .GlobalConfig;
  EXPECT_EQ(lists.CORE_CONFIG, Texts({"a", "c"}));
  EXPECT_EQ(lists.CORE_SETTING, Texts({"d"}));
  EXPECT_EQ(lists.POWER_CONFIG, Texts({"e"}));
  EXPECT_EQ(lists.POWER_SETTING, Texts({"f"}));
  EXPECT_EQ(lists.UNCORE_CONFIG, NamedValues({{"A", "1"}}));
  EXPECT_EQ(lists.UNCORE_SETTING, NamedValues({{"C", "2"}}));
  EXPECT_EQ(lists.GSTATES, NamedValues({{"G", "3"}}));
  EXPECT_EQ(lists.OS, NamedValues({{"O", "4"}}));
  EXPECT_EQ(lists.KNOBS, NamedValues({{"K", "5"}, {"K", "6"}}));

  EXPECT_EQ(ReadGlobal("").GlobalConfig.KNOBS, DefaultKnobs());
  _XML_FULL_CFG cfg;
  cfg.GlobalConfig.CORE_CONFIG = {"gone"};
  cfg.GlobalConfig.KNOBS = {{"gone", "1"}};
  EXPECT_TRUE(ReadInto(cfg, Document("<GLOBALCONFIGURATION><SysConfiguration><CORE/>"
                                     "</SysConfiguration></GLOBALCONFIGURATION>"))
                  .read);
  EXPECT_TRUE(cfg.GlobalConfig.CORE_CONFIG.empty() && cfg.GlobalConfig.KNOBS.empty());
}

TEST(GlobalConfig, AbsentSettingsOfAPresentElementReadAsEmpty) {
  NameHostIpFile("no such file");
  const auto g =
      ReadGlobal(
          "<SystemSetup><OverwriteCfg><CPU>X</CPU><PCH>Default</PCH><XRAM_Base/></OverwriteCfg>"
          "<SETTING><TopoMode> t </TopoMode><Collect-Crashlog-AllResets>true"
          "</Collect-Crashlog-AllResets><Odd> o </Odd></SETTING></SystemSetup>")
          .GlobalConfig;
  EXPECT_EQ(Texts({g.CPU, g.PCH, g.XRAM_Base}), Texts({"X", "Default", ""}));
  EXPECT_EQ(Texts({g.TopoMode, g.Collect_Crashlog_AllResets, g.Log_File_Name, g.Log_Level}),
            Texts({"t", "true", "", ""}));
  EXPECT_EQ(g.OverwriteCfg, "<CPU>X  ");
  EXPECT_EQ(g.SETTING, "<TopoMode>t  <Collect-Crashlog-AllResets>true  <Odd>o  ");
  const auto untouched = ReadGlobal("<SystemSetup><OverwriteCfg/></SystemSetup>").GlobalConfig;
  EXPECT_EQ(untouched.TopoMode, "OS");
}

TEST(GlobalConfig, ReadsTheOlderFlowSwitchIfTheCurrentOneIsEmpty) {
  struct Case {
    const char* setting;
    const char* expected;
  };
  const Case cases[] = {
      {"<Ordered_Flow_Interleave>true</Ordered_Flow_Interleave>", "true"},
      {"<Ordered_Flow_Interleave>a</Ordered_Flow_Interleave>"
       "<Ordered_Interleave_ICE_Flow>b</Ordered_Interleave_ICE_Flow>",
       "b"},
      {"<Ordered_Interleave_ICE_Flow/><Ordered_Flow_Interleave>a</Ordered_Flow_Interleave>", "a"},
      {"", ""},
  };
  for (const Case& c : cases) {
    const std::string setting = Wrapped("SystemSetup", Wrapped("SETTING", c.setting));
    EXPECT_EQ(ReadGlobal(setting).GlobalConfig.Ordered_Interleave_ICE_Flow, c.expected)
        << c.setting;
  }
}

TEST(GlobalConfig, TakesTheHostIpFromTheElementOrTheFile) {
  struct Case {
    const char* element;
    const char* file;  // null for none
    const char* expected;
  };
  const Case cases[] = {
      {"10.0.0.1", "1.2.3.4", "10.0.0.1"},
      {"", " 1.2.3.4 \r\nmore", "1.2.3.4"},
      {"", nullptr, ""},
      {"", "localhost", ""},
      {"localhost", "1.2.3.4", ""},
      {"10.0.0", "1.2.3.4", ""},
      {"99999999999999999999.0.0.1", nullptr, ""},
  };
  const TemporaryFolder folder;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.element);
    NameHostIpFile(folder / (c.file == nullptr ? "missing.txt" : "HostIP.txt"));
    if (c.file != nullptr) WriteBytes(folder / "HostIP.txt", c.file);
    const std::string content = Wrapped("SETTING", Wrapped("Host_IP_Config", c.element));
    EXPECT_EQ(ReadGlobal(Wrapped("SystemSetup", content)).GlobalConfig.Host_IP_Config, c.expected);
  }
  WriteBytes(folder / "HostIP.txt", "5.6.7.8\n");
  NameHostIpFile(folder / "HostIP.txt");
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  EXPECT_EQ(cfg.GlobalConfig.Host_IP_Config, "5.6.7.8");
}

TEST(CustomRegisters, ReadsTheItemsOfEachContainer) {
  const std::pair<const char*, const char*> containers[] = {
      {"MSR_CFG", "MSR"},    {"PCIE_CFG", "PCIE"},     {"PMC-MMIO", "MMIO"}, {"GT-MMIO", "MMIO"},
      {"P2SB-MMIO", "MMIO"}, {"ISP-MMIO", "MMIO"},     {"MMIO", "MMIO"},     {"CRBCFG", "CRB"},
      {"IOSFCFG", "IOSF"},   {"MailBoxCfg", "MailBox"}};
  std::string content;
  Texts expected;
  for (const auto& [container, item] : containers) {
    const std::string in = std::string("of ") + container;
    content += Wrapped(
        container, "<CORE>stranger</CORE>" + Wrapped(item, Wrapped("OrMask", in) + "<Offset/>"));
    expected.push_back("<OrMask>" + in + "  <Offset/>  ");
  }
  const _CUSTOM_XMLCFG c =
      ReadGlobal(Wrapped("CustomConfiguration", content)).GlobalConfig.CustomConfiguration;
  EXPECT_EQ(Texts({c.MSR_CFG.at(0).ItemText, c.PCIE_CFG.at(0).ItemText, c.PMC_MMIO.at(0).ItemText,
                   c.GT_MMIO.at(0).ItemText, c.P2SB_MMIO.at(0).ItemText, c.ISP_MMIO.at(0).ItemText,
                   c.MMIO.at(0).ItemText, c.CRBCFG.at(0).ItemText, c.IOSFCFG.at(0).ItemText,
                   c.MailBoxCfg.at(0).ItemText}),
            expected);
  EXPECT_EQ(Texts({c.MSR_CFG[0].OrMask, c.MSR_CFG[0].Spare, c.MMIO[0].OrMask, c.MMIO[0].Offset}),
            Texts({"of MSR_CFG", "", "of MMIO", ""}));
}

TEST(CustomRegisters, AContainerReplacesItsListAndAnAbsentOneKeepsIt) {
  _XML_FULL_CFG cfg;
  cfg.GlobalConfig.CustomConfiguration.MSR_CFG.resize(3);
  cfg.GlobalConfig.CustomConfiguration.MMIO.resize(3);
  EXPECT_TRUE(ReadInto(cfg, Document("<GLOBALCONFIGURATION><CustomConfiguration><MSR_CFG/>"
                                     "</CustomConfiguration></GLOBALCONFIGURATION>"))
                  .read);
  EXPECT_TRUE(cfg.GlobalConfig.CustomConfiguration.MSR_CFG.empty());
  EXPECT_EQ(cfg.GlobalConfig.CustomConfiguration.MMIO.size(), 3u);
}

}  // namespace
