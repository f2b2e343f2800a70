#include "vexor/config/writer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "config/config_files.h"
#include "source_dir.h"
#include "temporary_folder.h"
#include "vexor/util/strings.h"

namespace {

using Texts = std::vector<std::string>;

// Returns the document in one line, without indentation.
std::string OneLine(const _XML_FULL_CFG& cfg) {
  std::string line;
  bool indents = false;
  for (const char c : vexor::FormatXMLConfig(cfg)) {
    if (c == '\n' || (c == ' ' && indents)) {
      indents = true;
    } else {
      indents = false;
      line += c;
    }
  }
  return line;
}

TEST(Writer, WritesTheDefaultsWithHintComments) {
  NameHostIpFile("no such file");
  const TemporaryFolder folder;
  const std::string path = folder / "default.xml";
  _XML_FULL_CFG cfg;
  cfg.GlobalPM.FACT.ConfigState = {"gone"};
  cfg.TestControl.AutoRunCfg.fill(true);
  cfg.GlobalConfig.OS = {{"Power_Scheme", "gone"}};
  cfg.SelectionIndex = 3;
  cfg.SelectionText = path;
  ASSERT_TRUE(WriteXMLConfig(cfg.SelectionText.c_str(), cfg, true));
  EXPECT_EQ(ReadBytes(path), ReadBytes(VEXOR_SOURCE_DIR "/tests/config/data/default.xml"))
      << "where the defaults were meant to change: scripts/renew.sh";
  cfg.GlobalPM.SAGV.KnobHint = "the test's own hint rules";
  EXPECT_EQ(vexor::FormatXMLConfig(cfg), ReadBytes(path));
  EXPECT_EQ(cfg.SelectionIndex, -1);
  EXPECT_EQ(cfg.SelectionText, "");
  EXPECT_EQ(cfg.GlobalPM.UFS.KnobHint, "ExitOnFail;Random;QclkCheck(SAGV only)");
  EXPECT_EQ(cfg.GlobalPM.CSTATES.KnobHint, "");
  EXPECT_TRUE(VexorConfigParser().ReadXMLPar(path, &cfg, true, true));
}

TEST(Writer, WritesEachMemberInItsElement) {
  struct Case {
    const char* rule;
    void (*fill)(_XML_FULL_CFG&);
    const char* expected;  // "*" stands for any text
  };
  const Case cases[] = {
      {"the loop counter is unsigned", [](auto& cfg) { cfg.GlobalConfig.LoopTracker = ~0ULL; },
       "<LoopTracker>18446744073709551615</LoopTracker>"},
      {"the version is the library's", [](auto& cfg) { cfg.GlobalConfig.Version = "1.2.3.4"; },
       "<VEXOR><Version>3.21.522.0</Version>"},
      {"traces",
       [](auto& cfg) {
         cfg.TestControl.TestTraceCfg = {"a_b_c", "", "d"};
       },
       "<TestTraceCfg><Name>a_b_c</Name><Name></Name><Name>d</Name></TestTraceCfg>"},
      {"unread states",
       [](auto& cfg) {
         cfg.GlobalPM.FACT.ConfigState = {"1", "2"};
       },
       "</SwitchTime><ConfigState>1</ConfigState><ConfigState>2</ConfigState></FACT>"},
      {"unread resets", [](auto& cfg) { cfg.GlobalPM.DGFX_RESET.ConfigState = {"1"}; },
       "</KNOBS><ConfigState>1</ConfigState></DGFX-RESET>"},
      {"ranges of the first four go elsewhere",
       [](auto& cfg) {
         _MESH_GV_CFG& mesh = cfg.GlobalPM.MESH_GV;
         mesh.SwitchTime = mesh.CheckDelayTime = mesh.StartDelayTime = mesh.ExeCycles = "1-2";
         mesh.FailTolerance = mesh.RatioPUnit4 = "3-4";
       },
       R"(<arg name="-switchTime" randVal="1-2"/><arg name="-checkDelayTime" randVal="1-2"/>)"
       R"(<arg name="-startDelayTime" randVal="1-2"/><arg name="-exeCycles" randVal="1-2"/>)"
       R"(<arg name="-failTolerance" val="3-4"/>)"},
      {"a knob hint of the record cannot end its comment",
       [](auto& cfg) { cfg.GlobalPM.CSTATES.KnobHint = "a--b-->-\x01-"; },
       "<!--Valid options for tag KNOBS:a- -b- ->- - --><KNOBS></KNOBS><ActiveTime>"},
      {"names that are no names are left out",
       [](auto& cfg) {
         cfg.GlobalConfig.UNCORE_SETTING = {{"A-1.b_", "v"}, {"1", "v"}, {"a b", "v"},
                                            {"", "v"},       {"<", "v"}, {"\xc3\xa9", ""}};
       },
       "<SETTING><A-1.b_>v</A-1.b_><\xc3\xa9></\xc3\xa9></SETTING>"},
      {"names that always stand have their place",
       [](auto& cfg) {
         cfg.GlobalConfig.OS = {{"Power_Scheme", "All"}, {"x", "1"}};
       },
       "Random,All--><Power_Scheme>All</Power_Scheme><!--Valid options for tag "
       "Battery_Simulation:Default,AC,DC--><Battery_Simulation></Battery_Simulation><x>1</x></OS>"},
      {"but the record's order is kept",
       [](auto& cfg) {
         cfg.GlobalConfig.OS = {{"x", "1"}, {"Battery_Simulation", "AC"}};
       },
       "<Power_Scheme></Power_Scheme><x>1</x><!--Valid options for tag "
       "Battery_Simulation:Default,AC,DC--><Battery_Simulation>AC</Battery_Simulation></OS>"},
      {"registers",
       [](auto& cfg) {
         _MSR_ITEM item;
         item.Address = "0x1A0";
         item.Pkg = "<&>";
         item.Spare = item.ItemText = "unwritten";
         cfg.GlobalConfig.CustomConfiguration.MSR_CFG = {item, {}};
       },
       "<MSR_CFG><MSR><Address>0x1A0</Address>*<Pkg>&lt;&amp;&gt;</Pkg>*</MSR><MSR>*"
       "</MSR></MSR_CFG>"},
  };
  for (const Case& c : cases) {
    _XML_FULL_CFG cfg;
    c.fill(cfg);
    const std::string written = OneLine(cfg);
    std::size_t at = 0;
    for (const std::string& part : SplitByString(c.expected, "*")) {
      at = written.find(part, at);
      EXPECT_NE(at, std::string::npos) << c.rule << "\n" << written;
    }
  }
}

TEST(Writer, FailsWithoutTouchingAnything) {
  const TemporaryFolder folder;
  WriteBytes(folder / "file", "old");
  std::filesystem::create_directory(folder / "folder");
  _XML_FULL_CFG cfg;
  for (const char* const name : {"missing/file.xml", "file/file.xml", "folder", ""}) {
    const std::string path = *name == '\0' ? "" : folder / name;
    EXPECT_FALSE(WriteXMLConfig(path.c_str(), cfg, false)) << name;
  }
  const auto entries = std::filesystem::directory_iterator(folder.path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 2);
  EXPECT_EQ(ReadBytes(folder / "file"), "old");
  cfg.SelectionText = "kept";
  EXPECT_FALSE(WriteXMLConfig(nullptr, cfg, true));
  EXPECT_EQ(cfg.SelectionText, "kept");
}

}  // namespace
