// Reading whole and damaged logs. In the tables, "@5" stands for a time stamp of second 5, "~" for
// a NUL byte, and "H" before a line for the header of most tests.

#include "vexor/logging/log_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "logging/log_test_tools.h"
#include "vexor/logging/log_files.h"
#include "vexor/logging/log_merge.h"

namespace {

using vexor::kNoLogTime;
using vexor::LogDamage;
using vexor::LogFileChange;
using vexor::LogReader;
using vexor::LogReaderOptions;
using vexor::LogRow;
using vexor::LogRowKind;

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
  constexpr const char* kDamages[] = {"cut-off",     "no-start",   "too-long",   "no-utf8",
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

// Returns the rows until `Next` returns false.
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
  const std::string bytes = ReadBytes(path);
  EXPECT_EQ(reader.Offset(), bytes.size());
  EXPECT_EQ(reader.Line(), 1U + std::count(bytes.begin(), bytes.end(), '\n'));
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
    {"rows",
     "H\n@1,a,Debug\n@2,,Critical\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 row |@2||Critical|"}},
    {"line ends of the other system",
     "Time,Notes\r\n@1,a\r\n@2,\"b\r\nc\"\r\nraw\r\n@3,d\r\r\n",
     {"1 header |Time|Notes|", "2 row |@1|a|", "3 row |@2|b\\nc|", "5 text |raw|", "6 row |@3|d|"}},
    {"returns under plain line ends are kept",
     "Time,Notes\n@1,\"b\r\nc\"\n",
     {"1 header |Time|Notes|", "2 row |@1|b\\r\\nc|"}},
    {"byte-order mark", "\xEF\xBB\xBFH\n", {"1 text |H|"}},
    {"byte-order mark and header",
     "\xEF\xBB\xBFTime,a\n@1,2\n",
     {"1 header |Time|a|", "2 row |@1|2|"}},
    {"two bytes of a mark", "\xEF\xBB", {"1 text cut-off no-utf8 |\xEF\xBB|"}},
    {"quotes",
     "H\n@1,\"a, \"\"b\"\"\",Debug\n@2,\"\",Debug\n@3,a\"b\",Debug\n@4,\"\"\"\",Debug\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a, \"b\"|Debug|", "3 row |@2||Debug|",
      "4 row |@3|a\"b\"|Debug|", "5 row |@4|\"|Debug|"}},
    {"text behind a quote",
     "H\n@1,\"a\"b\"c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row stray-quote |@1|ab\"c|Debug|"}},
    {"line ends in cells",
     "H\n@1,\"a\n\nb\",Debug\n@2,c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a\\n\\nb|Debug|", "5 row |@2|c|Debug|"}},
    {"raw lines",
     "H\nraw, \"x\n\n@1 no cell\n@1,a,Debug\n\"raw\n",
     {"1 header |Time|Notes| Level|", "2 text |raw, \"x|", "3 text ||", "4 text |@1 no cell|",
      "5 row |@1|a|Debug|", "6 text |\"raw|"}},
    {"raw lines without a header",
     "raw\n1,2\n@1 a\n@2,b\n\"c\nd\"\ne\n",
     {"1 text |raw|", "2 text |1,2|", "3 text |@1 a|", "4 text |@2,b|", R"(5 text |"c\nd"|)",
      "7 text |e|"}},
    {"a repeated and another header",
     "H\n@1,a,Debug\nH\nTime,x\n@2,3\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 header |Time|Notes| Level|",
      "4 header |Time|x|", "5 row |@2|3|"}},
    {"a header without time",
     "a,b\n1,2\nraw\n3\n4,5,6\na,b\n\"x\ny\",z\n",
     {"1 header |a|b|", "2 row |1|2|", "3 text |raw|", "4 text |3|", "5 row other-width |4|5|6|",
      "6 header |a|b|", "7 row |x\\ny|z|"}},
    {"no header in the first line", "1,2\n", {"1 text |1,2|"}},
    {"one column is no header", "Time\n", {"1 text cut-off |Time|"}},
    {"widths",
     "H\n@1,Debug\n@2,a,b,c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row other-width |@1|Debug|",
      "3 row other-width |@2|a|b|c|Debug|"}},

    {"cut off at the end",
     "H\n@1,a,Debug\n@2,b,Deb",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 row cut-off |@2|b|Deb|"}},
    {"cut off before the line end",
     "H\n@1,a,Debug",
     {"1 header |Time|Notes| Level|", "2 row cut-off |@1|a|Debug|"}},
    {"cut off in the line end",
     "H\n@1,a,Debug\r\r\n@2,b,Debug\r",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 row cut-off |@2|b|Debug\\r|"}},
    {"cut off and gone on with",
     "H\n@1,a,Info\nH\n@2\n@3,\n@4,b,\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off |@1|a|Info|", "3 header |Time|Notes| Level|",
      "4 row cut-off |@2|", "5 row cut-off |@3||", "6 row cut-off |@4|b||"}},
    {"cut off in the time",
     "H\n@1,a,Debug\n2024-03-07 0\n202\n3\n2025\n@1x\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 row cut-off |2024-03-07 0|",
      "4 row cut-off |202|", "5 text |3|", "6 text |2025|", "7 text |@1x|"}},
    {"no date of what is no stamp",
     "H\n2024-03-07 3\n:00:00.000x\n2\n@1,a,Debug\n3\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off |2024-03-07 3|", "3 text |:00:00.000x|",
      "4 row cut-off |2|", "5 row |@1|a|Debug|", "6 text |3|"}},
    {"cut off in the header",
     "Time,TestType,It\nH\n@1,a,Debug\nTime,No\n",
     {"1 header cut-off |Time|TestType|It|", "2 header |Time|Notes| Level|", "3 row |@1|a|Debug|",
      "4 header cut-off |Time|No|"}},
    {"cut off in the line end of the header",
     "Time,Notes\r~~~~~~~~\r\nTime,Notes\r\n@1,a\r\n",
     {"1 header cut-off |Time|Notes\\r|", "1 nuls 10", "2 header |Time|Notes|", "3 row |@1|a|"}},
    {"cut off in the first word",
     "Ti\nH\n",
     {"1 text cut-off |Ti|", "2 header |Time|Notes| Level|"}},
    {"cut off in quotes",
     "H\n@1,\"a\n@2,b,Debug\n@3,c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a|", "3 row |@2|b|Debug|",
      "4 row |@3|c|Debug|"}},
    {"cut off in quotes, then quotes",
     "H\n@1,\"a\nb\nH\n@2,\"c\nd\",Debug\n@3,\",e\",Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a\\nb|",
      "4 header |Time|Notes| Level|", "5 row |@2|c\\nd|Debug|", "7 row |@3|,e|Debug|"}},
    {"cut off twice in quotes",
     "H\n@1,\"a\n@2,\"b\n@3,c,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a|",
      "3 row cut-off open-quote |@2|b|", "4 row |@3|c|Debug|"}},
    {"cut off at the end in quotes",
     "H\n@1,\"a\nb, \"\"c",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a\\nb, \"c|"}},
    {"cut off in quotes without time",
     "a,b\n1,\"x\n2,3\n4,\"y\nz\"\n5,\"u",
     {"1 header |a|b|", "2 row cut-off open-quote |1|x|", "3 row |2|3|", "4 row |4|y\\nz|",
      "6 row cut-off open-quote |5|u|"}},
    {"rows of a log in a cell",
     "H\n@1,\"log:\n@2,b,Debug\nTime,x\nend\",Debug\n@3,c,Debug\n",
     {"1 header |Time|Notes| Level|", R"(2 row |@1|log:\n@2,b,Debug\nTime,x\nend|Debug|)",
      "6 row |@3|c|Debug|"},
     false},

    {"NUL bytes at the end",
     "H\n@1,a,Debug\n~~~~",
     {"1 header |Time|Notes| Level|", "2 row |@1|a|Debug|", "3 nuls 4"}},
    {"NUL bytes behind a row that is cut off",
     "H\n@1,a,De~~",
     {"1 header |Time|Notes| Level|", "2 row cut-off |@1|a|De|", "2 nuls 2"}},
    {"NUL bytes, then more",
     "H\n@1,\"a~~~~~~~~\nH\n@2,b,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off open-quote |@1|a|", "2 nuls 9",
      "3 header |Time|Notes| Level|", "4 row |@2|b|Debug|"}},
    {"NUL bytes in the middle",
     "H\n@1,a~~~~~~~~bc,Debug\n@2,d~e~~f,Debug\n~@3,g,Debug\n",
     {"1 header |Time|Notes| Level|", "2 row cut-off |@1|a|", "2 nuls 8",
      "2 text no-start |bc,Debug|", "3 row |@2|d~e~~f|Debug|", "4 nuls 1", "4 row |@3|g|Debug|"}},
    {"NUL bytes alone", "~~~~~~~~~~~~~~~~~~~~~", {"1 nuls 21"}},
    {"NUL bytes before a row without header",
     "~~\r\n@1,a,Debug\n",
     {"1 nuls 4", "2 text |@1,a,Debug|"}},
    {"bytes that are no UTF-8",
     "H\n@1,\xC3\xA4\xF0\x9F\x98\x80,Debug\n@2,\xE4,Debug\nx\xC0\x80\n",
     {"1 header |Time|Notes| Level|", "2 row |@1|\xC3\xA4\xF0\x9F\x98\x80|Debug|",
      "3 row no-utf8 |@2|\xE4|Debug|", "4 text no-utf8 |x\xC0\x80|"}},
};

