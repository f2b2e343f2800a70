#include <gtest/gtest.h>

#include <algorithm>

#include "config/config_files.h"
#include "vexor/config/check.h"

namespace {

using vexor::Finding;
using vexor::Mend;

std::string Pm(const std::string& group, const std::string& content) {
  return Document(Wrapped("GLOBALPM", Wrapped(group, content)));
}

std::string Cstates(const std::string& content) { return Pm("CORE", Wrapped("CSTATES", content)); }

std::string Arguments(const std::string& content) {
  return Pm("UNCORE", Wrapped("MESH-GV", content));
}

std::string Control(const std::string& content) {
  return Document(Wrapped("TEST_CONTROL_CFG", content));
}

std::string Traces(const std::string& entry) {
  return Control(Wrapped("TestTraceCfg", Wrapped("Name", entry)));
}

std::string System(const std::string& content) {
  return Document(
      Wrapped("GLOBALCONFIGURATION",
              Wrapped("SysConfiguration", Wrapped("CORE", Wrapped("CONFIG", content)))));
}

std::string Switch(const std::string& text) {
  return Control(Wrapped("AutoRunCfg", Wrapped("HWP", text)));
}

struct CodeRow {
  std::string code;
  std::string title;
  std::string document;  // one that has a finding of this code
  Mend mend = Mend::kNone;
  std::string repair = {};  // the suggestion, or where the element belongs
};

// Users write codes into files and scripts: a row may be added, and none may change its meaning.
std::vector<CodeRow> Rows() {
  using std::literals::string_literals::operator""s;
  return {
      {"VX001", "file cannot be read", ""},
      {"VX002", "file larger than the limit", ""},
      {"VX003", "not a configuration file", "{}"},
      {"VX004", "not well-formed XML", "<VEXOR>"},
      {"VX005", "XML beyond a limit", ""},
      {"VX006", "rest of the file not read", Document("") + "</a>"},
      {"VX007", "XML that is dropped", Document("&#0;")},
      {"VX008", "unescaped character", Cstates("<KNOBS>a&b</KNOBS>"), Mend::kXml, "&amp;"},
      {"VX009", "unknown entity", Document("&copy;")},
      {"VX010", "character that XML forbids", Document("&#1;")},
      {"VX011", "wrong encoding", Document("\xE9")},
      {"VX012", "XML that other programs refuse", Document("<!-- a -- b -->")},
      {"VX013", "no root element", "<!-- -->"},
      {"VX014", "wrong root element", "<Vexor/>", Mend::kName, "VEXOR"},
      {"VX015", "element beside the root", Document("") + "<a/>"},
      {"VX016", "no version", "<VEXOR/>"},
      {"VX017", "incompatible version", Document("", "4.0.0.0")},
      {"VX018", "another version", Document("", "3.18.400.0"), Mend::kText, "3.21.522.0"},
      {"VX019", "unknown element", Cstates("<activetime/>"), Mend::kName, "ActiveTime"},
      {"VX020", "misplaced element", Pm("CORE", "<PECI>true</PECI>"), Mend::kMove,
       "TEST_CONTROL_CFG/AutoRunCfg"},
      {"VX021", "repeated element", Cstates("<KNOBS/><KNOBS/>")},
      {"VX022", "older name", Pm("GT", "<GT-RC6/>"), Mend::kName, "iGFX-RC6"},
      {"VX023", "older name without effect", Pm("GT", "<GT-RC6/><iGFX-RC6/>")},
      {"VX024", "option that is never read",
       Pm("CORE", "<FACT><ConfigState>1</ConfigState></FACT>")},
      {"VX025", "attribute that is not read", Cstates("<KNOBS a='1'/>")},
      {"VX026", "stray text", Cstates("a")},
      {"VX027", "element in an option", Cstates("<KNOBS><a/></KNOBS>")},
      {"VX028", "divided text", Cstates("<KNOBS><!-- a -->b</KNOBS>")},
      {"VX029", "not an argument", Arguments("<a/>")},
      {"VX030", "argument without a name", Arguments("<arg/>")},
      {"VX031", "unknown argument", Arguments("<arg name='-exeCycle' val='1'/>"), Mend::kName,
       "-exeCycles"},
      {"VX032", "argument without a value", Arguments("<arg name='-exeCycles' randVal='1'/>")},
      {"VX033", "test without options", Switch("true")},
      {"VX034", "absent options", Cstates("")},
      {"VX035", "test without times",
       Document("<TEST_CONTROL_CFG><AutoRunCfg><HWP>true</HWP></AutoRunCfg></TEST_CONTROL_CFG>"
                "<GLOBALPM><CORE><HWP/></CORE></GLOBALPM>")},
      {"VX036", "version without four pieces",
       Document("<TEST_CONTROL_CFG><TestTraceCfg/></TEST_CONTROL_CFG>", "3.21")},
      {"VX037", "malformed trace entry", Traces("CSTATES")},
      {"VX038", "older trace entry",
       Document("<TEST_CONTROL_CFG><TestTraceCfg><Name>CSTATES_Core_0</Name></TestTraceCfg>"
                "</TEST_CONTROL_CFG>",
                "3.18.400.0"),
       Mend::kText, "CSTATES_Core_Con"},
      {"VX039", "trace entry of an unknown test", Traces("CSTATESS_Core_Con:10"), Mend::kText,
       "CSTATES_Core_Con:10"},
      {"VX040", "malformed setting", System("<ITEM>0, Turbo, Enable</ITEM>"), Mend::kText,
       "0; Turbo; Enable"},
      {"VX041", "unknown socket", System("<ITEM>O; Turbo; Enable</ITEM>")},
      {"VX042", "unknown setting", System("<ITEM>0; Trubo; Enable</ITEM>"), Mend::kText,
       "0; Turbo; Enable"},
      {"VX043", "setting of another list", System("<ITEM>0; PCxLimit; 8</ITEM>")},
      {"VX044", "older name of a setting",
       Document("<GLOBALCONFIGURATION><SysConfiguration><SYSTEM><GSTATES>"
                "<GlobalReset0_Check>0</GlobalReset0_Check></GSTATES></SYSTEM>"
                "</SysConfiguration></GLOBALCONFIGURATION>"),
       Mend::kName, "Stop_on_GlobalReset0_Mask"},
      {"VX045", "unknown value of a setting", System("<ITEM>0; Turbo; Enabel</ITEM>"), Mend::kText,
       "0; Turbo; Enable"},
      {"VX046", "invalid text", Cstates("<ActiveTime>msec80</ActiveTime>"), Mend::kText, "msec:80"},
      {"VX047", "unknown word", Cstates("<Log_Level>debug</Log_Level>"), Mend::kText, "Debug"},
      {"VX048", "number out of range", Cstates("<ExeCycles>99999999999999999999</ExeCycles>")},
      {"VX049", "reversed range", Cstates("<ActiveTime>msec:9-8</ActiveTime>"), Mend::kText,
       "msec:8-9"},
      {"VX050", "surplus text", Cstates("<CoreAffinity>BigCoresToo</CoreAffinity>"), Mend::kText,
       "BigCores"},
      {"VX051", "wrong separator", Cstates("<ExeCstates>C1,C6</ExeCstates>"), Mend::kText, "C1;C6"},
      {"VX052", "reads as false", Switch("True"), Mend::kText, "true"},
      {"VX053", "another way to write false", Switch("False"), Mend::kText, "false"},
      {"VX054", "list without Specific:", Cstates("<PkgAffinity>0,1</PkgAffinity>"), Mend::kText,
       "Specific:0,1"},
      {"VX055", "unknown knob", Cstates("<KNOBS>Randm</KNOBS>"), Mend::kText, "Random"},
      {"VX056", "wrong allow comment", Document("<!-- vexorcfg: allow VX999 -->")},
      {"VX057", "allow comment without effect", Document("<!-- vexorcfg: allow VX019 -->")},
      {"VX058", "text that means nothing", Cstates("<ExeCycles>min:0</ExeCycles>")},
      {"VX059", "item that stands twice", Cstates("<KNOBS>Random;ExitOnFail;Random</KNOBS>"),
       Mend::kText, "Random;ExitOnFail"},
      {"VX060", "item without effect", Cstates("<FailTolerance>C1:5;3</FailTolerance>")},
      {"VX061", "one of several", Cstates("<IceState>D0;D3</IceState>")},
  };
}

std::vector<Finding> FindingsOf(const CodeRow& row) {
  if (row.code == "VX001") return vexor::CheckXMLConfig("no/such/file.xml");
  if (row.code == "VX002") return vexor::CheckXMLConfigText("<VEXOR/>", {.most_bytes = 1});
  if (row.code != "VX005") return vexor::CheckXMLConfigText(row.document);
  std::string references;
  for (int i = 0; i < 257; ++i) references += "&#1";
  return vexor::CheckXMLConfigText(Document(references));
}

TEST(FindingCodes, KeepTheirMeaning) {
  const std::vector<CodeRow> rows = Rows();
  const std::vector<vexor::FindingCode> codes = vexor::GetFindingCodes();
  ASSERT_EQ(codes.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(codes[i].code, rows[i].code);
    EXPECT_EQ(codes[i].title, rows[i].title) << rows[i].code;
    EXPECT_TRUE(codes[i].about.ends_with('.')) << rows[i].code;
    const std::vector<Finding> findings = FindingsOf(rows[i]);
    const auto found = std::ranges::find(findings, rows[i].code, &Finding::code);
    ASSERT_NE(found, findings.end()) << rows[i].code;
    EXPECT_EQ(found->severity,
              codes[i].code == "VX055" ? vexor::Severity::kWarning : codes[i].severity);
    EXPECT_EQ(found->mend, rows[i].mend) << rows[i].code;
    EXPECT_EQ(found->suggestion + found->belongs_in, rows[i].repair) << rows[i].code;
  }
}

// The codes and lines of the findings, those that are allowed in brackets.
std::string Codes(const std::string& document) {
  std::string codes;
  for (const Finding& finding : vexor::CheckXMLConfigText(document, {.with_allowed = true})) {
    if (finding.code == "VX034") continue;
    const std::string code =
        std::string(finding.code.substr(2)) + ":" + std::to_string(finding.line);
    codes += (codes.empty() ? "" : " ") + (finding.is_allowed ? "(" + code + ")" : code);
  }
  return codes;
}

TEST(FindingCodes, CommentsAllowFindingsInTheElementThatFollows) {
  const std::string allow = "<!-- vexorcfg: allow VX019 -->";
  const std::string cstates = "<GLOBALPM><CORE>\n<CSTATES>\n<A/></CSTATES>\n";
  const std::string rest = "<HWP>\n<B/></HWP></CORE></GLOBALPM>";
  const std::pair<std::string, std::string> cases[] = {
      {Document(cstates + rest), "019:3 019:5"},
      {Document(cstates + allow + rest), "019:3 (019:5)"},
      {Document("<GLOBALPM>" + allow + cstates.substr(10) + rest), "(019:3) (019:5)"},
      {Document("\n<LoopTracker>x" + allow + "</LoopTracker>" + cstates + rest),
       "046:2 057:2 019:4 019:6"},
      {allow + Document(cstates + rest), "(019:3) (019:5)"},
      {"<VEXOR> <!-- a -->" + allow + Document(cstates + rest).substr(7), "(019:3) (019:5)"},
      {Document(allow + cstates + rest), "(019:3) (019:5)"},
      {Document(cstates + rest + allow), "019:3 019:5 057:5"},
      {Document(cstates + rest) + allow, "019:3 019:5 057:5"},
      {Document("\n<!--vexorcfg:allow vx019,VX054\n, VX046-->" + cstates + rest),
       "057:2 057:2 (019:5) (019:7)"},
      {Document("\n<!-- vexorcfg: allow VX057 -->" + cstates + allow + "<HWP/></CORE></GLOBALPM>"),
       "019:4 (057:5)"},
      {Document("\n<!-- vexorcfg: alow VX019 --><A/><!--vexorcfg: allow--><!-- allow VX019 -->"),
       "019:2 056:2 056:2"},
      {Document("\n<!-- vexorcfg: allow VX004 -->"), "056:2"},
      {"<!-- vexorcfg: allow VX004 VX016 VX018 --><VEXOR>", "004:1"},
      {"<!-- vexorcfg: allow VX006, VX016 -->\n<VEXOR/></a>", "056:1 006:2 (016:2)"},
      // Faults in the text of the file are known by line.
      {Document("<A/>\n<!-- vexorcfg: allow VX008 -->\n<LoopTracker>\n\n&</LoopTracker>\n<A/>&"),
       "019:1 (008:5) 046:5 008:6 026:6 019:6"},
  };
  for (const auto& [document, codes] : cases) EXPECT_EQ(Codes(document), codes) << document;
}

// What is wrong with these is not certain, so that no program may repair them.
TEST(FindingCodes, MendOnlyWhatIsSure) {
  const std::pair<std::string, std::string> cases[] = {
      {Cstates("<ExeStates>D0</ExeStates>"), "VX020"},          // misplaced, or ExeCstates
      {Pm("CORE", "<ActiveTime>sec:1</ActiveTime>"), "VX020"},  // may stand in several tests
      {Document("<SYSTEM><KNOBS/></SYSTEM>"), "VX020"},         // the same
      {Pm("Device", "<PCIe-Link-DState/>"), "VX022"},           // two current names
      {Pm("CORE", "<XSTATES/>"), "VX019"},                      // near several names
  };
  for (const auto& [document, code] : cases) {
    const std::vector<Finding> findings = vexor::CheckXMLConfigText(document);
    const auto found = std::ranges::find(findings, code, &Finding::code);
    ASSERT_NE(found, findings.end()) << document;
    EXPECT_EQ(found->mend, Mend::kNone) << document;
  }
}

}  // namespace
