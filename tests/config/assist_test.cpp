#include "vexor/config/assist.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "source_dir.h"
#include "vexor/config/edit.h"

using namespace vexor;

namespace {

// A document with the place of the cursor, which "|" marks in the text.
struct Typed {
  std::string content;
  std::size_t at = 0;
};

Typed Type(std::string text) {
  const std::size_t at = text.find('|');
  EXPECT_NE(at, std::string::npos) << text;
  text.erase(at, 1);
  return {text, at};
}

// Returns the document in which the item replaces its range, with "|" where typing goes on.
std::string Accept(const Typed& typed, const Completions& completions, const Completion& item) {
  std::string text = item.text;
  text.insert(item.cursor, "|");
  const TextRange range = completions.range;
  return std::string(typed.content).replace(range.begin, range.end - range.begin, text);
}

std::string Apply(std::string content, const std::vector<TextReplacement>& replacements) {
  for (std::size_t i = replacements.size(); i-- > 0;) {
    const auto& [range, text] = replacements[i];
    content.replace(range.begin, range.end - range.begin, text);
  }
  return content;
}

std::vector<std::string> LabelsOf(const Completions& completions) {
  std::vector<std::string> labels;
  for (const Completion& item : completions.items) labels.push_back(item.label);
  return labels;
}

const std::string kCstates = "<VEXOR><GLOBALPM><CORE><CSTATES>";
const std::string kEnds = "</CSTATES></CORE></GLOBALPM></VEXOR>";

TEST(CompleteText, OffersWhatMayStandAtThePlace) {
  struct Case {
    std::string typed;
    std::string label;   // of an item
    std::string result;  // of accepting it
  };
  const std::string kSwitches = "<VEXOR><TEST_CONTROL_CFG><AutoRunCfg>";
  const Case cases[] = {
      {"|", "VEXOR", "<VEXOR>|</VEXOR>"},
      {"<?xml version=\"1.0\"?>\n<VE|", "VEXOR", "<?xml version=\"1.0\"?>\n<VEXOR>|</VEXOR>"},
      {"<VEXOR>|</VEXOR>", "Version", "<VEXOR><Version>|</Version></VEXOR>"},
      // Elements: nothing, "<" or a part of the name is typed.
      {kCstates + "|" + kEnds, "ActiveTime", kCstates + "<ActiveTime>|</ActiveTime>" + kEnds},
      {kCstates + "<|" + kEnds, "ActiveTime", kCstates + "<ActiveTime>|</ActiveTime>" + kEnds},
      {kCstates + "\n  <Act|\n" + kEnds, "ActiveTime",
       kCstates + "\n  <ActiveTime>|</ActiveTime>\n" + kEnds},
      {kCstates + "\n  Act|\n" + kEnds, "ActiveTime",
       kCstates + "\n  <ActiveTime>|</ActiveTime>\n" + kEnds},
      {kCstates + "<Act|\n<InStateTime>sec:1</InStateTime>" + kEnds, "ActiveTime",
       kCstates + "<ActiveTime>|</ActiveTime>\n<InStateTime>sec:1</InStateTime>" + kEnds},
      {kCstates + "<Act|iveTim>sec:1</ActiveTim>" + kEnds, "ActiveTime",
       kCstates + "<ActiveTime|>sec:1</ActiveTim>" + kEnds},
      // Behind errors: an end tag is missing, another has no begin, a quote is not closed.
      {kCstates + "<InStateTime>sec:1\n<Act|" + kEnds, "ActiveTime",
       kCstates + "<InStateTime>sec:1\n<ActiveTime>|</ActiveTime>" + kEnds},
      {"<VEXOR><TEST_CONTROL_CFG></Nothing><A b=\"></TEST_CONTROL_CFG><GLOBALPM><CO|", "CORE",
       "<VEXOR><TEST_CONTROL_CFG></Nothing><A b=\"></TEST_CONTROL_CFG><GLOBALPM><CORE>|</CORE>"},
      // End tags.
      {kCstates + "<InStateTime>sec:1</|" + kEnds, "</InStateTime>",
       kCstates + "<InStateTime>sec:1</InStateTime>|" + kEnds},
      {kCstates + "<InStateTime>sec:1<|\n", "</InStateTime>",
       kCstates + "<InStateTime>sec:1</InStateTime>|\n"},
      {kCstates + "\n</CST|\n", "</CSTATES>", kCstates + "\n</CSTATES>|\n"},
      // Words.
      {kSwitches + "<HWP>|</HWP>", "true", kSwitches + "<HWP>true|</HWP>"},
      {kCstates + "<ActiveTime>ms|</ActiveTime>" + kEnds, "msec",
       kCstates + "<ActiveTime>msec:|</ActiveTime>" + kEnds},
      {kCstates + "<ActiveTime> m|s:80 </ActiveTime>" + kEnds, "sec",
       kCstates + "<ActiveTime> sec:|80 </ActiveTime>" + kEnds},
      {kCstates + "<ExeCstates>C1;|;C7</ExeCstates>" + kEnds, "C6",
       kCstates + "<ExeCstates>C1;C6|;C7</ExeCstates>" + kEnds},
      {kCstates + "<ExeCstates>C1; C|</ExeCstates>" + kEnds, "C10",
       kCstates + "<ExeCstates>C1; C10|</ExeCstates>" + kEnds},
      {kCstates + "<CoreAffinity>Sp|</CoreAffinity>" + kEnds,
       "Specific:", kCstates + "<CoreAffinity>Specific:|</CoreAffinity>" + kEnds},
      {"<VEXOR><TEST_CONTROL_CFG><TestTraceCfg><Name>CST|_Core_Con:1</Name>", "GSTATES",
       "<VEXOR><TEST_CONTROL_CFG><TestTraceCfg><Name>GSTATES|_Core_Con:1</Name>"},
      // Codes in a comment that allows findings.
      {"<!-- vexorcfg: allow VX0|, VX012 -->", "VX019", "<!-- vexorcfg: allow VX019|, VX012 -->"},
  };
  for (const auto& [text, label, result] : cases) {
    const Typed typed = Type(text);
    const Completions completions = CompleteText(typed.content, typed.at);
    const auto item = std::ranges::find(completions.items, label, &Completion::label);
    if (item == completions.items.end()) {
      ADD_FAILURE() << text << " does not offer " << label << ", but "
                    << testing::PrintToString(LabelsOf(completions));
    } else {
      EXPECT_EQ(Accept(typed, completions, *item), result) << text;
    }
  }
}

TEST(CompleteText, OffersNothingThatMayNotStand) {
  struct Case {
    std::string typed;
    std::string label;
  };
  const Case cases[] = {
      {kCstates + "<ActiveTime>sec:1</ActiveTime>|" + kEnds, "ActiveTime"},  // is there
      {kCstates + "<ActiveTime>msec:|</ActiveTime>" + kEnds, "msec"},        // a number is due
      {kCstates + "<ActiveTime>|</ActiveTime>" + kEnds, "Version"},
      {kCstates + "<ExeCstates>C1;|</ExeCstates>" + kEnds, "C1"},  // is listed
      {kCstates + "|" + kEnds, "</CSTATES>"},                      // is closed
      {"<!-- allow VX0| -->", "VX019"},
      {"<Other>|</Other>", "Version"},
      {kCstates + "<!-- | -->" + kEnds, "ActiveTime"},
  };
  for (const auto& [text, label] : cases) {
    const Typed typed = Type(text);
    EXPECT_EQ(std::ranges::count(LabelsOf(CompleteText(typed.content, typed.at)), label), 0)
        << text;
  }
}

TEST(CompleteText, ListsFirstWhatFollowsAndTheDefault) {
  const auto first = [](const std::string& text) {
    const Typed typed = Type(text);
    const Completions completions = CompleteText(typed.content, typed.at);
    return completions.items.empty() ? Completion() : completions.items.front();
  };
  EXPECT_EQ(first("<VEXOR><Version>1</Version>|<GLOBALPM/></VEXOR>").label, "LoopTracker");
  const Completion item = first(kCstates + "<ActiveTime>|</ActiveTime>" + kEnds);
  EXPECT_EQ(item.kind, CompletionKind::kExample);
  EXPECT_EQ(item.detail, "the default");
  EXPECT_FALSE(CheckSyntax("time", item.text)) << item.text;
}

TEST(FindElementAt, SaysWhatStandsAtThePlace) {
  struct Case {
    std::string typed;
    std::string path;
    std::string range;  // the text in it
    std::string meaning;
  };
  const Case cases[] = {
      {kCstates + "<ActiveTime>msec:|80-120</ActiveTime>", "GLOBALPM/CORE/CSTATES/ActiveTime",
       "msec:80-120", "80 ms to 120 ms"},
      {kCstates + "<|ActiveTime>msec:80-120</ActiveTime>", "GLOBALPM/CORE/CSTATES/ActiveTime",
       "ActiveTime", "80 ms to 120 ms"},
      {kCstates + "<ActiveTime> &#109;sec:80 </Active|Time>", "GLOBALPM/CORE/CSTATES/ActiveTime",
       "ActiveTime", "80 ms"},
      {"<VEXOR><GLOBALPM><CO|RE>", "GLOBALPM/CORE", "CORE", ""},
      {"<VEX|OR>", "VEXOR", "VEXOR", ""},
      {"<VEXOR><TEST_CONTROL_CFG><TestTraceCfg><Any>CST|ATES_Core_Con:1</Any>",
       "TEST_CONTROL_CFG/TestTraceCfg/Name", "CSTATES_Core_Con:1", ""},
      {"<VEXOR><Unknown>te|xt</Unknown>", "", "", ""},
      {"<VEXOR> | <GLOBALPM/></VEXOR>", "", "", ""},
  };
  for (const auto& [text, path, range, meaning] : cases) {
    const Typed typed = Type(text);
    const auto info = FindElementAt(typed.content, typed.at);
    ASSERT_EQ(info.has_value(), !path.empty()) << text;
    if (!info) continue;
    EXPECT_EQ(info->path, path) << text;
    EXPECT_EQ(info->meaning, meaning) << text;
    EXPECT_EQ(typed.content.substr(info->range.begin, info->range.end - info->range.begin), range);
    EXPECT_FALSE(info->about.empty()) << text;
  }
  const Typed wrong = Type(kCstates + "<ActiveTime>ms|ek:80</ActiveTime>");
  const auto info = FindElementAt(wrong.content, wrong.at);
  ASSERT_TRUE(info && info->fault);
  EXPECT_EQ(info->fault->suggestion, "msec:80");
}

TEST(OutlineText, ListsElementsAndComments) {
  const std::string content =
      "<!-- a -> b --><VEXOR><GLOBALPM><CORE><CSTATES>"
      "<ActiveTime> sec:1 </ActiveTime><InStateTime>sec:2\n<Half <SubStates/></GLOBALPM></VEXOR>";
  std::string outline;
  for (const OutlineItem& item : OutlineText(content)) {
    outline +=
        std::string(static_cast<std::size_t>(item.depth), ' ') +
        (item.is_comment ? content.substr(item.range.begin, item.range.end - item.range.begin)
                         : item.name) +
        (item.text.empty() ? "" : "=" + item.text) + (item.holds_elements ? "+\n" : "\n");
    EXPECT_LE(item.range.begin, item.name_range.begin);
    EXPECT_LE(item.name_range.end, item.range.end);
  }
  EXPECT_EQ(outline,
            "<!-- a -> b -->\nVEXOR+\n GLOBALPM+\n  CORE+\n   CSTATES+\n    ActiveTime=sec:1\n"
            "    InStateTime=sec:2\n    SubStates\n");
}

TEST(OutlineText, CutsLongTextsBetweenCharacters) {
  std::string accents;
  for (int i = 0; i < 40; ++i) accents += "\xC3\xA9";
  const std::vector<OutlineItem> items = OutlineText("<A>x" + accents + "</A>");
  ASSERT_EQ(items.size(), 1U);
  EXPECT_EQ(items.front().text, "x" + accents.substr(0, 58) + "...");
}

// Applies the repair of that title to the first finding.
std::string Repair(const std::string& content, const std::string& title) {
  std::vector<Finding> findings = CheckXMLConfigText(content);
  std::erase_if(findings, [](const Finding& f) { return f.severity == Severity::kNote; });
  if (findings.empty()) return "no findings";
  std::string titles;
  for (const TextRepair& repair : FindRepairs(content, findings.front())) {
    if (repair.title == title) return Apply(content, repair.replacements);
    titles += repair.title + "\n";
  }
  return titles;
}

TEST(FindRepairs, OffersWhatMendsOrAllowsTheFinding) {
  const std::string begin = "<VEXOR>\n<Version>3.21.522.0</Version>\n";
  const auto tests = [&](const std::string& options) {
    return begin + "<GLOBALPM><CORE><CSTATES>\n  " + options +
           "\n  <ActiveTime>sec:1</ActiveTime><InStateTime>sec:1</InStateTime>\n" + kEnds;
  };
  struct Case {
    std::string content;
    std::string title;
    std::string result;
  };
  const Case cases[] = {
      {tests("<SubStats>1</SubStats>"), "Rename to \"SubStates\"",
       tests("<SubStates>1</SubStates>")},
      {tests("<CoreAffinity>Al</CoreAffinity>"), "Change to \"All\"",
       tests("<CoreAffinity>All</CoreAffinity>")},
      {tests("<SubStats>1</SubStats>"), "Allow VX019 in this element",
       tests("<!-- vexorcfg: allow VX019 -->\n  <SubStats>1</SubStats>")},
      {"<VEXOR>\n<A>1</A>\n<Version>3.21.522.0</Version></VEXOR>", "Allow VX019 in the whole file",
       "<VEXOR>\n<!-- vexorcfg: allow VX019 -->\n<A>1</A>\n<Version>3.21.522.0</Version></VEXOR>"},
      {begin + "<A>1</A></VEXOR>", "Allow VX019 in this element",
       begin + "<!-- vexorcfg: allow VX019 -->\n<A>1</A></VEXOR>"},
  };
  for (const auto& [content, title, result] : cases) {
    EXPECT_EQ(Repair(content, title), result) << content;
  }
}

TEST(CheckTypedText, GoesOnBehindUnfinishedTags) {
  const std::string begin = "<VEXOR>\n<Version>3.21.522.0</Version>\n<GLOBALPM><CORE><CSTATES>";
  const std::string wrong = "<CoreAffinity>Al</CoreAffinity>";
  const std::string documents[] = {
      begin + "<Act\n" + wrong + kEnds,
      begin + "<ActiveTime>sec:1\n" + wrong + kEnds,
      begin + "<ActiveTime>sec:1</ActiveTime" + wrong + kEnds,
      begin + "</Nothing>" + wrong + "<KNOBS a=\"></CSTATES></CORE>",
      begin + wrong,
      begin + "<!-- & --><RandomPkgVoting>&</RandomPkgVoting>" + wrong + "<",
  };
  for (const std::string& content : documents) {
    const std::vector<Finding> findings = CheckTypedText(content);
    const auto found = std::ranges::find(findings, "Al", &Finding::text);
    ASSERT_NE(found, findings.end()) << content;
    EXPECT_EQ(found->at, content.find("Al<"));
    const std::string before = content.substr(0, found->at);
    EXPECT_EQ(found->line, std::ranges::count(before, '\n') + 1) << content;
    EXPECT_EQ(static_cast<std::size_t>(found->column), before.size() - before.rfind('\n'));
    const std::vector<TextRepair> repairs = FindRepairs(content, *found);
    ASSERT_FALSE(repairs.empty()) << content;
    EXPECT_EQ(Apply(content, repairs.front().replacements),
              std::string(content).replace(found->at, 2, "All"));
    EXPECT_NE(std::ranges::count(findings, Severity::kError, &Finding::severity), 1) << content;
  }
  const std::string whole = begin + wrong + kEnds;
  EXPECT_EQ(CheckTypedText(whole).size(), CheckXMLConfigText(whole).size());
}

TEST(MayBeConfiguration, LooksAtTheRoot) {
  for (const char* content : {"", "<", "<VEX", "<!-- a --><VEXOR>", "<VEXR/>", "text"}) {
    EXPECT_TRUE(MayBeConfiguration(content)) << content;
  }
  for (const char* content : {"<project>", "<?xml version='1.0'?><a><VEXOR/></a>"}) {
    EXPECT_FALSE(MayBeConfiguration(content)) << content;
  }
}

std::string ReadExample(const std::string& name) {
  std::ostringstream text;
  text << std::ifstream(std::string(VEXOR_SOURCE_DIR) + "/examples/" + name).rdbuf();
  return text.str();
}

TEST(FindRepairs, MigratesAnOlderDocument) {
  const std::string content = ReadExample("legacy.xml");
  const std::vector<Finding> findings = CheckXMLConfigText(content);
  const auto older = std::ranges::find(findings, true, &Finding::is_older_form);
  ASSERT_NE(older, findings.end());
  const std::vector<TextRepair> repairs = FindRepairs(content, *older);
  ASSERT_FALSE(repairs.empty());
  EXPECT_EQ(Apply(content, repairs.front().replacements), MigrateText(content).content);
}

TEST(FindReplacements, ReplacesTheLinesThatDiffer) {
  struct Case {
    std::string before, after;
    std::size_t begin, end;
  };
  const Case cases[] = {
      {"a\nb\nc\n", "a\nx\nc\n", 2, 4},
      {"a\nb\n", "a\nb\nc\n", 4, 4},
      {"a\nb", "a\nxb", 2, 3},
      {"", "a", 0, 0},
      {"ab", "", 0, 2},
      {"a\na\n", "a\n", 2, 4},
      {"xa\n", "a\n", 0, 3},
      {"ab\nc\n", "ax\nc\n", 0, 3},
  };
  for (const auto& [before, after, begin, end] : cases) {
    const auto replacements = FindReplacements(before, after);
    ASSERT_EQ(replacements.size(), 1U) << before;
    EXPECT_EQ(Apply(before, replacements), after);
    EXPECT_EQ(replacements.front().range.begin, begin) << before;
    EXPECT_EQ(replacements.front().range.end, end) << before;
  }
  EXPECT_TRUE(FindReplacements("same", "same").empty());
}

// Cuts examples at random places, drops bytes of them, and asks everywhere: all ranges must be
// inside the document, and what is accepted must be there.
TEST(Assist, UnderstandsBrokenDocuments) {
  std::mt19937 random(1);
  const std::string examples[] = {ReadExample("lab.xml"), ReadExample("broken.xml"),
                                  ReadExample("legacy.xml")};
  for (int round = 0; round < 90; ++round) {
    std::string content = examples[round % 3];
    for (int i = 0; i < round % 5; ++i) content.erase(random() % content.size(), random() % 9);
    if (round % 2 == 0) content.resize(random() % content.size());
    const std::size_t at = random() % (content.size() + 2);
    const Completions completions = CompleteText(content, at);
    ASSERT_LE(completions.range.begin, completions.range.end);
    ASSERT_LE(completions.range.end, content.size());
    for (const Completion& item : completions.items) ASSERT_LE(item.cursor, item.text.size());
    const auto info = FindElementAt(content, at);
    ASSERT_TRUE(!info ||
                (info->range.begin <= info->range.end && info->range.end <= content.size()));
    std::size_t begin = 0;
    for (const OutlineItem& item : OutlineText(content)) {
      ASSERT_TRUE(begin <= item.range.begin && item.range.begin <= item.range.end);
      ASSERT_LE(item.range.end, content.size());
      begin = item.range.begin;
    }
    const std::vector<Finding> findings = CheckTypedText(content);
    for (std::size_t i = 0; i < findings.size(); i += 1 + random() % 9) {
      for (const TextRepair& repair : FindRepairs(content, findings[i])) {
        std::size_t end = 0;
        for (const TextReplacement& change : repair.replacements) {
          ASSERT_TRUE(end <= change.range.begin && change.range.begin <= change.range.end);
          end = change.range.end;
        }
        ASSERT_LE(end, content.size());
      }
    }
  }
}

}  // namespace