TEST(LogReader, ReadsWholeAndDamagedLogs) {
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

std::string SuiteHeader() {
  const TemporaryFolder folder;
  VexorLogging log;
  Open(log, folder, "log");
  log.LogHeaderLine();
  log.CloseFile(false);
  return ReadLog(folder / "log.csv");
}

// The row that a line makes under the suite's header.
class SuiteRow {
 public:
  explicit SuiteRow(const std::string& line) {
    static const std::string header = SuiteHeader();
    WriteBytes(folder_ / "log.csv", header + line + "\n");
    reader_.Open(folder_ / "log.csv");
    EXPECT_TRUE(reader_.Next() && reader_.Next());
  }
  [[nodiscard]] LogRow Row() const { return reader_.Row(); }

 private:
  TemporaryFolder folder_;
  LogReader reader_;
};

std::string WithCells(const std::string& test, const std::string& result, const std::string& status,
                      const std::string& notes, const std::string& level) {
  return Expand("@7," + test + ",3,,," + result + ",2,," + status + "," + notes + ",1e3" +
                std::string(33, ',') + level);
}

TEST(LogRow, ConvertsCellsToValues) {
  const SuiteRow whole(WithCells("GSTATES", "PASS", "x", "n", " Critical "));
  const LogRow row = whole.Row();
  EXPECT_EQ(row.Kind(), LogRowKind::kRow);
  EXPECT_EQ(vexor::FormatLogTime(row.Time()), Expand("@7"));
  EXPECT_EQ(row.Test(), PM_TEST_GSTATES);
  EXPECT_EQ(row.Level(), TRACE_CRITICAL);
  EXPECT_EQ(row.Result(), vexor::LogResult::kPass);
  EXPECT_EQ(row.Number("FailCount"), 2);
  EXPECT_EQ(row.Number("freq(MHz)"), 1000);
  EXPECT_EQ(row.Number("Notes"), std::nullopt);
  EXPECT_EQ(row.Number("no such column"), std::nullopt);
  EXPECT_EQ(row.At(vexor::kNoColumn), "");
  EXPECT_EQ(row.Columns().size(), 44U);
  EXPECT_EQ(row.Columns().back(), "Level");
  EXPECT_FALSE(row.IsVersionNote());

  for (int id = PM_TEST_VEXOR; id <= PM_TEST_END; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    const SuiteRow named(WithCells(GetPMTestName(test), "", "", "", "Debug"));
    EXPECT_EQ(named.Row().Test(), test == PM_TEST_ALL ? PM_TEST_MAX : test);
  }
  struct ResultCase {
    const char* result;
    const char* status;
    vexor::LogResult expected;
  };
  using enum vexor::LogResult;
  const ResultCase kResults[] = {
      {"pass", "fail", kPass}, {"", "passed", kPass}, {"ok", "", kPass},
      {"Fail ", "", kFail},    {"not ok", "", kFail}, {" ", " FAILED", kFail},
      {"", "error", kFail},    {"", "ok", kNone},     {"skipped", "fail", kNone},
      {"", "", kNone},
  };
  for (const ResultCase& c : kResults) {
    const SuiteRow judged(WithCells("", c.result, c.status, "", "Debug"));
    EXPECT_EQ(judged.Row().Result(), c.expected) << c.result << "/" << c.status;
  }
  const std::pair<const char*, std::optional<double>> kNumbers[] = {
      {"-2.0", -2}, {" 97.5 % ", 97.5}, {"0x1F", 31}, {".5", .5}, {"1e400", {}},
      {"1,5", {}},  {"inf", {}},        {"nan", {}},  {"-", {}},  {"%", {}},
      {"+1", {}},   {"1 2", {}},        {"-inf", {}}, {"0x", {}},
  };
  for (const auto& [text, number] : kNumbers) {
    const SuiteRow counted(WithCells("", "", "", '"' + std::string(text) + '"', "Debug"));
    EXPECT_EQ(counted.Row().Number("Notes"), number) << text;
  }
}

TEST(LogRow, FindsAQuotedLastColumn) {
  const TemporaryFolder folder;
  WriteBytes(folder / "log.csv", Expand("Time,Notes\n@1,\"" + std::string(20, 'x') + ", y\"\n"));
  LogReader reader;
  reader.Open(folder / "log.csv");
  ASSERT_TRUE(reader.Next() && reader.Next());
  EXPECT_EQ(reader.Row().At("Notes"), std::string(20, 'x') + ", y");
}

TEST(LogReader, AcceptsHeadersOfUpTo4096Columns) {
  const TemporaryFolder folder;
  for (const int columns : {4096, 4097}) {
    std::string header = "Time";
    for (int i = 1; i < columns; ++i) header += "," + std::to_string(i) + "x";
    WriteBytes(folder / "log.csv", header + "\n");
    LogReader reader;
    reader.Open(folder / "log.csv");
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Row().Kind(), columns == 4096 ? LogRowKind::kHeader : LogRowKind::kText);
  }
}

