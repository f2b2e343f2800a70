// What a reader makes of logs, whole and damaged. Texts of tables are written with "@5" for a time
// stamp of second 5, "~" for a NUL byte, and "H" in front of a line for the header of most tests.

#include "vexor/logging/log_reader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "logging/log_test_tools.h"

namespace {

using vexor::LogDamage;
using vexor::LogFileChange;
using vexor::LogReader;
using vexor::LogReaderOptions;
using vexor::LogRow;
using vexor::LogRowKind;
using vexor::kNoLogTime;

using Shown = std::vector<std::string>;

constexpr std::string_view kStamp = "2024-03-07 09:00:0";
constexpr std::string_view kHeader = "Time,Notes, Level\n";

std::string Expand(std::string_view text) {
  std::string expanded;
  bool at_line_start = true;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '@') {
      expanded.append(kStamp).append(1, text[++i]).append(".000");
    } else if (at_line_start && text.substr(i, 2) == "H\n") {
      expanded += kHeader;
      ++i;
    } else {
      expanded += text[i] == '~' ? '\0' : text[i];
    }
    at_line_start = expanded.ends_with('\n');
  }
  return expanded;
}

std::string Escape(std::string_view text) {
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.substr(i).starts_with(kStamp) && text.size() >= i + 23) {
      escaped.append(1, '@').append(1, text[i + kStamp.size()]);
      i += 22;
    } else if (text[i] == '\n' || text[i] == '\r') {
      escaped += text[i] == '\n' ? "\\n" : "\\r";
    } else {
      escaped += text[i] == '\0' ? '~' : text[i];
    }
  }
  return escaped;
}

// "3 row cut-off |a|b|": line, kind, damage and cells.
std::string Show(const LogRow& row) {
  constexpr const char* kKinds[] = {"row", "header", "text", "nuls"};
  constexpr const char* kDamages[] = {"cut-off",     "no-start",   "too-long",    "no-utf8",
                                      "other-width", "open-quote", "stray-quote"};
  static_assert(std::size(kDamages) == vexor::kLogDamageCount);
  std::string shown = std::to_string(row.Line());
  shown.append(" ").append(kKinds[static_cast<std::size_t>(row.Kind())]);
  for (std::size_t i = 0; i < std::size(kDamages); ++i) {
    if (row.Has(static_cast<LogDamage>(i))) shown.append(" ").append(kDamages[i]);
  }
  if (row.Kind() == LogRowKind::kNulBlock) return shown + " " + std::to_string(row.Size());
  shown += " |";
  if (row.Kind() == LogRowKind::kText) return shown + Escape(row.Text()) + "|";
  for (std::size_t i = 0; i < row.Width(); ++i) shown += Escape(row.Cell(i)) + "|";
  EXPECT_TRUE(row.Cell(row.Width()).empty());
  return shown;
}

// What `Next` gives until it returns false.
void ShowMore(LogReader& reader, Shown& shown) {
  while (reader.Next()) {
    shown.push_back(Show(reader.Row()));
    EXPECT_LE(shown.size(), 10000U);
  }
}

Shown ShowAll(const std::string& path, LogReaderOptions options = {}) {
  LogReader reader(std::move(options));
  EXPECT_FALSE(reader.Open(path));
  Shown shown;
  ShowMore(reader, shown);
  EXPECT_FALSE(reader.Error());
  EXPECT_EQ(reader.Offset(), std::filesystem::file_size(path));
  return shown;
}

// The same while the file grows byte by byte.
Shown ShowGrowing(const std::string& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  LogReader reader({.follow = true});
  EXPECT_FALSE(reader.Open(path));
  Shown shown;
  for (const char byte : bytes) {
    file << byte << std::flush;
    ShowMore(reader, shown);
  }
  reader.Finish();
  ShowMore(reader, shown);
  return shown;
}

struct Case {
  const char* name;
  std::string_view text;
  Shown rows;
  bool grows_alike = true;
};

