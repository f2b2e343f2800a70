#include "vexor/config/check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>

#include "config/config_files.h"
#include "placeholders.h"
#include "source_dir.h"
#include "temporary_folder.h"
#include "vexor/config/describe.h"
#include "vexor/config/writer.h"
#include "vexor/util/random.h"

namespace {

using vexor::CheckXMLConfigText;
using vexor::Finding;
using vexor::Severity;
using Texts = std::vector<std::string>;

// A finding as a user reads it.
std::string Line(const Finding& finding) {
  constexpr const char* kNames[] = {"note", "warning", "error"};
  std::string line = std::to_string(finding.line) + ": " +
                     kNames[static_cast<std::size_t>(finding.severity)] + ": " + finding.path +
                     ": \"" + finding.text + "\": " + finding.what;
  if (!finding.expected.empty()) line += "; expected " + finding.expected;
  const bool has_suggestion = !finding.suggestion.empty() && finding.suggestion != finding.expected;
  if (has_suggestion) line += "; did you mean \"" + finding.suggestion + "\"?";
  return line;
}

Texts Lines(const std::vector<Finding>& findings, Severity least = Severity::kWarning) {
  Texts lines;
  for (const Finding& finding : findings) {
    if (finding.severity >= least) lines.push_back(Line(finding));
  }
  return lines;
}

struct Case {
  std::string document;
  Texts expected;
};

void ExpectFindings(std::span<const Case> cases, Severity least = Severity::kWarning) {
  for (const Case& row : cases) {
    const Texts lines = Lines(CheckXMLConfigText(row.document), least);
    EXPECT_EQ(lines, FilledIn(row.expected, lines)) << row.document;
  }
}

std::string Pm(const std::string& group, const std::string& content) {
  return Document(Wrapped("GLOBALPM", Wrapped(group, content)));
}

std::string Cstates(const std::string& content) { return Pm("CORE", Wrapped("CSTATES", content)); }

std::string Control(const std::string& content, const std::string& version = "3.21.522.0") {
  return Document(Wrapped("TEST_CONTROL_CFG", content), version);
}

std::string Global(const std::string& section, const std::string& content) {
  return Document(Wrapped("GLOBALCONFIGURATION", Wrapped(section, content)));
}

TEST(Check, ReportsWhyADocumentIsNotXml) {
  using std::literals::string_literals::operator""s;
  std::string too_deep;
  for (int i = 0; i < 1000; ++i) too_deep += "<VEXOR>";
  std::string attributes;
  for (int i = 0; i < 257; ++i) attributes += " a" + std::to_string(i) + "='<!--'";
  std::string references;
  for (int i = 0; i < 257; ++i) references += "&#1";
  const std::string file = "; expected a configuration in XML (UTF-8)";
  const std::string xml = "not well-formed XML: ";
  const Case cases[] = {
      {"", {"0: error: : \"\": the file is empty" + file}},
      {"\xEF\xBB\xBF \r\n", {"0: error: : \"\": the file contains only white space" + file}},
      {"\0\0\0"s,
       {"0: error: : \"\": the file holds only zero bytes, as after a power cut" + file}},
      {"\0\0\0<VEXOR/>"s, {"0: error: : \"\": the file begins with 3 zero bytes" + file}},
      {"\xFF\xFE<\0V\0"s, {"0: error: : \"\": the file is UTF-16 text (little-endian)" + file}},
      {"\xFE\xFF\0<\0V"s, {"0: error: : \"\": the file is UTF-16 text (big-endian)" + file}},
      {"<\0V\0/\0>\0"s,
       {"0: error: : \"\": the file is UTF-16 text (little-endian, without a byte-order mark)" +
        file}},
      {"\0<\0V\0/\0>"s,
       {"0: error: : \"\": the file is UTF-16 text (big-endian, without a byte-order mark)" +
        file}},
      {"\x01\x02", {"0: error: : \"\": the file is binary" + file}},
      {"PK\x03\x04<a/>", {"0: error: : \"\": the file is a ZIP archive" + file}},
      {R"({"VEXOR": "<a/>"})", {"0: error: : \"\": the file is JSON" + file}},
      {"[1, 2]", {"0: error: : \"\": the file is JSON" + file}},
      {"; lab\n[Test 1]\nActiveTime=1\n", {"0: error: : \"\": the file is an INI file" + file}},
      {"Active Time = 1", {"0: error: : \"\": the file is an INI file" + file}},
      {"Time,Level", {"0: error: : \"\": the file is text, but not XML" + file}},
      {"<VEXOR>\n<a>\n</VEXOR>",
       {"3: error: : \"\": " + xml +
        "</VEXOR> does not close <a>, opened on line 2; expected "
        "</a>"}},
      {"<VEXOR>\n<a>\n</a>\n",
       {"4: error: : \"\": " + xml +
        "the file ends and does not close <VEXOR>, opened on line 1; "
        "expected </VEXOR>"}},
      {"<VEXOR><a>\0</a></VEXOR>"s,
       {"1: error: : \"\": " + xml +
        "a zero byte ends the file and does not close <a>, opened on "
        "line 1; expected </a>"}},
      {"<VEXOR><a b=1/></VEXOR>",
       {"1: error: : \"\": " + xml +
        "the attribute b has a value without quotes; expected "
        "b=\"value\""}},
      {"<VEXOR><a b/></VEXOR>",
       {"1: error: : \"\": " + xml + "the attribute b has no value; expected b=\"value\""}},
      {"<VEXOR><a b='/></VEXOR>",
       {"1: error: : \"\": " + xml +
        "the attribute b has a value without its second quote; "
        "expected b=\"value\""}},
      {"<VEXOR><a b='1'\nb='2'/></VEXOR>",
       {"2: error: : \"\": " + xml + "the attribute b stands twice in <a>"}},
      {"<VEXOR><a", {"1: error: : \"\": " + xml + "the file ends within the tag <a; expected >"}},
      {"<VEXOR><a ?></VEXOR>",
       {"1: error: : \"\": " + xml +
        "\"?></VEXOR>\" in the tag <a; expected an attribute, > or "
        "/>"}},
      {"<VEXOR/>a", {"1: error: : \"\": " + xml + "text outside the root element: \"a\""}},
      {"<VEXOR><![CDATA[a</VEXOR>",
       {"1: error: : \"\": " + xml + "a CDATA section without an end; expected ]]>"}},
      {"<VEXOR><!-- a</VEXOR>",
       {"1: error: : \"\": " + xml + "a comment without an end; expected -->"}},
      {"<VEXOR><?a?></VEXOR>",
       {"1: error: : \"\": " + xml +
        "a processing instruction (<?...?>) that is not at the "
        "beginning of the file; expected it before all comments and elements"}},
      {"<VEXOR><!a", {"1: error: : \"\": " + xml + "markup without an end; expected >"}},
      {"<VEXOR>a < b</VEXOR>",
       {"1: error: : \"\": " + xml +
        "< that does not start a tag: \"< b</VEXOR>\"; expected &lt; for the "
        "character"}},
      {too_deep, {"1: error: : \"\": " + xml + "elements nested too deep"}},
      {"<VEXOR>\n<a" + attributes + "/></VEXOR>",
       {"2: error: : \"\": limit exceeded: an element with more than 256 attributes"}},
      {"<VEXOR>\n<a b='" + references + "'/></VEXOR>",
       {"2: error: : \"\": limit exceeded: more than 256 character references without an "
        "end"}},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(Lines(CheckXMLConfigText(row.document), Severity::kError), row.expected)
        << row.document;
    const vexor::Description description = vexor::DescribeXMLConfigText(row.document);
    std::string error = description.error;
    const std::size_t comma = error.find(", expected ");
    if (comma != std::string::npos) error[comma] = ';';
    EXPECT_EQ(std::to_string(description.error_line) + ": error: : \"\": " + error,
              row.expected[0]);
  }
}

// XML that the library reads and other programs reject.
TEST(Check, WarnsAboutXmlThatAStrictParserRejects) {
  using std::literals::string_literals::operator""s;
  const struct {
    std::string content;  // of the root, on line 2
    Texts expected;
  } cases[] = {
      {"<a>R&D &amp; &#65;&#x41;</a><b c='&'/>",
       {"\"&D &amp; &#65;&#x41;\": bare & expected &amp;"}},
      {"&copy;&#xFFFE;&#x110000;",
       {"\"&copy;\": unknown entity, read as is expected &lt;, &gt;, &amp;, &quot; or "
        "&apos;",
        "\"&#xFFFE;\": reference to a character that XML forbids expected "}},
      {"<!-- a -- b -->", {"\"<!-- a -- b -->\": -- in a comment expected "}},
      {"<!-- a --->", {"\"<!-- a --->\": -- in a comment expected "}},
      {"<a b='<'/>", {"\"<\": < in an attribute value expected &lt;"}},
      {"<a>]]></a>", {"\"]]>\": ]]> in a text expected ]]&gt;"}},
      {"<a b='1'c='2'/>", {"\"c\": no blank before an attribute expected "}},
      {"< a/>", {"\"< a/></VEXOR>\": blank before the name of an element expected "}},
      {"</a/>", {"\"</a>\": end tag that ends in />, read as an empty element expected "}},
      {"<\xC3\x97/><a \xC3\x97='1'/>",
       {"\"\xC3\x97\": invalid element name expected ",
        "\"\xC3\x97\": invalid attribute name expected "}},
      {"<!ELEMENT a>", {"\"<!ELEMENT a></VEXOR>\": unsupported markup expected "}},
      {"\x01\x7F", {"\"U+0001\": character that XML forbids expected "}},
      {"\xEF\xBF\xBF", {"\"U+FFFF\": character that XML forbids expected "}},
      {"caf\xE9\n\xE9", {"\"0xE9\": byte that is not UTF-8, the first of 2 expected UTF-8"}},
      {"caf\xC3\xA9 <\xC3\xA9/>", {}},
  };
  for (const auto& row : cases) {
    Texts found;
    for (const Finding& f : CheckXMLConfigText("<VEXOR>\n" + row.content + "</VEXOR>")) {
      if (f.what.find(", refused by other XML programs") == std::string::npos) continue;
      EXPECT_EQ(f.line, 2);
      EXPECT_EQ(f.severity, Severity::kWarning);
      found.push_back('"' + f.text + "\": " + f.what.substr(0, f.what.rfind(", refused")) +
                      " expected " + f.expected);
    }
    EXPECT_EQ(found, row.expected) << row.content;
  }
}

// The reader stops, or drops content, without an error.
TEST(Check, ReportsContentThatTheParserNeverReaches) {
  using std::literals::string_literals::operator""s;
  const std::string document = Document("<LoopTracker>1</LoopTracker>");
  const Case cases[] = {
      {document + "\n</VEXOR><VEXOR/>",
       {"2: error: : \"\": </VEXOR> closes no open element: the rest of the file is not read"}},
      {document + "\n\0<VEXOR/>"s,
       {"2: error: : \"\": a zero byte: the rest of the file is not read"}},
      {Cstates("<KNOBS>Random&#0;;ExitOnFail&#x200000;</KNOBS>"),
       {"1: error: : \"&#0;;ExitOnFail&#x200000;\": reference to a character that XML forbids, not "
        "read",
        "1: error: : \"&#x200000;\": reference to a character that XML forbids, not read"}},
      {Cstates("<KNOBS></KNOBS a='1' b='2'>"),
       {"1: error: : \"a='1'\": attribute in an end tag, not read",
        "1: error: : \"b='2'\": attribute in an end tag, not read"}},
  };
  ExpectFindings(cases);
}

TEST(Check, RejectsFilesAboveTheSizeLimit) {
  const TemporaryFolder folder;
  const std::string document = Document("");
  WriteBytes(folder / "a.xml", document);
  for (const std::size_t most : {document.size(), document.size() - 1}) {
    const vexor::CheckLimits limits{.most_bytes = most};
    const Texts expected =
        most < document.size()
            ? Texts{"0: error: : \"\": not checked: larger than " + std::to_string(most) + " bytes"}
            : Texts();
    EXPECT_EQ(Lines(CheckXMLConfigText(document, limits)), expected);
    EXPECT_EQ(Lines(vexor::CheckXMLConfig(folder / "a.xml", limits)), expected);
  }
}

TEST(Check, ReportsWrongRootsAndVersions) {
  const Case cases[] = {
      {"<!-- no more -->", {"0: error: : \"\": no element; expected the root VEXOR"}},
      {"<Vexor/>",
       {"1: error: Vexor: \"Vexor\": wrong root element, nothing is read; expected VEXOR"}},
      {"stray<a/>" + Document(""),
       {"1: error: : \"stray\": text outside the root element, not read",
        "1: warning: a: \"a\": not read beside the root; expected one element VEXOR"}},
      {"<VEXOR/>",
       {"1: error: Version: \"\": no version; expected an element Version with 3.21.522.0"}},
      {Document("", "3.18.400.0"),
       {"1: warning: Version: \"3.18.400.0\": another version, but compatible; expected "
        "3.21.522.0"}},
      {Document("", "4.21.522.0"),
       {"1: error: Version: \"4.21.522.0\": incompatible version, refused where versions are "
        "verified; expected 3.21.522.0"}},
      {Document("", " 3.21.522.0\n"), {}},
      {Document("", "<!-- 3.21.522.0 -->"),
       {"1: error: Version: \"\": incompatible version, refused where versions are verified; "
        "expected 3.21.522.0"}},
  };
  ExpectFindings(cases);
}

TEST(Check, ReportsElementsThatAreNotRead) {
  const Case cases[] = {
      {Document("<LoopTraker/>"),
       {"1: error: LoopTraker: \"LoopTraker\": unknown element, not read; did you mean "
        "\"LoopTracker\"?"}},
      {Cstates("<activetime>sec:1</activetime>"),
       {"1: error: GLOBALPM/CORE/CSTATES/activetime: \"activetime\": unknown element, not read; "
        "did you "
        "mean \"ActiveTime\"?"}},
      {Pm("CORE", "<XSTATES/>"),  // similar to three names: no suggestion
       {"1: error: GLOBALPM/CORE/XSTATES: \"XSTATES\": unknown element, not read"}},
      {Pm("CORE", "<PECI/>"),
       {"1: error: GLOBALPM/CORE/PECI: \"PECI\": misplaced element, not read; expected in "
        "GLOBALPM/SYSTEM"}},
      {Pm("CORE", "<PECI><KNOBS/></PECI>"),
       {"1: error: GLOBALPM/CORE/PECI: \"PECI\": misplaced element, not read; expected in "
        "GLOBALPM/SYSTEM"}},
      {Pm("CORE", "<PECI>true</PECI>"),
       {"1: error: GLOBALPM/CORE/PECI: \"PECI\": misplaced element, not read; expected in "
        "TEST_CONTROL_CFG/AutoRunCfg"}},
      {Document("<SYSTEM><KNOBS/></SYSTEM>"),
       {"1: error: SYSTEM: \"SYSTEM\": misplaced element, not read; expected in "
        "GLOBALPM "
        "or 1 other element"}},
      {Pm("CORE", "<ActiveTime>sec:1</ActiveTime>"),
       {"1: error: GLOBALPM/CORE/ActiveTime: \"ActiveTime\": misplaced element, not read; expected "
        "in GLOBALPM/CORE/CSTATES or 5 other elements"}},
      {Cstates("<ExeStates>D0</ExeStates>"),
       {"1: error: GLOBALPM/CORE/CSTATES/ExeStates: \"ExeStates\": misplaced element, not read; "
        "expected in GLOBALPM/ICE/Ice-Cstates; did you mean \"ExeCstates\"?"}},
      {Document("<GLOBALPM><Version>1</Version></GLOBALPM>"),
       {"1: error: GLOBALPM/Version: \"Version\": misplaced element, not read; expected in "
        "VEXOR"}},
      {Cstates("<ExeCycles>1</ExeCycles>\n<ExeCycles>2</ExeCycles>"),
       {"2: error: GLOBALPM/CORE/CSTATES/ExeCycles: \"2\": not read: the first element of this "
        "name, on "
        "line 1, counts"}},
      {Cstates("stray"),
       {"1: error: GLOBALPM/CORE/CSTATES: \"stray\": text between elements, not read"}},
      {Pm("CORE", "<CSTATES id='1'/>"),
       {"1: warning: GLOBALPM/CORE/CSTATES: \"id\": attribute, not read"}},
      {Pm("CORE", "<FACT><ConfigState>1</ConfigState><ConfigState/></FACT>"),
       {"1: warning: GLOBALPM/CORE/FACT/ConfigState[1]: \"1\": written by the library and never "
        "read"}},
      {Global("SysConfiguration", "<CORE><CONFIG><ITM>1</ITM></CONFIG></CORE>"),
       {"1: error: GLOBALCONFIGURATION/SysConfiguration/CORE/CONFIG/ITM: \"ITM\": unknown element, "
        "not read; did you "
        "mean \"ITEM\"?"}},
      {Global("SysConfiguration", "<SYSTEM><KNOBS>a<X y='1'>1<b/></X></KNOBS></SYSTEM>"),
       {"1: error: GLOBALCONFIGURATION/SysConfiguration/SYSTEM/KNOBS: \"a\": text between "
        "elements, not read",
        "1: warning: GLOBALCONFIGURATION/SysConfiguration/SYSTEM/KNOBS/X: \"y\": attribute, not "
        "read",
        "1: error: GLOBALCONFIGURATION/SysConfiguration/SYSTEM/KNOBS/X/b: \"b\": element in an "
        "option, not read; "
        "expected text"}},
      {Global("SysConfiguration",  // a word of the hint comment that no parser accepts
              "<SYSTEM><OS><Power_Scheme>Balance</Power_Scheme>\n"
              "<Battery_Simulation>ac</Battery_Simulation><Plan>Balance</Plan></OS></SYSTEM>"),
       {"1: error: GLOBALCONFIGURATION/SysConfiguration/SYSTEM/OS/Power_Scheme: \"Balance\": "
        "unknown power scheme, "
        "listed by mistake in the hint comment; expected <...>; did you mean \"Balanced\"?"}},
      {Global("CustomConfiguration", "<MSR_CFG><MSR/><MSR><Adress>1</Adress></MSR></MSR_CFG>"),
       {"1: error: GLOBALCONFIGURATION/CustomConfiguration/MSR_CFG/MSR[2]/Adress: \"Adress\": "
        "unknown element, not "
        "read; did you mean \"Address\"?"}},
      {Pm("Vpu", "<Vpu-DVFS>\n<SwitchTime/>\n<arg val='1'/>\n<arg name='Ratio'/></Vpu-DVFS>"),
       {"2: error: GLOBALPM/Vpu/Vpu-DVFS/SwitchTime: \"SwitchTime\": unknown element, not read; "
        "expected "
        "arg with the attributes name and val",
        "3: error: GLOBALPM/Vpu/Vpu-DVFS/arg: \"arg\": argument without a name, not read; expected "
        "the "
        "attribute name",
        "4: error: GLOBALPM/Vpu/Vpu-DVFS/Ratio: \"Ratio\": unknown argument, not read; did you "
        "mean "
        "\"Ratios\"?"}},
      {Pm("Vpu",
          "<Vpu-DVFS><arg name='KNOBS' Val='1'/>\n<arg name='TestMode' val='verify'/>\n"
          "<arg name='TestMode' val='Verify'/></Vpu-DVFS>"),
       {"1: warning: GLOBALPM/Vpu/Vpu-DVFS/KNOBS: \"Val\": attribute, not read",
        "1: warning: GLOBALPM/Vpu/Vpu-DVFS/KNOBS: \"\": reads as empty; expected the attribute val",
        "2: error: GLOBALPM/Vpu/Vpu-DVFS/TestMode: \"verify\": unknown test mode; expected "
        "<...>; did you mean \"Verify\"?",
        "3: error: GLOBALPM/Vpu/Vpu-DVFS/TestMode: \"arg\": not read: the first element of this "
        "name, on "
        "line 2, counts"}},
      {Pm("UNCORE", "<MESH-GV><arg name='-exeCycles' val='1'>2<b/></arg></MESH-GV>"),
       {"1: error: GLOBALPM/UNCORE/MESH-GV/-exeCycles: \"2\": text in an argument, not read; "
        "expected the "
        "value in the attribute val",
        "1: error: GLOBALPM/UNCORE/MESH-GV/-exeCycles: \"b\": element in an argument, not read; "
        "expected "
        "the "
        "value in the attribute val"}},
      {Pm("UNCORE", "<MESH-GV><arg name='-switchTime' randVal='1-2'/></MESH-GV>"),
       {"1: warning: GLOBALPM/UNCORE/MESH-GV/-switchTime: \"1-2\": reads as empty: randVal is "
        "never read; "
        "expected the attribute val"}},
  };
  ExpectFindings(cases);
}

TEST(Check, ReplacesAtMostFifteenWordsInASuggestion) {
  for (const bool mends : {true, false}) {
    const auto list = [mends](const std::string& word) {
      std::string words = word;
      for (int i = mends ? 15 : 16; i > 1; --i) words += ";" + word;
      return words;
    };
    const auto findings =
        CheckXMLConfigText(Pm("SYSTEM", Wrapped("GSTATES", Wrapped("WakeEvent", list("Externl")))));
    const auto fault = std::ranges::find(findings, Severity::kError, &Finding::severity);
    ASSERT_NE(fault, findings.end());
    EXPECT_EQ(fault->suggestion, mends ? list("External") : "");
  }
}

TEST(Check, ReportsInvalidTexts) {
  const std::string levels = "expected <...>";
  const auto checks = [](const std::string& words) {
    return Pm("SYSTEM", Wrapped("GSTATES", Wrapped("PrePostCheck", words)));
  };
  const std::string all_checks = "expected <...>";
  const Case cases[] = {
      {Cstates("<ActiveTime>msek:80</ActiveTime>"),
       {"1: error: GLOBALPM/CORE/CSTATES/ActiveTime: \"msek:80\": unknown unit; expected <...> "
        "(for example msec:80-120); did you mean \"msec:80\"?"}},
      {Cstates("<ActiveTime>msec80</ActiveTime>"),
       {"1: error: GLOBALPM/CORE/CSTATES/ActiveTime: \"msec80\": not a unit and a value; expected "
        "unit:value or unit:low-high with <...> (for example msec:80); did "
        "you mean \"msec:80\"?"}},
      {Cstates("<ExeCstates>C1;C5</ExeCstates>"),  // similar to many: no suggestion
       {"1: error: GLOBALPM/CORE/CSTATES/ExeCstates: \"C1;C5\": unknown C-state at \"C5\"; "
        "expected <...> (for example C1;C6;C10)"}},
      {Cstates("<CoreAffinity>Specfic:0,2</CoreAffinity>"),
       {"1: error: GLOBALPM/CORE/CSTATES/CoreAffinity: \"Specfic:0,2\": unknown affinity; expected "
        "<...> or Specific: "
        "(for example Specific:0-3,8); did you mean \"Specific:0,2\"?"}},
      {Cstates("<Log_Level>information</Log_Level>"),
       {"1: error: GLOBALPM/CORE/CSTATES/Log_Level: \"information\": unknown level; " + levels +
        "; did you mean \"Information\"?"}},
      {Cstates("<Log_Level>Error</Log_Level>"),
       {"1: error: GLOBALPM/CORE/CSTATES/Log_Level: \"Error\": unknown level, listed by mistake in "
        "the "
        "hint comment; " +
        levels + "; did you mean \"Critical\"?"}},
      {checks("TDROccurenceCheck; memorycheck"),
       {"1: error: GLOBALPM/SYSTEM/GSTATES/PrePostCheck: \"TDROccurenceCheck; memorycheck\": "
        "unknown "
        "word; " +
        all_checks + "; did you mean \"TDROccurrenceCheck; MemoryCheck\"?"}},  // both are replaced
      {checks("memorycheck;Unknown"),
       {"1: error: GLOBALPM/SYSTEM/GSTATES/PrePostCheck: \"memorycheck;Unknown\": unknown word; " +
        all_checks}},  // one is similar to none
      {Pm("CORE", "<SDC><KNOBS>Randm; exitonfail</KNOBS></SDC>"),
       {"1: warning: GLOBALPM/CORE/SDC/KNOBS: \"Randm; exitonfail\": unknown knob; expected <...>; "
        "did you mean \"Random;ExitOnFail\"?"}},
      {Pm("SYSTEM", "<GSTATES><KNOBS>Sx_Legacy;NoErrOnDemotion;Sx_Legcy</KNOBS></GSTATES>"),
       {"1: warning: GLOBALPM/SYSTEM/GSTATES/KNOBS: \"Sx_Legacy;NoErrOnDemotion;Sx_Legcy\": "
        "unknown knob at "
        "\"Sx_Legcy\"; expected <...>; did you mean \"Sx_Legacy;NoErrOnDemotion;Sx_Legacy\"?"}},
      {Global("SystemSetup", "<SETTING><Log_Add_Option>append</Log_Add_Option></SETTING>"),
       {"1: error: GLOBALCONFIGURATION/SystemSetup/SETTING/Log_Add_Option: \"append\": unknown "
        "word; expected "
        "<...>; did you mean \"Append\"?"}},
      {Global("CustomConfiguration", "<MSR_CFG><MSR/><MSR><OrMask>two</OrMask></MSR></MSR_CFG>"),
       {"1: error: GLOBALCONFIGURATION/CustomConfiguration/MSR_CFG/MSR[2]/OrMask: \"two\": not a "
        "number; expected a "
        "mask such as 0xFFFFFFFF"}},
      {Pm("SYSTEM", "<PECI><RdPCIConfig><PCIE/><PCIE>0:0:32:0:0</PCIE></RdPCIConfig></PECI>"),
       {"1: error: GLOBALPM/SYSTEM/PECI/RdPCIConfig/PCIE[2]: \"0:0:32:0:0\": number too large at "
        "\"32\"; "
        "expected a device from 0 to 31 (for example 0:0:31:0:0x40)"}},
      {Cstates("<PkgAffinity><!-- one -->0</PkgAffinity>"),
       {"1: error: GLOBALPM/CORE/CSTATES/PkgAffinity: \"0\": not read: it follows a comment or an "
        "element"}},
      {Cstates("<ExeCycles>1<![CDATA[0]]>0</ExeCycles>"),
       {"1: error: GLOBALPM/CORE/CSTATES/ExeCycles: \"0\": not read: a CDATA section and other "
        "text are not "
        "joined",
        "1: error: GLOBALPM/CORE/CSTATES/ExeCycles: \"0\": not read: a CDATA section and other "
        "text are not "
        "joined"}},
      {Cstates("<ExeCycles>99999999999999999999</ExeCycles>"),
       {"1: error: GLOBALPM/CORE/CSTATES/ExeCycles: \"99999999999999999999\": number too large; "
        "expected a "
        "number that fits 64 bits (for example min:30)"}},
      {Cstates("<ActiveTime>msec:8\xE2\x88\xB6</ActiveTime>"),
       {"1: error: GLOBALPM/CORE/CSTATES/ActiveTime: \"msec:8\xE2\x88\xB6\": not a number at "
        "\"8\xE2\x88\xB6\", with the character U+2236; expected decimal digits, or 0x and "
        "hexadecimal digits (for example msec:80-120)"}},
      {Document("<LoopTracker>seven</LoopTracker>"),
       {"1: error: LoopTracker: \"seven\": not a number; expected decimal digits, or 0x and "
        "hexadecimal digits (for example 100)"}},
      {Cstates("<ExeCycles>10<!-- 0 -->0</ExeCycles>"),
       {"1: error: GLOBALPM/CORE/CSTATES/ExeCycles: \"0\": not read: it follows a comment or an "
        "element"}},
      {Control("<AutoRunCfg><CSTATES>True</CSTATES><HWP> false</HWP><SDC>1</SDC><UFS/>"
               "<SAGV> </SAGV></AutoRunCfg>"),
       {"1: error: TEST_CONTROL_CFG/AutoRunCfg/CSTATES: \"True\": reads as false; expected true or "
        "false; did you "
        "mean \"true\"?",
        "1: warning: TEST_CONTROL_CFG/AutoRunCfg/HWP: \" false\": reads as false, like any text "
        "but true; expected "
        "true or false; did you mean \"false\"?",
        "1: error: TEST_CONTROL_CFG/AutoRunCfg/SDC: \"1\": reads as false; expected true or false; "
        "did you mean "
        "\"true\"?"}},
      {Control("<AutoRunCfg><CSTATES>true<b/></CSTATES><HWP><!-- off -->true</HWP>"
               "<SDC><!-- off --></SDC></AutoRunCfg>"),
       {"1: error: TEST_CONTROL_CFG/AutoRunCfg/CSTATES/b: \"b\": element in an option, not read; "
        "expected text",
        "1: error: TEST_CONTROL_CFG/AutoRunCfg/HWP: \"true\": not read: it follows a comment or an "
        "element"}},
      {Document("<WORKLOADS><GtStress><BouncingBall><AutoRun>yes</AutoRun></BouncingBall>"
                "</GtStress></WORKLOADS>"),
       {"1: error: WORKLOADS/GtStress/BouncingBall/AutoRun: \"yes\": reads as false; expected true "
        "or "
        "false; did you mean \"true\"?"}},
      {Control("<TestTraceCfg/>", "3.21.522"),
       {"1: error: Version: \"3.21.522\": incompatible version, refused where versions are "
        "verified; expected 3.21.522.0",
        "1: error: TEST_CONTROL_CFG/TestTraceCfg: \"3.21.522\": the file cannot be read: trace "
        "entries need a "
        "version of four pieces; expected 3.21.522.0"}},
      {Control("<TestTraceCfg><a>CSTATES_b</a><b/><c>CSTATE_b_Con</c><d>CSTATESS_b_c</d>"
               "<e>nothing_b_c</e><f>gt-rc6_b_c</f><g>dgfan_b_c</g><h>FANSPEED-CTR_b_c</h>"
               "</TestTraceCfg>"),
       {"1: error: TEST_CONTROL_CFG/TestTraceCfg/Name[1]: \"CSTATES_b\": the file cannot be read: "
        "malformed trace "
        "entry; expected test_target_code, such as CSTATES_Core_Con:10",
        "1: warning: TEST_CONTROL_CFG/TestTraceCfg/Name[4]: \"CSTATESS_b_c\": trace entry of an "
        "unknown test; expected "
        "the name of a test; did you mean \"CSTATES_b_c\"?",
        "1: warning: TEST_CONTROL_CFG/TestTraceCfg/Name[5]: \"nothing_b_c\": trace entry of an "
        "unknown test; expected "
        "the name of a test"}},
  };
  ExpectFindings(cases);
}

TEST(Check, ReportsOlderElementsAndWhetherTheyAreRead) {
  const std::string option =
      "1: warning: GLOBALCONFIGURATION/SystemSetup/SETTING/Ordered_Flow_Interleave: "
      "\"Ordered_Flow_Interleave\": older name";
  const std::string beside = ", not read beside the current one";
  const std::string ordered = "; expected Ordered_Interleave_ICE_Flow";
  const std::string older = "<Ordered_Flow_Interleave>true</Ordered_Flow_Interleave>";
  const std::string device =
      "1: warning: GLOBALPM/Device/PCIe-Link-DState: \"PCIe-Link-DState\": older name";
  const std::string both = "; expected PCIe-Link and Dx-States";
  const std::string name =
      "1: warning: TEST_CONTROL_CFG/AutoRunCfg/GT-DVFS: \"GT-DVFS\": older name";
  const auto setting = [](const std::string& content) {
    return Global("SystemSetup", Wrapped("SETTING", content));
  };
  const Case cases[] = {
      {setting(older), {option + ordered}},
      {setting("<Ordered_Interleave_ICE_Flow/>" + older), {option + ordered}},
      {setting(older + Wrapped("Ordered_Interleave_ICE_Flow", "false")),
       {option + beside + ordered}},
      {Pm("Device", "<PCIe-Link-DState/><PCIe-Link/>"), {device + both}},
      {Pm("Device", "<PCIe-Link-DState><KNOB/></PCIe-Link-DState><Dx-States/><PCIe-Link/>"),
       {device + beside + both}},
      {Control("<AutoRunCfg><GT-DVFS>true</GT-DVFS><iGFX-DVFS>false</iGFX-DVFS></AutoRunCfg>"),
       {name + "; expected iGFX-DVFS"}},
      {Control("<AutoRunCfg><iGFX-DVFS>true</iGFX-DVFS><GT-DVFS>yes</GT-DVFS></AutoRunCfg>"),
       {name + beside + "; expected iGFX-DVFS"}},
  };
  ExpectFindings(cases);
}

TEST(Check, SuggestsTheIntendedText) {
  const struct {
    const char* option;
    const char* text;
    const char* suggestion;
  } cases[] = {
      {"ActiveTime", "ms:80", "msec:80"},
      {"ActiveTime", "80:msec", "msec:80"},
      {"ActiveTime", "5 minutes", "min:5"},
      {"ActiveTime", "msec=200 - 500", "msec:200-500"},
      {"ActiveTime", "msec:500-200", "msec:200-500"},
      {"ActiveTime", "80", ""},
      {"ActiveTime", "1.5sec", ""},
      {"ActiveTime", "'msec:80'", "msec:80"},
      {"ActiveTime",
       "msec:\xC2\xA0"
       "80\xE2\x80\x8B",
       "msec:80"},
      {"ActiveTime", "5 us", "usec:5"},
      {"ActiveTime", "5 microseconds", "usec:5"},
      {"ActiveTime", "5 s", "sec:5"},
      {"ActiveTime", "5 second", "sec:5"},
      {"ActiveTime", "1 minute", "min:1"},
      {"ActiveTime", "1 h", "hour:1"},
      {"ActiveTime", "1hr", "hour:1"},
      {"ActiveTime", "2:hrs", "hour:2"},
      {"ExeCycles", "10min", "min:10"},
      {"ExeCstates", "C1,C6", "C1;C6"},
      {"ExeCstates", "C1; C6 ;C10", "C1;C6;C10"},
      {"PkgAffinity", "0,1", "Specific:0,1"},
      {"PkgAffinity", "Specific:0;1", "Specific:0,1"},
      {"PkgAffinity", "Specific = 0,1", "Specific:0,1"},
      {"PkgAffinity", "Specific:0,x", ""},
      {"CoreAffinity", "BigCoresAndMore", "BigCores"},
      {"Log_Level", "warning", "Information"},
      {"KNOBS", "Random,ExitOnFail", "Random;ExitOnFail"},
      {"KNOBS", "Own;Randm; PassOnMinTrubo", "Own;Random;PassOnMinTurbo"},
      {"KNOBS", "Random;QclkCheck(SAGV only)", "Random;QclkCheck"},
      {"KNOBS", "eof;Random", "ExitOnFail;Random"},
  };
  for (const auto& row : cases) {
    const auto findings = CheckXMLConfigText(Cstates("\n" + Wrapped(row.option, row.text)));
    const auto finding = std::ranges::find(findings, 2, &Finding::line);
    ASSERT_NE(finding, findings.end()) << row.text;
    EXPECT_EQ(finding->suggestion, row.suggestion) << row.text;
  }
}

TEST(Check, WarnsAboutDoubtfulTexts) {
  const std::string settings = "1: warning: GLOBALCONFIGURATION/SysConfiguration/SYSTEM/";
  const std::string config =
      "1: warning: GLOBALCONFIGURATION/SysConfiguration/CORE/CONFIG/ITEM[1]: ";
  const std::string modes = "; expected <...>";
  const auto system = [](const std::string& list, const std::string& content) {
    return Global("SysConfiguration", Wrapped("SYSTEM", Wrapped(list, content)));
  };
  const auto item = [](const std::string& list, const std::string& text) {
    return Global("SysConfiguration", Wrapped("CORE", Wrapped(list, Wrapped("ITEM", text))));
  };
  const Case cases[] = {
      {Cstates("<PkgAffinity>0,1</PkgAffinity>"),
       {"1: warning: GLOBALPM/CORE/CSTATES/PkgAffinity: \"0,1\": numbers alone, which mean All; "
        "expected "
        "Specific: in front of the numbers, or All (for example Specific:0,1); did you mean "
        "\"Specific:0,1\"?"}},
      {Cstates("<KNOBS>Own;Randm</KNOBS>"),
       {"1: warning: GLOBALPM/CORE/CSTATES/KNOBS: \"Own;Randm\": unknown knob at \"Randm\"; did "
        "you mean "
        "\"Own;Random\"?"}},
      {system("GSTATES",
              "<Hybrid_Slep>Disable</Hybrid_Slep><Fast_Startup>Disabled</Fast_Startup>"
              "<GlobalReset0_Check>0</GlobalReset0_Check><LPM0_PRI>3</LPM0_PRI>"),
       {settings + "GSTATES/Hybrid_Slep: \"Hybrid_Slep\": unknown setting; did you mean "
                   "\"Hybrid_Sleep\"?",
        settings + "GSTATES/Fast_Startup: \"Disabled\": unknown value; expected <...>; did you "
                   "mean \"Disable\"?",
        settings + "GSTATES/GlobalReset0_Check: \"GlobalReset0_Check\": older name of a setting; "
                   "expected Stop_on_GlobalReset0_Mask"}},
      {system("KNOBS",
              "<LTR_IGN_Msk>1</LTR_IGN_Msk><Snoop_Latency_Mask>zero</Snoop_Latency_Mask>"
              "<Hybrid_Sleep>Enable</Hybrid_Sleep><Own>Enabel</Own>"),
       {settings + "KNOBS/LTR_IGN_Msk: \"LTR_IGN_Msk\": unknown setting; did you mean "
                   "\"LTR_IGN_Mask\"?",
        "1: error: GLOBALCONFIGURATION/SysConfiguration/SYSTEM/KNOBS/Snoop_Latency_Mask: \"zero\": "
        "not a number; "
        "expected a mask such as 0xFFFFFFFF",
        settings + "KNOBS/Hybrid_Sleep: \"Hybrid_Sleep\": setting of another list; expected in "
                   "SysConfiguration/SYSTEM/GSTATES"}},
      {item("CONFIG", "0; Trubo; Enabel"),
       {config + "\"0; Trubo; Enabel\": unknown setting at \"Trubo\"; did you mean \"0; Turbo; "
                 "Enable\"?",
        config + R"("0; Trubo; Enabel": unknown value at "Enabel")" + modes +
            "; did you mean \"0; Turbo; Enable\"?"}},
      {item("CONFIG", "O;Turbo;On"),
       {config + R"("O;Turbo;On": unknown socket at "O"; expected a number such as 0, or All)",
        config + R"("O;Turbo;On": unknown value at "On")" + modes}},
      {item("CONFIG", "Turbo; Enable"),
       {config + "\"Turbo; Enable\": not three parts; expected Socket; Name; Value"}},
      {item("CONFIG", "0, Turbo, Enable"),
       {config +
        "\"0, Turbo, Enable\": not three parts; expected Socket; Name; Value; did you mean "
        "\"0; Turbo; Enable\"?"}},
      {item("CONFIG", "0; PCxLimit; 8"),
       {config + "\"0; PCxLimit; 8\": setting of another list at \"PCxLimit\"; expected in "
                 "SysConfiguration/CORE/SETTING"}},
      {item("SETTING", "All; PCxLimit; 8"), {}},
  };
  ExpectFindings(cases);
}

TEST(Check, NotesUnknownNamesThatMayBeValid) {
  const Case cases[] = {
      {Global("SysConfiguration",
              "<SYSTEM><KNOBS><Own/></KNOBS></SYSTEM><CORE><CONFIG><ITEM>0; Own; 7</ITEM></CONFIG>"
              "</CORE><UNCORE><CONFIG><Own>7</Own></CONFIG></UNCORE>"),
       {"1: note: GLOBALCONFIGURATION/SysConfiguration/SYSTEM/KNOBS/Own: \"Own\": unknown setting",
        R"(1: note: GLOBALCONFIGURATION/SysConfiguration/CORE/CONFIG/ITEM[1]: "0; Own; 7": unknown setting at "Own")",
        "1: note: GLOBALCONFIGURATION/SysConfiguration/UNCORE/CONFIG/Own: \"7\": unknown value; "
        "expected Default, "
        "Enable or Disable"}},
      {Pm("CORE",
          "<FACT><StartDelayTime/><ExeCycles/><FailTolerance/><SanityEarlyExit/><TestMode/>"
          "<Log_Level/><PkgAffinity/><ModuleAffinity/><CoreAffinity/><PxMxCxScope/>"
          "<ConfigLoop/><SwitchTime/><KNOBS>Random;Own</KNOBS></FACT>"),
       {R"(1: note: GLOBALPM/CORE/FACT/KNOBS: "Random;Own": unknown knob at "Own")"}},
  };
  ExpectFindings(cases, Severity::kNote);
}

// Absent times read as empty, so that a test that is switched on runs without them.
TEST(Check, WarnsAboutTestsThatRunWithoutTimes) {
  const struct {
    const char* group;
    const char* test;
    const char* options;
    const char* missing;
  } cases[] = {
      {"CORE", "CSTATES", "<ActiveTime/><StartDelayTime>sec:1</StartDelayTime>",
       "ActiveTime, InStateTime"},
      {"CORE", "CSTATES", "<ActiveTime>sec:1</ActiveTime><InStateTime>sec:1</InStateTime>", ""},
      {"CORE", "CSTATES", "<ActiveTime>Invalid</ActiveTime><InStateTime>sec:1</InStateTime>",
       "ActiveTime"},
      {"CORE", "HWP", "", "SwitchTime"},
      {"CORE", "HWP", "<ActiveTime>sec:1</ActiveTime><SwitchTime>Invalid</SwitchTime>",
       "SwitchTime"},
      {"CORE", "HWP", "<ActiveTime>sec:1</ActiveTime>", ""},  // the switch time is derived
      {"ICE", "Ice-Pstates", "", ""},                         // its switch time has a fallback
      {"GT", "iGFX-RC6", "<InStateTime>sec:1</InStateTime>", "RC0Time"},
      {"GT", "GT-DVFS", "", "SwitchTime"},
      {"UNCORE", "MESH-GV", "<arg name='-switchTime' randVal='1-2'/>", "-switchTime"},
      {"UNCORE", "MESH-GV", "<arg name='-switchTime' val='sec:1'/>", ""},
  };
  const auto is_it = [](const Finding& finding) { return finding.code == "VX035"; };
  for (const auto& row : cases) {
    for (const bool runs : {true, false}) {
      const std::string control = Wrapped("AutoRunCfg", Wrapped(row.test, runs ? "true" : "false"));
      const auto findings = CheckXMLConfigText(
          Document(Wrapped("GLOBALPM", Wrapped(row.group, Wrapped(row.test, row.options))) +
                   Wrapped("TEST_CONTROL_CFG", control)));
      const auto found = std::ranges::find_if(findings, is_it);
      EXPECT_EQ(found == findings.end() ? "" : found->text, runs ? row.missing : "") << row.test;
    }
  }
}

TEST(Check, NotesAbsentOptions) {
  const Case cases[] = {
      {Pm("SYSTEM",
          "<PECI><StartDelayTime/><ExeCycles/><FailTolerance/><SanityEarlyExit/>"
          "<TestMode/><Log_Level/>\n<Stranger/></PECI>"),
       {"1: note: GLOBALPM/SYSTEM/PECI: \"ActiveTime, InStateTime, ConfigLoop, Interface\": "
        "absent, reads as empty and not as the default",
        "2: error: GLOBALPM/SYSTEM/PECI/Stranger: \"Stranger\": unknown element, not read"}},
      {Pm("UNCORE",
          "<MESH-GV><arg name='-switchTime' val=''/><arg name='-exeCycles' val=''/>"
          "<arg name='-startDelayTime' val=''/><arg name='-failTolerance' val=''/>"
          "<arg name='-checkDelayTime' val=''/><arg name='-testMode' val=''/>"
          "<arg name='-exitOnPassRatios' val=''/></MESH-GV>"),
       {"1: note: GLOBALPM/UNCORE/MESH-GV: \"-sanityEarlyExit, -logLevel\": absent, reads as empty "
        "and not as the default"}},
      {Pm("CORE", "<PSTATES/>"),  // the switch time is derived
       {"1: note: GLOBALPM/CORE/PSTATES: \"PkgAffinity, ModuleAffinity, CoreAffinity, PxMxCxScope, "
        "ExeCycles, "
        "StartDelayTime, ConfigLoop, FailTolerance, SanityEarlyExit, TestMode, Log_Level, "
        "LimitReasonMask, TurboLimitCores, ExePstates, RatioDistLoMeHi, FreqTolerance, "
        "ExitOnPassRatios\": absent, reads as empty and not as the default"}},
      {Control("<WorkloadCfg/>"), {}},  // absent options read as their defaults here
      {Control("<AutoRunCfg><HWP>true</HWP><SDC>false</SDC><TestControl>true</TestControl>"
               "</AutoRunCfg>"),
       {"1: note: TEST_CONTROL_CFG/AutoRunCfg/HWP: \"true\": the test runs with default options "
        "only; expected its "
        "options in GLOBALPM/CORE/HWP"}},
  };
  ExpectFindings(cases, Severity::kNote);
}

TEST(Check, AcceptsTheExamples) {
  EXPECT_EQ(Lines(vexor::CheckXMLConfig(VEXOR_SOURCE_DIR "/examples/lab.xml")), Texts());
  EXPECT_EQ(Lines(vexor::CheckXMLConfig(VEXOR_SOURCE_DIR "/tests/config/data/default.xml"),
                  Severity::kNote),
            Texts());
}

TEST(Check, WarnsAboutEachOlderForm) {
  Texts places;
  for (const Finding& finding : vexor::CheckXMLConfig(VEXOR_SOURCE_DIR "/examples/legacy.xml")) {
    if (finding.severity == Severity::kNote) continue;
    EXPECT_EQ(finding.severity, Severity::kWarning) << Line(finding);
    places.push_back(std::to_string(finding.line) + " " + finding.path + " " + finding.expected);
  }
  const Texts expected = {
      "4 Version 3.21.522.0",
      "9 TEST_CONTROL_CFG/AutoRunCfg/GT-DVFS iGFX-DVFS",
      "10 TEST_CONTROL_CFG/AutoRunCfg/GT-RC6 iGFX-RC6",
      "11 TEST_CONTROL_CFG/AutoRunCfg/PCIe-Link-DState PCIe-Link and Dx-States",
      "14 TEST_CONTROL_CFG/TestTraceCfg/Name[1] CSTATES_Core_Con",
      "15 TEST_CONTROL_CFG/TestTraceCfg/Name[2] GSTATES_System_Con:15_Full",
      "16 TEST_CONTROL_CFG/TestTraceCfg/Name[3] PCIe-Link_Device_Con and Dx-States_Device_Con",
      "19 TEST_CONTROL_CFG/SETTING WorkloadCfg",
      "73 GLOBALPM/GT/GT-DVFS iGFX-DVFS",
      "87 GLOBALPM/GT/GT-RC6 iGFX-RC6",
      "102 GLOBALPM/Device/PCIe-Link-DState PCIe-Link and Dx-States",
      ("124 GLOBALCONFIGURATION/SystemSetup/SETTING/Ordered_Flow_Interleave "
       "Ordered_Interleave_ICE_Flow"),
  };
  EXPECT_EQ(places, expected);
}

// Rewriting an older file converts it to the current form.
TEST(Check, AcceptsAnOlderFileThatWasRewritten) {
  _XML_FULL_CFG cfg;
  ResetVexorXmlConfiguration(cfg);
  const std::string legacy = VEXOR_SOURCE_DIR "/examples/legacy.xml";
  ASSERT_TRUE(VexorConfigParser().ReadXMLPar(legacy, &cfg, true, false));
  EXPECT_EQ(Lines(CheckXMLConfigText(vexor::FormatXMLConfig(cfg))), Texts());
}

TEST(Check, ReportsUnreadableFiles) {
  const TemporaryFolder folder;
  WriteBytes(folder / "empty.xml", "");
  for (const std::string& path : {folder / "missing.xml", folder.path()}) {
    EXPECT_EQ(Lines(vexor::CheckXMLConfig(path)),
              Texts{"0: error: : \"" + path + "\": cannot be read; expected a configuration file"});
  }
  EXPECT_EQ(Lines(vexor::CheckXMLConfig(folder / "empty.xml")),
            Texts{"0: error: : \"\": the file is empty; expected a configuration in XML (UTF-8)"});
}

// Damaged files of any kind can be checked.
TEST(Check, HandlesArbitraryBytes) {
  const std::string lab = ReadBytes(VEXOR_SOURCE_DIR "/examples/lab.xml");
  const auto look_at = [](const std::string& content) {
    const std::vector<Finding> findings = CheckXMLConfigText(content);
    EXPECT_TRUE(std::ranges::is_sorted(findings, {}, &Finding::line));
    vexor::DescribeXMLConfigText(content);
    return Lines(findings, Severity::kError);
  };
  for (std::size_t size = 0; size < lab.rfind("</VEXOR>") + 8; size += 97) {
    EXPECT_EQ(look_at(lab.substr(0, size)).size(), 1U) << size;
  }
  UserRand random(11);
  for (int round = 0; round < 40; ++round) {
    std::string content = lab;
    for (int i = 0; i < 20; ++i)
      content[random.NextUint() % content.size()] = static_cast<char>(random.NextUint());
    look_at(content);
    for (char& byte : content) byte = static_cast<char>(random.NextUint());
    look_at(content);
  }
}

TEST(Check, LimitsTheSearchesForSimilarNames) {
  std::string content;
  for (int i = 0; i < 1001; ++i) content += "<ActiveTim>sec:1</ActiveTim>";
  const std::vector<Finding> findings = CheckXMLConfigText(Cstates(content));
  const auto has_suggestion = [](const Finding& f) { return f.suggestion == "ActiveTime"; };
  EXPECT_EQ(std::ranges::count_if(findings, has_suggestion), 1000);
  EXPECT_EQ(findings[1000].what, "unknown or misplaced element, not read");
}

}  // namespace