TEST(LogTime, IsParsedAndFormatted) {
  for (const char* const stamp :
       {"2024-03-07 09:05:02.017", "1970-01-01 00:00:00.000", "2024-02-29 23:59:59.999",
        "0000-01-01 00:00:00.000", "9999-12-31 23:59:59.999"}) {
    EXPECT_EQ(vexor::FormatLogTime(vexor::ParseLogTime(stamp)), stamp);
  }
  EXPECT_EQ(vexor::ParseLogTime("1970-01-02 00:00:01.002"), 86401002);
  EXPECT_EQ(vexor::ParseLogTime("1969-12-31 23:59:59.999"), -1);
  for (const char* const text :
       {"", "2024-03-07", "2023-02-29 00:00:00.000", "2024-13-01 00:00:00.000",
        "2024-03-07 24:00:00.000", "2024-03-07 00:60:00.000", "2024-03-07 00:00:60.000",
        "2024-03-07T09:05:02.017", "2024-03-07 09:05:02,017", "2024-03-07 09:05:02.0170",
        "2024-3-07 09:05:02.0170", " 024-03-07 09:05:02.017"}) {
    EXPECT_EQ(vexor::ParseLogTime(text), kNoLogTime) << text;
  }
  EXPECT_EQ(vexor::ParseLogTime(std::string(11, '\0') + "09:05:02.017"), kNoLogTime);
  EXPECT_EQ(vexor::FormatLogTime(kNoLogTime), "");
  EXPECT_EQ(vexor::FormatLogTime(std::numeric_limits<vexor::LogTime>::max()), "");
}

