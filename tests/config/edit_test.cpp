#include "vexor/config/edit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "config_files.h"
#include "vexor/config/check.h"
#include "vexor/config/writer.h"

namespace {

using vexor::EditedText;

// A document with one section in the manner of a person, and comments.
std::string Lab(const std::string& options) {
  return "<?xml version=\"1.0\"?>\n<!-- lab -->\n<VEXOR>\n\t<Version>3.21.522.0</Version>\n"
         "\t<GLOBALPM>\n\t\t<CORE>\n\t\t\t<CSTATES>" +
         options + "</CSTATES>\n\t\t</CORE>\n\t</GLOBALPM>\n</VEXOR>\n";
}

TEST(SetOptionInText, ChangesTheOptionAlone) {
  struct {
    const char* rule;
    std::string before, path, value, after;
  } const kRows[] = {
      {"white space and comments stay", "<ActiveTime>\n  msec:8 <!-- a --></ActiveTime>",
       "CSTATES/ActiveTime", "msec:9", "<ActiveTime>\n  msec:9 <!-- a --></ActiveTime>"},
      {"an empty element gets an end tag", "<ActiveTime />", "cstates/activetime", "sec:1",
       "<ActiveTime>sec:1</ActiveTime>"},
      {"attributes stay", "<ActiveTime why='x>y'/>", "CSTATES/ActiveTime", "sec:1",
       "<ActiveTime why='x>y'>sec:1</ActiveTime>"},
      {"white space alone is replaced", "<ActiveTime> \n </ActiveTime>", "CSTATES/ActiveTime",
       "sec:1", "<ActiveTime>sec:1</ActiveTime>"},
      {"a comment hides a text, so the text goes before it",
       "<ActiveTime><!-- a -->sec:2</ActiveTime>", "CSTATES/ActiveTime", "sec:1",
       "<ActiveTime>sec:1<!-- a -->sec:2</ActiveTime>"},
      {"a CDATA section is one text", "<ActiveTime><![CDATA[sec:2]]></ActiveTime>",
       "CSTATES/ActiveTime", "sec:1", "<ActiveTime>sec:1</ActiveTime>"},
      {"the first of two counts", "<ActiveTime>sec:2</ActiveTime><ActiveTime>sec:3</ActiveTime>",
       "CSTATES/ActiveTime", "sec:1",
       "<ActiveTime>sec:1</ActiveTime><ActiveTime>sec:3</ActiveTime>"},
      {"in the place of a written file, behind the comment of a line",
       "\n\t\t\t\t<CoreAffinity>All</CoreAffinity> <!-- all -->\n\t\t\t\t<TestMode/>\n\t\t\t",
       "CSTATES/ExeCycles", "5",
       "\n\t\t\t\t<CoreAffinity>All</CoreAffinity> <!-- all -->\n\t\t\t\t<ExeCycles>5</ExeCycles>"
       "\n\t\t\t\t<TestMode/>\n\t\t\t"},
      {"into an element without content", "", "CSTATES/ExeCycles", "5",
       "\n\t\t\t\t<ExeCycles>5</ExeCycles>\n\t\t\t"},
      {"markup is escaped", "<KNOBS/>", "CSTATES/KNOBS", "a<b&c", "<KNOBS>a&lt;b&amp;c</KNOBS>"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.rule);
    const EditedText edited = vexor::SetOptionInText(Lab(row.before), row.path, row.value);
    EXPECT_EQ(edited.error, "");
    EXPECT_EQ(edited.content, Lab(row.after));
    EXPECT_EQ(edited.changes.size(), 1U);
  }
}

TEST(SetOptionInText, KeepsTheManner) {
  const std::string windows = "\xEF\xBB\xBF<VEXOR>\r\n  <Version>3.21.522.0</Version>\r\n</VEXOR>";
  EXPECT_EQ(vexor::SetOptionInText(windows, "AutoRunCfg/HWP", "true").content,
            "\xEF\xBB\xBF<VEXOR>\r\n  <Version>3.21.522.0</Version>\r\n  <TEST_CONTROL_CFG>\r\n"
            "    <AutoRunCfg>\r\n      <HWP>true</HWP>\r\n    </AutoRunCfg>\r\n"
            "  </TEST_CONTROL_CFG>\r\n</VEXOR>");
  const std::string latin =
      "<?xml version=\"1.0\" encoding=\"windows-1252\"?><VEXOR><Version>3.21.522.0</Version>"
      "<GLOBALPM><CORE><CSTATES><KNOBS>\xE9</KNOBS></CSTATES></CORE></GLOBALPM></VEXOR>";
  const EditedText edited = vexor::SetOptionInText(latin, "CSTATES/KNOBS", "\xC3\xA9");
  EXPECT_NE(edited.content.find("<KNOBS>&#xE9;</KNOBS>"), std::string::npos) << edited.content;
  // A test with arguments.
  const std::string mesh = Document(
      "<GLOBALPM><UNCORE><MESH-GV><arg name='-switchTime' randVal=\"1\" /></MESH-GV></UNCORE>"
      "</GLOBALPM>");
  EXPECT_NE(vexor::SetOptionInText(mesh, "MESH-GV/-switchTime", "sec:1")
                .content.find("<arg name='-switchTime' randVal=\"1\" val=\"sec:1\" />"),
            std::string::npos);
}

// Options of a new section are empty unless the file has them, so their defaults are written, too.
TEST(SetOptionInText, ANewSectionKeepsItsDefaults) {
  const std::string before = Document("");
  const EditedText edited = vexor::SetOptionInText(before, "CSTATES/ActiveTime", "sec:3");
  ASSERT_EQ(edited.error, "");
  const vexor::Description old_values = vexor::DescribeXMLConfigText(before);
  const vexor::Description new_values = vexor::DescribeXMLConfigText(edited.content);
  ASSERT_EQ(old_values.settings.size(), new_values.settings.size());
  for (std::size_t i = 0; i < old_values.settings.size(); ++i) {
    const vexor::Setting& setting = new_values.settings[i];
    const bool is_set = setting.path == "GLOBALPM/CORE/CSTATES/ActiveTime";
    EXPECT_EQ(setting.value, is_set ? "sec:3" : old_values.settings[i].value) << setting.path;
  }
}

TEST(SetOptionInText, RefusesWithAReason) {
  const std::string traces = Document(
      Wrapped("TEST_CONTROL_CFG", Wrapped("TestTraceCfg", "<Name>CSTATES_Core_Con:10</Name>")));
  struct {
    std::string content, path, value, error;
  } const kRows[] = {
      {Lab(""), "CSTATES/ActivTime", "sec:1", "did you mean \"ActiveTime\"?"},
      {Lab(""), "ActiveTime", "sec:1", "more than one path ends so: GLOBALPM/CORE/CSTATES/"},
      {Lab(""), "CSTATES/ActiveTime", "sec1", "did you mean \"sec:1\"?"},
      {Lab(""), "CSTATES/ActiveTime[1]", "sec:1", "not an entry of a list"},
      {Lab(""), "CORE//CSTATES", "sec:1", "not a path"},
      {Lab(""), "LoopTracker", "1", "never read"},
      {Lab(""), "GLOBALPM/CORE", "1", "holds elements"},
      {Lab(""), "TEST_CONTROL_CFG/SETTING/LoopNum", "1",
       "expected TEST_CONTROL_CFG/WorkloadCfg/LoopNum"},
      {Lab(""), "CSTATES/KNOBS", "a\x01", "XML forbids"},
      {Lab("<KNOBS>a & b</KNOBS>"), "CSTATES/KNOBS", "x", "bare &, expected &amp;"},
      {traces, "TestTraceCfg/Name", "CSTATES_Core_Con:20", "Name[1] to "},
      {traces, "TestTraceCfg/Name[3]", "CSTATES_Core_Con:20", "a list of 1 entry"},
      {traces, "TestTraceCfg/Name[2]", "CSTATES", "malformed trace entry"},
      {traces, "TestTraceCfg/Name[1]", "", "remove the entry instead"},
      {"<VEXOR>", "CSTATES/KNOBS", "x", "does not close"},
      {Document(Wrapped("TEST_CONTROL_CFG",
                        Wrapped("AutoRunCfg", "<PCIe-Link-DState>true</PCIe-Link-DState>"))),
       "AutoRunCfg/Dx-States", "false", "migrate the file first"},
  };
  for (const auto& row : kRows) {
    const EditedText edited = vexor::SetOptionInText(row.content, row.path, row.value);
    EXPECT_NE(edited.error.find(row.error), std::string::npos) << row.path << ": " << edited.error;
    EXPECT_EQ(edited.content, row.content);
  }
  EXPECT_EQ(vexor::SetOptionInText(traces, "TestTraceCfg/Name[2]", "CSTATES_Core_Con:20").error,
            "");
  EXPECT_EQ(vexor::SetOptionInText(Lab(""), "CSTATES/ActiveTime", "sec1", {.force = true}).error,
            "");
}

TEST(UnsetOptionInText, RemovesLines) {
  const std::string two = "\n\t<ActiveTime>sec:1</ActiveTime>\n\t<ActiveTime>sec:2</ActiveTime>\n";
  EXPECT_EQ(vexor::UnsetOptionInText(Lab(two), "CSTATES/ActiveTime").content, Lab("\n"));
  EXPECT_EQ(vexor::UnsetOptionInText(Lab("<KNOBS/><TestMode/>"), "CSTATES/KNOBS").content,
            Lab("<TestMode/>"));
  EXPECT_TRUE(vexor::UnsetOptionInText(Lab(""), "CSTATES/KNOBS").changes.empty());
  const std::string commented = Lab("<!-- why -->");
  EXPECT_NE(vexor::UnsetOptionInText(commented, "CORE/CSTATES").error, "");
  EXPECT_EQ(
      vexor::UnsetOptionInText(commented, "CORE/CSTATES", {.force = true}).content.find("CSTATES"),
      std::string::npos);
}

TEST(FixText, MendsWhatIsSure) {
  struct {
    const char* rule;
    std::string before, after;
  } const kRows[] = {
      {"names, in both tags", "<ActivTime>sec:1</ActivTime >", "<ActiveTime>sec:1</ActiveTime >"},
      {"words", "<ActiveTime> mesc:80</ActiveTime>", "<ActiveTime> msec:80</ActiveTime>"},
      {"separators", "<ExeCstates>C1,C6</ExeCstates>", "<ExeCstates>C1;C6</ExeCstates>"},
      {"two on one line, one of them bare", "<KNOBS>a & b & c</KNOBS><ActivTime>sec1</ActivTime>",
       "<KNOBS>a &amp; b &amp; c</KNOBS><ActiveTime>sec:1</ActiveTime>"},
      {"not into a second element of the name", "<KNOBS/><KNOBZ/>", "<KNOBS/><KNOBZ/>"},
      {"not what is unlike anything", "<Wholly>1</Wholly>", "<Wholly>1</Wholly>"},
  };
  for (const auto& row : kRows) {
    const EditedText fixed = vexor::FixText(Lab(row.before));
    EXPECT_EQ(fixed.content, Lab(row.after)) << row.rule;
    EXPECT_EQ(fixed.changes.empty(), row.before == row.after) << row.rule;
  }
  // Into an element that exists.
  const std::string misplaced = Lab("<KNOBS/>\n<SleepStates>S4</SleepStates>");
  EXPECT_EQ(vexor::FixText(misplaced).content, misplaced);
  std::string with_home = misplaced;
  with_home.insert(with_home.find("\t</GLOBALPM>"),
                   "\t\t<SYSTEM>\n\t\t\t<GSTATES/>\n\t\t</SYSTEM>\n");
  EXPECT_NE(vexor::FixText(with_home).content.find(
                "<GSTATES>\n\t\t\t\t<SleepStates>S4</SleepStates>\n\t\t\t</GSTATES>"),
            std::string::npos)
      << vexor::FixText(with_home).content;
  EXPECT_EQ(vexor::FixText(
                Document(Wrapped("TEST_CONTROL_CFG", Wrapped("AutoRunCfg", "<HWP> True </HWP>"))))
                .content,
            Document(Wrapped("TEST_CONTROL_CFG", Wrapped("AutoRunCfg", "<HWP>true</HWP>"))));
}

TEST(MigrateText, RenewsNamesAndFormsAlone) {
  const std::string old_version = "3.18.400.0";
  const auto migrated = [&](const std::string& control) {
    const EditedText edited =
        vexor::MigrateText(Document(Wrapped("TEST_CONTROL_CFG", control), old_version));
    EXPECT_EQ(edited.error, "");
    return edited.content;
  };
  struct {
    const char* rule;
    std::string before, after;
  } const kRows[] = {
      {"sections and comments", "<SETTING><!-- a --><LoopNum>5</LoopNum></SETTING>",
       "<WorkloadCfg><!-- a --><LoopNum>5</LoopNum></WorkloadCfg>"},
      {"a switch of two tests",
       "<AutoRunCfg><PCIe-Link-DState>true</PCIe-Link-DState></AutoRunCfg>",
       "<AutoRunCfg><PCIe-Link>true</PCIe-Link><Dx-States>true</Dx-States></AutoRunCfg>"},
      {"an older switch beside the current one",
       "<AutoRunCfg><GT-RC6>true</GT-RC6><iGFX-RC6>false</iGFX-RC6></AutoRunCfg>",
       "<AutoRunCfg><iGFX-RC6>true</iGFX-RC6></AutoRunCfg>"},
      {"trace entries",
       "<TestTraceCfg><Name>CSTATES_Core_0</Name><N>PCIe-Link-DState_Device_Con</N></TestTraceCfg>",
       "<TestTraceCfg><Name>CSTATES_Core_Con</Name><N>PCIe-Link_Device_Con</N>"
       "<N>Dx-States_Device_Con</N></TestTraceCfg>"},
      {"not what is without effect", "<WorkloadCfg/><SETTING><LoopNum>5</LoopNum></SETTING>",
       "<WorkloadCfg/><SETTING><LoopNum>5</LoopNum></SETTING>"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(migrated(row.before), Document(Wrapped("TEST_CONTROL_CFG", row.after))) << row.rule;
  }
}

// Every path that the library lists can be read and set in a record.
TEST(RecordOptions, AllPathsHaveAHome) {
  const auto cfg = std::make_unique<_XML_FULL_CFG>();
  ResetVexorXmlConfiguration(*cfg);
  for (vexor::Setting& setting :
       vexor::DescribeXMLConfigText(vexor::FormatXMLConfig(*cfg)).settings) {
    if (setting.path.starts_with("WORKLOADS/")) continue;
    SCOPED_TRACE(setting.path);
    const std::string text = setting.value == "false" ? "true" : setting.value + "x";
    EXPECT_TRUE(vexor::SetOption(*cfg, setting.path, text));
    const auto read = vexor::GetOption(*cfg, setting.path);
    EXPECT_TRUE(read == text || read == "true" || read == "false") << read.value_or("nothing");
  }
  EXPECT_EQ(cfg->GlobalPM.CSTATES.ActiveTime.back(), 'x');
  EXPECT_TRUE(vexor::SetOption(*cfg, "MSR_CFG/MSR[1]/Address", "0x10"));
  EXPECT_EQ(cfg->GlobalConfig.CustomConfiguration.MSR_CFG.front().Address, "0x10");
  EXPECT_TRUE(vexor::SetOption(*cfg, "TestTraceCfg/Name[1]", "CSTATES_Core_Con:1"));
  EXPECT_EQ(cfg->TestControl.TestTraceCfg.size(), 1U);
  for (const char* const path : {"Nothing", "TestTraceCfg/Name[3]", "MSR_CFG/MSR[3]/Address",
                                 "WORKLOADS/CopyCompare/Cycle", "GLOBALPM/CORE", "ActiveTime"}) {
    EXPECT_FALSE(vexor::SetOption(*cfg, path, "1")) << path;
    EXPECT_EQ(vexor::GetOption(*cfg, path), std::nullopt) << path;
  }
}

TEST(ReadXMLConfigText, ReadsLikeTheFile) {
  const auto cfg = std::make_unique<_XML_FULL_CFG>();
  EXPECT_EQ(vexor::ReadXMLConfigText(Lab("<ActiveTime>sec:3</ActiveTime>"), *cfg), "");
  EXPECT_EQ(cfg->GlobalPM.CSTATES.ActiveTime, "sec:3");
  EXPECT_NE(vexor::ReadXMLConfigText("<VEXOR><a></VEXOR>", *cfg).find("line 1: "),
            std::string::npos);
  EXPECT_NE(vexor::ReadXMLConfigText("<OTHER/>", *cfg), "");
}

// What each finding is about, to the byte.
TEST(FindingPlaces, AreThoseOfTheFaultyParts) {
  struct {
    const char* rule;
    std::string content, part;
    int column;
  } const kRows[] = {
      {"a text", Lab("\n\xC3\xA9<ActiveTime> msec8\n</ActiveTime>"), "msec8", 15},
      {"a name", Lab("\n <ActivTime>sec:1</ActivTime>"), "ActivTime", 3},
      {"an attribute", Lab("\n<ActiveTime  a='1>'>sec:1</ActiveTime>"), "a='1>'", 14},
      {"a text between elements", Lab("\n  stray\n"), "stray", 3},
      {"an argument",
       Document("<GLOBALPM><UNCORE><MESH-GV>\n<arg name='-switchTime' val='x'/></MESH-GV>"
                "</UNCORE></GLOBALPM>"),
       "x", 30},
      {"a bare character", Lab("\n<KNOBS>a &b</KNOBS>"), "&", 10},
      {"behind a bare character", Lab("&\n<ActiveTime>8m</ActiveTime>"), "8m", 13},
      {"the place where the XML breaks", "<VEXOR>\n <A></B></VEXOR>", "", 9},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.rule);
    bool is_found = false;
    for (const vexor::Finding& finding : vexor::CheckXMLConfigText(row.content)) {
      const std::string part = row.content.substr(finding.at, finding.size);
      is_found =
          is_found || (finding.column == row.column && (part == row.part || row.part.empty()));
    }
    EXPECT_TRUE(is_found);
  }
}

}  // namespace
