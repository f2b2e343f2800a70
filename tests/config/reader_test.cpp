#include "vexor/config/reader.h"

#include <gtest/gtest.h>

#include <thread>

#include "config/config_files.h"

namespace {

constexpr char kOwn[] = "3.21.522.0";

// Sections with one marked option each, to see which of them were read.
constexpr char kSections[] =
    "<GLOBALCONFIGURATION><SystemSetup><SETTING><TopoMode>X</TopoMode></SETTING></SystemSetup>"
    "</GLOBALCONFIGURATION>"
    "<TEST_CONTROL_CFG><WorkloadCfg><ExeMode>X</ExeMode></WorkloadCfg></TEST_CONTROL_CFG>"
    "<GLOBALPM><CORE><SDC><DutyCycles>X</DutyCycles></SDC></CORE></GLOBALPM>";

TEST(ReadXMLPar, ChecksTheVersion) {
  const std::string strict_suffix =
      " version does not match with Vexor Version 3.21.522.0 EC_CONFIG\n";
  struct Case {
    const char* version;
    bool compatible;
    bool exact;
  };
  const Case cases[] = {
      {"3.21.522.0", true, true},    {" \r\n\t3.21.522.0\n ", true, true},
      {"3.18.100.0", true, false},   {"3.21.522.0_debug", true, false},
      {"3.21.522.0_", true, false},  {"3..21.522.0", true, false},
      {"3.21.522.0.7", true, false}, {"3.21.522.00", false, false},
      {"3.21.522.1", false, false},  {"4.21.522.0", false, false},
      {"3.21.522", false, false},    {"03.21.522.0", false, false},
      {"3.21.522.0x", false, false}, {"", false, false},
  };
  for (const Case& c : cases) {
    const std::string document = Document(kSections, c.version);
    const std::string trimmed = ReadDocument(document).GlobalConfig.Version;
    for (const bool verify : {false, true}) {
      for (const bool strict : {false, true}) {
        SCOPED_TRACE(testing::Message() << c.version << " " << verify << strict);
        _XML_FULL_CFG cfg;
        ResetVexorXmlConfiguration(cfg);
        const ReadResult result = ReadInto(cfg, document, verify, strict);
        const bool invalid = verify && !c.compatible;
        const bool refused = !invalid && strict && !c.exact;
        EXPECT_EQ(result.read, !invalid && !refused);
        EXPECT_EQ(result.output, invalid   ? "Invalid XML Version: " + trimmed + "\n"
                                 : refused ? "Error: XML file " + trimmed + strict_suffix
                                           : "");
        EXPECT_EQ(cfg.GlobalConfig.VersionMatch, !invalid && !refused);
        EXPECT_EQ(cfg.GlobalConfig.Version, trimmed);
        EXPECT_EQ(cfg.GlobalConfig.LoopTracker, 1u);
        EXPECT_EQ(cfg.GlobalConfig.TopoMode, invalid ? "OS" : "X");
        EXPECT_EQ(cfg.TestControl.ExeMode, result.read ? "X" : "CM");
        EXPECT_EQ(cfg.GlobalPM.SDC.DutyCycles, result.read ? "X" : "");
      }
    }
  }
}

TEST(ReadXMLPar, RemembersAFailedStrictCheckUntilAReadSucceeds) {
  _XML_FULL_CFG cfg;
  EXPECT_FALSE(ReadInto(cfg, Document("", "3.20.0.0"), false, true).read);
  EXPECT_FALSE(ReadInto(cfg, Document("", kOwn), false, true).read);
  EXPECT_TRUE(ReadInto(cfg, Document("", kOwn), false, false).read);
  EXPECT_TRUE(ReadInto(cfg, Document("", kOwn), false, true).read);
}

TEST(ReadXMLPar, ReportsFilesThatAreNotConfigurations) {
  struct Case {
    std::string content;
    const char* output;
  };
  std::string attributes;
  for (int i = 0; i < 200000; ++i) attributes += " a" + std::to_string(i) + "=''";
  const Case cases[] = {
      {"<VEXOR><a" + attributes + "/></VEXOR>", "XML parse error! ID: 5\n"},
      {"", "XML parse error! ID: 13\n"},
      {"\n \n", "XML parse error! ID: 13\n"},
      {"text", "XML parse error! ID: 8\n"},
      {"<VEXOR>", "XML parse error! ID: 14\n"},
      {"<VEXOR></vexor>", "XML parse error! ID: 14\n"},
      {"<VEXOR a=></VEXOR>", "XML parse error! ID: 7\n"},
      {"<VEXOR><!-- </VEXOR>", "XML parse error! ID: 10\n"},
      {"<vexor></vexor>", "XML parse error! ID: 0\n"},
      {"<A><VEXOR/></A>", "XML parse error! ID: 0\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.content);
    _XML_FULL_CFG cfg;
    ResetVexorXmlConfiguration(cfg);
    cfg.TestControl.ExeMode = "kept";
    const ReadResult result = ReadInto(cfg, c.content);
    EXPECT_FALSE(result.read);
    EXPECT_EQ(result.output, c.output);
    EXPECT_EQ(cfg.GlobalConfig.LoopTracker, 0u);
    EXPECT_EQ(cfg.TestControl.ExeMode, "kept");
  }
}

TEST(ReadXMLPar, ReportsPathsThatCannotBeRead) {
  const TemporaryFolder folder;
  VexorConfigParser parser;
  _XML_FULL_CFG cfg;
  for (const std::string& path : {folder / "missing.xml", folder.path(), std::string()}) {
    testing::internal::CaptureStdout();
    EXPECT_FALSE(parser.ReadXMLPar(path, &cfg, false, false));
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(output == "XML parse error! ID: 3\n" || output == "XML parse error! ID: 5\n")
        << path << ": " << output;
  }
  testing::internal::CaptureStdout();
  EXPECT_FALSE(parser.ReadXMLPar(folder / "missing.xml", nullptr, false, false));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(ReadXMLPar, FindsTheRootAmongOtherTopLevelNodes) {
  const _XML_FULL_CFG cfg =
      ReadDocument("<?xml version=\"1.0\"?>\n<!-- lab -->\n<Other/>" + Document(kSections) +
                   "<VEXOR><Version>9</Version></VEXOR>");
  EXPECT_EQ(cfg.GlobalConfig.Version, kOwn);
  EXPECT_EQ(cfg.GlobalPM.SDC.DutyCycles, "X");
}

TEST(ReadXMLPar, AnEmptyRootResetsOnlyTheTestControlRecord) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  cfg.GlobalConfig.TopoMode = "kept";
  cfg.GlobalPM.CSTATES.ActiveTime = "kept";
  cfg.TestControl.ExeMode = "goes";
  cfg.SelectionIndex = 7;
  EXPECT_TRUE(ReadInto(cfg, "<VEXOR/>").read);
  EXPECT_EQ(cfg.GlobalConfig.Version, "");
  EXPECT_TRUE(cfg.GlobalConfig.VersionMatch);
  EXPECT_EQ(cfg.GlobalConfig.TopoMode, "kept");
  EXPECT_EQ(cfg.GlobalPM.CSTATES.ActiveTime, "kept");
  EXPECT_EQ(cfg.TestControl.ExeMode, "CM");
  EXPECT_EQ(cfg.SelectionIndex, 7);
}

TEST(ReadXMLPar, ReadsTheFirstOfEqualSectionsAndIgnoresUnknownOnes) {
  const _XML_FULL_CFG cfg = ReadDocument(
      std::string("<VEXOR><Stranger/>") + kSections + "<Version>1</Version><Version>2</Version>" +
      "<TEST_CONTROL_CFG><WorkloadCfg><ExeMode>second</ExeMode></WorkloadCfg></TEST_CONTROL_CFG>" +
      "</VEXOR>");
  EXPECT_EQ(cfg.GlobalConfig.Version, "1");
  EXPECT_EQ(cfg.TestControl.ExeMode, "X");
}

TEST(ReadXMLPar, ReadsTwoRecordsConcurrently) {
  const TemporaryFolder folder;
  const std::string path = folder / "config.xml";
  WriteBytes(path, Document(kSections));
  const auto read = [&path](_XML_FULL_CFG& cfg) {
    for (int i = 0; i < 20; ++i) {
      ResetVexorXmlConfiguration(cfg);
      ASSERT_TRUE(VexorConfigParser().ReadXMLPar(path, &cfg, true, true));
    }
  };
  _XML_FULL_CFG first;
  _XML_FULL_CFG second;
  std::thread other([&] { read(second); });
  read(first);
  other.join();
  EXPECT_EQ(first.GlobalPM.SDC.DutyCycles, "X");
  EXPECT_EQ(second.GlobalPM.SDC.DutyCycles, "X");
}

// A search from the first child for each option would be quadratic, and the test would time out.
TEST(ReadXMLPar, TakesLinearTimeForUnknownElementsAndListItems) {
  std::string strangers;
  std::string items;
  for (int i = 0; i < 100000; ++i) {
    strangers += "<S" + std::to_string(i) + "/>";
    items += "<ITEM>" + std::to_string(i) + "</ITEM>";
  }
  const _XML_FULL_CFG cfg = ReadDocument(
      Wrapped("VEXOR", strangers + kSections + Wrapped("GLOBALPM", "") + "<TEST_CONTROL_CFG/>"));
  EXPECT_EQ(cfg.GlobalPM.SDC.DutyCycles, "X");
  const _XML_FULL_CFG lists = ReadDocument(Document(
      "<GLOBALCONFIGURATION><SysConfiguration><CORE>" + Wrapped("CONFIG", strangers + items) +
      "</CORE></SysConfiguration></GLOBALCONFIGURATION>" + "<GLOBALPM><CORE><SDC>" + strangers +
      "<DutyCycles>X</DutyCycles></SDC></CORE></GLOBALPM>"));
  ASSERT_EQ(lists.GlobalConfig.CORE_CONFIG.size(), 100000u);
  EXPECT_EQ(lists.GlobalConfig.CORE_CONFIG.back(), "99999");
  EXPECT_EQ(lists.GlobalPM.SDC.DutyCycles, "X");
}

}  // namespace