// ---- Symmetry with the writer.

// On a system with other line ends, those in a text are read as line feeds.
std::string AsRead(std::string text, bool has_returns) {
  if (text.ends_with('\n')) {
    text.pop_back();
    if (text.ends_with('\r')) text.pop_back();
  }
  std::string read;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!has_returns || text.substr(i, 2) != "\r\n") read += text[i];
  }
  return read;
}

std::string RandomText(std::minstd_rand& random) {
  const std::string kPieces[] = {"a",
                                 " ",
                                 ",",
                                 "\"",
                                 "\"\"",
                                 "\n",
                                 "\r\n",
                                 "\r",
                                 "\xC3\xA4",
                                 "\t",
                                 std::string(1, '\0'),
                                 Expand("@1"),
                                 Expand("\n@2,b"),
                                 "\nTime,",
                                 "Debug",
                                 Expand("H\n")};
  std::string text;
  for (auto count = random() % 6; count > 0; --count) {
    text += kPieces[random() % std::size(kPieces)];
  }
  return text;
}

TEST(LogReader, ReadsBackWhatWasLogged) {
  const QuietConsole quiet;
  const TemporaryFolder folder;
  std::minstd_rand random(7);
  VexorLogging log;
  log.SetLinesLimitToSplit(40);
  ASSERT_TRUE(log.Initialize(folder.path(), "run", TRACE_DEBUG, LOG_FILE_NEW));
  VexorLogging::SetThreadAffinityLog(std::this_thread::get_id(), 0, 1, 2, 3);
  using Texts = std::vector<std::pair<std::string, std::string>>;  // by column; "" is a raw line
  std::vector<Texts> logged;
  for (int i = 0; i < 120; ++i) {
    const std::string a = RandomText(random);
    const std::string b = RandomText(random);
    const std::string c = RandomText(random);
    switch (i % 5) {
      case 0:
        log.LogNote(a, TRACE_DEBUG);
        logged.push_back({{"Notes", a}});
        break;
      case 1:
        log.LogMsgData(a, TRACE_CRITICAL, b, c);
        logged.push_back({{"Notes", a}, {"Request", b}, {"Status", c}});
        break;
      case 2:
        log.LogWorkloadData(a, TRACE_DEBUG, b);
        logged.push_back({{"Notes", a}, {"Scope", b}});
        break;
      case 3: {
        std::vector<std::string> texts(i % 2 == 0 ? 2 : 42, b);
        texts[1] = c;
        log.LogData(texts, TRACE_DEBUG);
        logged.push_back({{"Iter", b}, {"Scope", c}});
        break;
      }
      default: {
        const std::string raw = "raw, \"" + std::to_string(i);
        log.LogLine(raw, TRACE_DEBUG);
        logged.push_back({{"", raw}});
      }
    }
  }
  log.CloseFile(true);

  std::size_t next = 0;
  std::size_t notes = 0;
  const vexor::FoundLogs found = vexor::FindLogs({folder.path()});
  ASSERT_EQ(found.series.size(), 1U);
  EXPECT_GT(found.series[0].files.size(), 3U);
  EXPECT_TRUE(found.series[0].missing.empty() && found.series[0].leftovers.empty());
  const bool has_returns = ReadBytes(found.series[0].files[0].path).find("Level\r\n") < 1000;
  vexor::LogMerge merge(found.series);
  while (merge.Next()) {
    const LogRow row = merge.Row();
    if (row.Kind() == LogRowKind::kHeader) continue;
    if (row.IsVersionNote()) {
      ++notes;
      continue;
    }
    ASSERT_LT(next, logged.size());
    for (const auto& [column, text] : logged[next]) {
      const std::string_view read = column.empty() ? row.Text() : row.At(column);
      ASSERT_EQ(Escape(read), Escape(AsRead(text, has_returns))) << next;
    }
    if (row.Kind() == LogRowKind::kRow) {
      EXPECT_TRUE(row.Level() && row.Time() != kNoLogTime && row.At("Affinity") == "00:01:002:3");
      EXPECT_EQ(row.Test(), PM_TEST_VEXOR);
      EXPECT_EQ(row.Has(LogDamage::kOtherWidth), row.Width() == 46) << Show(row);
    }
    EXPECT_TRUE(!row.IsDamaged() || row.Width() == 46) << Show(row);
    ++next;
  }
  EXPECT_EQ(next, logged.size());
  EXPECT_EQ(notes, 1U);
  EXPECT_TRUE(merge.Faults().empty());
}