const Case kCases[] = {
    {"empty", "", {}},
    {"rows", "H\n@1,a,Debug\n@2,,Critical\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 row |@2||Critical|"}},
    {"line ends of the other system", "Time,Notes\r\n@1,a\r\n@2,\"b\r\nc\"\r\nraw\r\n@3,d\r\r\n",
     {"1 header |Time|Notes|", "2 row |@1|a|", "3 row |@2|b\\nc|", "5 text |raw|",
      "6 row |@3|d|"}},
    {"returns under plain line ends are kept", "Time,Notes\n@1,\"b\r\nc\"\n",
     {"1 header |Time|Notes|", "2 row |@1|b\\r\\nc|"}},
    {"byte-order mark", "\xEF\xBB\xBFH\n", {"1 text |H|"}},
    {"byte-order mark and header", "\xEF\xBB\xBFTime,a\n@1,2\n",
     {"1 header |Time|a|", "2 row |@1|2|"}},
    {"two bytes of a mark", "\xEF\xBB", {"1 text cut-off no-utf8 |\xEF\xBB|"}},
    {"quotes", "H\n@1,\"a, \"\"b\"\"\",Debug\n@2,\"\",Debug\n@3,a\"b\",Debug\n@4,\"\"\"\",Debug\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a, \"b\"|Debug|", "3 row |@2||Debug|",
      "4 row |@3|a\"b\"|Debug|", "5 row |@4|\"|Debug|"}},
    {"text behind a quote", "H\n@1,\"a\"b\"c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row stray-quote |@1|ab\"c|Debug|"}},
    {"line ends in cells", "H\n@1,\"a\n\nb\",Debug\n@2,c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a\\n\\nb|Debug|", "5 row |@2|c|Debug|"}},
    {"raw lines", "H\nraw, \"x\n\n@1 no cell\n@1,a,Debug\n\"raw\n",
     {"1 header |Time|Notes| Level|", "2 text |raw, \"x|", "3 text ||", "4 text |@1 no cell|",
      "5 row |@1|a|Debug|", "6 text |\"raw|"}},
    {"raw lines without a header", "raw\n1,2\n@1 a\n@2,b\n\"c\nd\"\ne\n",
     {"1 text |raw|", "2 text |1,2|", "3 text |@1 a|", "4 text |@2,b|", "5 text |\"c\\nd\"|",
      "7 text |e|"}},
    {"a repeated and another header", "H\n@1,a,Debug\nH\nTime,x\n@2,3\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 header |Time|Notes| Level|",
      "4 header |Time|x|", "5 row |@2|3|"}},
    {"a header without time", "a,b\n1,2\nraw\n3\n4,5,6\na,b\n\"x\ny\",z\n",
     {"1 header |a|b|", "2 row |1|2|", "3 text |raw|", "4 text |3|", "5 row other-width |4|5|6|",
      "6 header |a|b|", "7 row |x\\ny|z|"}},
    {"no header in the first line", "1,2\n", {"1 text |1,2|"}},
    {"one column is no header", "Time\n", {"1 text cut-off |Time|"}},
    {"widths", "H\n@1,Debug\n@2,a,b,c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row other-width |@1|Debug|",
      "3 row other-width |@2|a|b|c|Debug|"}},

    {"cut off at the end", "H\n@1,a,Debug\n@2,b,Deb",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 row cut-off |@2|b|Deb|"}},
    {"cut off before the line end", "H\n@1,a,Debug",
     {"1 header |Time|Notes| Level|", "2 row cut-off |@1|a|Debug|"}},
    {"cut off in the line end", "H\n@1,a,Debug\r\r\n@2,b,Debug\r",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 row cut-off |@2|b|Debug\\r|"}},
    {"cut off and gone on with", "H\n@1,a,Info\nH\n@2\n@3,\n@4,b,\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off |@1|a|Info|", "3 header |Time|Notes| Level|",
      "4 row cut-off |@2|", "5 row cut-off |@3||", "6 row cut-off |@4|b||"}},
    {"cut off in the time", "H\n@1,a,Debug\n2024-03-07 0\n202\n3\n2025\n@1x\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 row cut-off |2024-03-07 0|",
      "4 row cut-off |202|", "5 text |3|", "6 text |2025|", "7 text |@1x|"}},
    {"cut off in the header", "Time,TestType,It\nH\n@1,a,Debug\nTime,No\n",
     {"1 header cut-off |Time|TestType|It|", "2 header |Time|Notes| Level|", "3 row |@1|a|Debug|",
      "4 header cut-off |Time|No|"}},
    {"cut off in the first word", "Ti\nH\n", {"1 text cut-off |Ti|", "2 header |Time|Notes| Level|"}},
    {"cut off in quotes", "H\n@1,\"a\n@2,b,Debug\n@3,c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a|", "3 row |@2|b|Debug|",
      "4 row |@3|c|Debug|"}},
    {"cut off in quotes, then quotes", "H\n@1,\"a\nb\nH\n@2,\"c\nd\",Debug\n@3,\",e\",Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a\\nb|",
      "4 header |Time|Notes| Level|", "5 row |@2|c\\nd|Debug|", "7 row |@3|,e|Debug|"}},
    {"cut off twice in quotes", "H\n@1,\"a\n@2,\"b\n@3,c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a|",
      "3 row cut-off open-quote |@2|b|", "4 row |@3|c|Debug|"}},
    {"cut off at the end in quotes", "H\n@1,\"a\nb, \"\"c",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a\\nb, \"c|"}},
    {"cut off in quotes without time", "a,b\n1,\"x\n2,3\n4,\"y\nz\"\n5,\"u",
     {"1 header |a|b|", "2 row cut-off open-quote |1|x|", "3 row |2|3|", "4 row |4|y\\nz|",
      "6 row cut-off open-quote |5|u|"}},
    {"rows of a log in a cell", "H\n@1,\"log:\n@2,b,Debug\nTime,x\nend\",Debug\n@3,c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|log:\\n@2,b,Debug\\nTime,x\\nend|Debug|",
      "6 row |@3|c|Debug|"},
     false},

    {"NUL bytes at the end", "H\n@1,a,Debug\n~~~~",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 nuls 4"}},
    {"NUL bytes behind a row that is cut off", "H\n@1,a,De~~",
     {"1 header |Time|Notes| Level|", "2 row cut-off |@1|a|De|", "2 nuls 2"}},
    {"NUL bytes, then more", "H\n@1,\"a~~~~~~~~\nH\n@2,b,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a|", "2 nuls 9",
      "3 header |Time|Notes| Level|", "4 row |@2|b|Debug|"}},
    {"NUL bytes in the middle", "H\n@1,a~~~~~~~~bc,Debug\n@2,d~e~~f,Debug\n~@3,g,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off |@1|a|", "2 nuls 8",
      "2 text no-start |bc,Debug|", "3 row |@2|d~e~~f|Debug|", "4 nuls 1", "4 row |@3|g|Debug|"}},
    {"NUL bytes alone", "~~~~~~~~~~~~~~~~~~~~~", {"1 nuls 21"}},
    {"NUL bytes before a row without header", "~~\r\n@1,a,Debug\n",
     {"1 nuls 4", "2 text |@1,a,Debug|"}},
    {"bytes that are no UTF-8", "H\n@1,\xC3\xA4\xF0\x9F\x98\x80,Debug\n@2,\xE4,Debug\nx\xC0\x80\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|\xC3\xA4\xF0\x9F\x98\x80|Debug|",
      "3 row no-utf8 |@2|\xE4|Debug|", "4 text no-utf8 |x\xC0\x80|"}},
};

TEST(LogReader, ReadsWhatALogMayHold) {
  const TemporaryFolder folder;
  const std::string path = folder / "log.csv";
  for (const Case& row : kCases) {
    const std::string bytes = Expand(row.text);
    WriteBytes(path, bytes);
    EXPECT_EQ(ShowAll(path), row.rows) << row.name;
    for (const std::size_t size : {1U, 2U, 3U, 5U, 17U, 64U}) {
      EXPECT_EQ(ShowAll(path, {.buffer_size = size}), row.rows) << row.name << ", by " << size;
    }
    EXPECT_EQ(ShowAll(path, {.buffer_size = 4, .keep_open = false}), row.rows) << row.name;
    if (!row.grows_alike) continue;
    EXPECT_EQ(ShowGrowing(path, bytes), row.rows) << row.name << ", growing";
  }
}

}  // namespace