// ---- Files.

// The kinds, marks and sizes of the rows.
Shown ShowSizes(const std::string& path, LogReaderOptions options) {
  LogReader reader(std::move(options));
  EXPECT_FALSE(reader.Open(path));
  Shown shown;
  while (reader.Next()) {
    const std::string all = Show(reader.Row());
    shown.push_back(all.substr(0, all.find('|')) + std::to_string(reader.Row().Size()));
  }
  return shown;
}

TEST(LogReader, CutsRowsThatAreTooLong) {
  const TemporaryFolder folder;
  const std::string path = folder / "log.csv";
  std::string lines;
  std::string characters;
  for (int i = 0; i < 600; ++i) lines += "x\n";
  for (int i = 0; i < 600; ++i) characters += "\xC3\xA4";
  const std::string much = std::string(3000, 'x') + "\"~" + std::string(2000, 'x');
  WriteBytes(path, Expand("H\n@1," + much + ",Debug\n@2,b,Debug\n" + characters + "y\nz" +
                          characters + "\n" + much + "~~~~~~~~\n@3,c,Debug\n"));
  for (const std::size_t size : {100U, 100000U}) {
    EXPECT_EQ(ShowSizes(path, {.row_limit = 1024, .buffer_size = size}),
              (Shown{"1 header 18", "2 row too-long 1024", "3 row 32", "4 text too-long 1024",
                     "5 text too-long 1023", "6 text too-long 1024", "6 nuls 99", "7 row 32"}));
  }
  WriteBytes(path, Expand("H\n@1,\"" + lines + "@2,b,Debug\n"));
  const Shown shown = ShowSizes(path, {.row_limit = 1024, .buffer_size = 100});
  ASSERT_EQ(shown.size(), 602U);
  EXPECT_EQ(shown[1], "2 row cut-off open-quote 27");
  EXPECT_EQ(shown[2], "3 text 2");
  EXPECT_EQ(shown[601], "602 row 32");
}

// Rows for which a reader would search the same bytes again and again unless it remembers them.
TEST(LogReader, TakesLinearTime) {
  constexpr std::size_t kSize = 600'000;
  const TemporaryFolder folder;
  const std::string path = folder / "log.csv";
  const std::pair<const char*, const char*> kTexts[] = {
      {"a,b\n", "a\",\"\n"},
      {"a,b\n", "\"\n"},
      {"H\n", "@1,\"\n"},
      {"H\n", "@1,\",\"\n"},
      {"H\n", "@1,\",\",\",\"\n"},
      {"H\n@1,\"", "\n"},
      {"a,b\n", "\"a\"\",\n"},
      {"H\n", "~a"},
      {"", "\""},
      {"", "\"\",\n"},
      {"", "~\n"},
      {"Time,", "x,"},
      {"", ","},
      {"", "\r"},
      {"@1,\"", "\r\n@2,"},
  };
  for (const auto& [begin, part] : kTexts) {
    std::string bytes = Expand(begin);
    const std::string expanded = Expand(part);
    while (bytes.size() < kSize) bytes += expanded;
    WriteBytes(path, bytes);
    LogReader reader({.buffer_size = 1000});
    reader.Open(path);
    std::uint64_t size = 0;
    std::size_t cells = 0;
    while (reader.Next()) {
      size += reader.Row().Size();
      cells += reader.Row().Width();
    }
    EXPECT_TRUE(size <= bytes.size() && cells <= bytes.size() + 1) << begin << part;
    EXPECT_EQ(reader.Offset(), bytes.size()) << begin << part;
  }
}

TEST(LogReader, ReportsFilesThatCannotBeRead) {
  const TemporaryFolder folder;
  LogReader reader;
  EXPECT_FALSE(reader.Next());
  EXPECT_EQ(reader.Open(folder / "none.csv"), std::errc::no_such_file_or_directory);
  EXPECT_FALSE(reader.Next());
  EXPECT_EQ(reader.Open(folder.path()), std::errc::is_a_directory);
  EXPECT_FALSE(reader.Next());
  EXPECT_EQ(reader.Error(), std::errc::is_a_directory);
  WriteBytes(folder / "log.csv", "a\n");
  EXPECT_FALSE(reader.Open(folder / "log.csv"));
  EXPECT_TRUE(reader.Next());
  EXPECT_EQ(Show(reader.Row()), "1 text |a|");
}

TEST(LogReader, FollowsAFileThatGrows) {
  const TemporaryFolder folder;
  const std::string path = folder / "log.csv";
  const auto append = [&](std::string_view text) {
    std::ofstream(path, std::ios::binary | std::ios::app) << Expand(text);
  };
  LogReader reader({.follow = true});
  const auto more = [&] {
    Shown shown;
    ShowMore(reader, shown);
    return shown;
  };
  WriteBytes(path, Expand("H\n@1,a,De"));
  ASSERT_FALSE(reader.Open(path));
  EXPECT_EQ(more(), (Shown{"1 header |Time|Notes| Level|"}));
  append("bug\n@2,\"b\n");
  EXPECT_EQ(more(), (Shown{"2 row |@1|a|Debug|"}));
  EXPECT_EQ(more(), Shown());
  append("c\",Debug\n");
  EXPECT_EQ(more(), (Shown{"3 row |@2|b\\nc|Debug|"}));
  // Cut off in a cell, and another process goes on.
  append("@3,\"d\nH\n@4,e,Debug\n");
  EXPECT_EQ(more(), (Shown{"5 row cut-off open-quote |@3|d|", "6 header |Time|Notes| Level|",
                           "7 row |@4|e|Debug|"}));
  append("@5,f,");
  EXPECT_EQ(more(), Shown());
  EXPECT_EQ(reader.Change(), LogFileChange::kNone);
  reader.Finish();
  EXPECT_EQ(more(), (Shown{"8 row cut-off |@5|f||"}));
}

TEST(LogReader, NoticesThatAFileShrinksOrIsReplaced) {
  if (std::filesystem::path::preferred_separator == '\\') {
    GTEST_SKIP() << "an open file cannot be replaced there";
  }
  const TemporaryFolder folder;
  const std::string path = folder / "log.csv";
  const std::string first = Expand("H\n@1,a,Debug\n");
  const auto change_after = [&](const auto& act, bool follow = true) {
    WriteBytes(path, first);
    LogReader reader({.follow = follow, .buffer_size = 10});
    reader.Open(path);
    EXPECT_TRUE(reader.Next());
    if (follow) {
      EXPECT_TRUE(reader.Next());
      EXPECT_FALSE(reader.Next());
      EXPECT_EQ(reader.Change(), LogFileChange::kNone);
    }
    act();
    while (reader.Next()) {
    }
    EXPECT_FALSE(reader.Error());
    return reader.Change();
  };
  EXPECT_EQ(change_after([] {}), LogFileChange::kNone);
  EXPECT_EQ(change_after([&] { std::filesystem::resize_file(path, 3); }), LogFileChange::kShrunk);
  EXPECT_EQ(change_after([&] { std::filesystem::resize_file(path, 3); }, false),
            LogFileChange::kShrunk);
  EXPECT_EQ(change_after([&] { WriteBytes(path, Expand("H\n@2,b,Debug\n@3,c,Debug\n")); }),
            LogFileChange::kReplaced);
  EXPECT_EQ(change_after([&] {
              WriteBytes(folder / "new", first);
              std::filesystem::rename(folder / "new", path);
            }),
            LogFileChange::kReplaced);
  EXPECT_EQ(change_after([&] { std::filesystem::remove(path); }), LogFileChange::kRemoved);
}

}  // namespace
