// Finding logs in folders, and merging them in order of time.

#include "vexor/logging/log_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "temporary_folder.h"
#include "vexor/logging/log_merge.h"

namespace {

using vexor::FoundLogs;
using vexor::FoundSeries;
using vexor::LogMerge;
using vexor::NoLog;

// A log whose rows have these times, in seconds.
std::string LogOf(const std::vector<int>& seconds) {
  std::string text = "Time,Notes\n";
  for (const int second : seconds) {
    text +=
        vexor::FormatLogTime(vexor::LogTime{second} * 1000) + "," + std::to_string(second) + "\n";
  }
  return text;
}

// "run: 0 1 | 2 missing 3-4": the numbers of files and, behind "|", of leftovers.
std::string Show(const FoundSeries& series) {
  std::string shown = std::filesystem::path(series.name).filename().string() + ":";
  const auto add = [&](const vexor::FoundLog& file) {
    shown += file.number ? " " + std::to_string(*file.number) : " -";
  };
  for (const auto& file : series.files) add(file);
  if (!series.leftovers.empty()) shown += " |";
  for (const auto& file : series.leftovers) add(file);
  if (!series.missing.empty()) shown += " missing";
  for (const auto& [first, last] : series.missing) {
    shown += " " + std::to_string(first) + "-" + std::to_string(last);
  }
  return shown;
}

std::vector<std::string> Show(const FoundLogs& found) {
  std::vector<std::string> shown;
  for (const FoundSeries& series : found.series) shown.push_back(Show(series));
  for (const NoLog& other : found.others) {
    constexpr const char* kReasons[] = {"unreadable", "other name", "binary"};
    shown.push_back(std::filesystem::path(other.path).filename().string() + " " +
                    kReasons[static_cast<std::size_t>(other.reason)]);
  }
  return shown;
}

TEST(FindLogs, GroupsTheFilesOfASeries) {
  struct Case {
    std::vector<std::pair<const char*, std::vector<int>>> files;  // and the times in them
    std::vector<std::string> found;
  };
  const Case kCases[] = {
      {{}, {}},
      {{{"run_10.csv", {5}}, {"run_2.csv", {4}}, {"run_0.csv", {1, 9}}},
       {"run: 0 2 10 missing 1-1 3-9"}},
      {{{"run.csv", {1}}, {"run_1.csv", {2}}, {"other_0.CSV", {}}}, {"other: 0", "run: - 1"}},
      {{{"run.csv", {1}}, {"run_0.csv", {2}}, {"run_1.csv", {3}}}, {"run: -", "run: 0 1"}},
      {{{"lab_7.csv", {1}}}, {"lab: 7"}},
      {{{"lab_7_0.csv", {1}}, {"lab_7_1.csv", {2}}}, {"lab_7: 0 1"}},
      {{{"a_01.csv", {1}}, {"a_0x2.csv", {2}}, {"a_4294967295.csv", {3}}},
       {"a_01: -", "a_0x2: -", "a_4294967295: -"}},
      {{{"VexorLog_20240307_190502017.csv", {1}}, {"VexorLog_20240307_190502017_1.csv", {2}}},
       {"VexorLog_20240307_190502017: - 1"}},
      // The last run began at 50 and has not reached the files of an earlier one.
      {{{"run_0.csv", {50}},
        {"run_1.csv", {60}},
        {"run_2.csv", {20}},
        {"run_3.csv", {}},
        {"run_4.csv", {30}}},
       {"run: 0 1 3 | 2 4 missing 2-2"}},
      // The clock was set back during the run, but not before its start.
      {{{"run_0.csv", {50, 90}}, {"run_1.csv", {60}}}, {"run: 0 1"}},
  };
  for (const Case& c : kCases) {
    const TemporaryFolder folder;
    for (const auto& [name, seconds] : c.files) WriteBytes(folder / name, LogOf(seconds));
    EXPECT_EQ(Show(vexor::FindLogs({folder.path()})), c.found);
  }
}

TEST(FindLogs, ListsPathsThatAreNotLogs) {
  const TemporaryFolder folder;
  const TemporaryFolder second;
  WriteBytes(folder / "b_0.csv", LogOf({1}));
  WriteBytes(folder / "empty.csv", "");
  WriteBytes(folder / "lost.csv", std::string(5000, '\0'));
  WriteBytes(folder / "notes.txt", "text");
  WriteBytes(folder / "picture.csv", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\x01\x02\x03", 19));
  WriteBytes(second / "a_0.csv", LogOf({1}));
  std::filesystem::create_directory(folder / "folder.csv");
  const FoundLogs found =
      vexor::FindLogs({folder / "b_0.csv", folder.path() + "/", folder / "none.csv", second.path(),
                       folder / "notes.txt"});
  EXPECT_EQ(Show(found), (std::vector<std::string>{"b: 0", "empty: -", "lost: -", "notes.txt: -",
                                                   "a: 0", "notes.txt other name",
                                                   "picture.csv binary", "none.csv unreadable"}));
  EXPECT_EQ(found.others.back().error, std::errc::no_such_file_or_directory);
  EXPECT_EQ(found.series[0].files[0].path, folder / "b_0.csv");
  EXPECT_EQ(found.series[0].files[0].size, LogOf({1}).size());
  EXPECT_EQ(found.series[0].files[0].first, 1000);
}

// A straightforward merge to compare with: always takes the smallest next row.
std::vector<std::pair<std::size_t, int>> MergeByHand(const std::vector<std::vector<int>>& series) {
  std::vector<std::pair<std::size_t, int>> merged;
  std::vector<std::size_t> next(series.size());
  while (true) {
    std::size_t least = series.size();
    for (std::size_t i = 0; i < series.size(); ++i) {
      if (next[i] == series[i].size()) continue;
      if (least == series.size() || series[i][next[i]] < series[least][next[least]]) least = i;
    }
    if (least == series.size()) return merged;
    merged.emplace_back(least, series[least][next[least]++]);
  }
}

TEST(LogMerge, OrdersTheRowsOfAllSeries) {
  std::minstd_rand random(3);
  for (int round = 0; round < 20; ++round) {
    const TemporaryFolder folder;
    std::vector<std::vector<int>> series(1 + random() % 90);
    std::vector<FoundSeries> files;
    for (std::size_t i = 0; i < series.size(); ++i) {
      int second = static_cast<int>(random() % 50);
      for (auto count = 1 + random() % 5; count > 0; --count) {
        series[i].push_back(second);
        second += static_cast<int>(random() % 9) - 1;  // back, at times
      }
      const std::size_t half = (series[i].size() + 1) / 2;
      const auto middle = series[i].begin() + static_cast<std::ptrdiff_t>(half);
      const std::string name = std::to_string(i + 100);
      WriteBytes(folder / (name + "_0.csv"), LogOf({series[i].begin(), middle}));
      WriteBytes(folder / (name + "_1.csv"), LogOf({middle, series[i].end()}));
      // Not those that FindLogs takes for leftovers.
      files.push_back({.name = name,
                       .files = {{.path = folder / (name + "_0.csv"), .first = series[i][0] * 1000},
                                 {.path = folder / (name + "_1.csv")}},
                       .leftovers = {},
                       .missing = {}});
    }
    LogMerge merge(files, {.buffer_size = 16});
    std::vector<std::pair<std::size_t, int>> merged;
    std::size_t headers = 0;
    while (merge.Next()) {
      if (merge.Row().Kind() == vexor::LogRowKind::kHeader) {
        ++headers;
        continue;
      }
      EXPECT_EQ(merge.Time(), merge.Row().Time());
      merged.emplace_back(merge.SeriesIndex(), static_cast<int>(merge.Time() / 1000));
    }
    EXPECT_EQ(merged, MergeByHand(series));
    EXPECT_EQ(headers, 2 * series.size());
    EXPECT_TRUE(merge.Faults().empty());
  }
}

TEST(LogMerge, ContinuesAfterAFileThatCannotBeRead) {
  const TemporaryFolder folder;
  for (const int i : {0, 1, 2}) {
    WriteBytes(folder / ("run_" + std::to_string(i) + ".csv"), LogOf({i}));
  }
  WriteBytes(folder / "other.csv", "a raw line\nand another\n");
  const FoundLogs found = vexor::FindLogs({folder.path()});
  std::filesystem::remove(folder / "run_1.csv");
  LogMerge merge(found.series);
  std::string texts;
  while (merge.Next()) {
    texts += std::filesystem::path(merge.File().path).stem().string() + ":";
    texts += std::string(merge.Row().Text().substr(0, 5)) + " ";
  }
  EXPECT_EQ(texts, "other:a raw other:and a run_0:Time, run_0:1970- run_2:Time, run_2:1970- ");
  ASSERT_EQ(merge.Faults().size(), 1U);
  EXPECT_EQ(merge.Faults()[0].path, folder / "run_1.csv");
  EXPECT_EQ(merge.Faults()[0].error, std::errc::no_such_file_or_directory);
}

// A file that changes while it is read: the rows before the change are returned, and the change is
// reported with the line where reading ended.
TEST(LogMerge, ReportsTheLineWhereReadingEnded) {
  const bool is_windows = std::filesystem::path::preferred_separator == '\\';
  const std::string row = "1970-01-01 00:00:01.000," + std::string(75, 'x') + "\n";
  std::string log = "Time,Notes\n";
  for (int i = 0; i < 1000; ++i) log += row;
  using vexor::LogFileChange;
  struct Case {
    const char* name;
    bool is_one_of_many;  // logs, and not kept open
    void (*act)(const std::string& path);
    std::error_code error;
    LogFileChange change;
  };
  const auto shrink = [](const std::string& path) { std::filesystem::resize_file(path, 5); };
  const auto remove = [](const std::string& path) { std::filesystem::remove(path); };
  const auto replace = [](const std::string& path) {
    WriteBytes(path + ".new", "another\n");
    std::filesystem::rename(path + ".new", path);
  };
  const auto missing = make_error_code(std::errc::no_such_file_or_directory);
  const Case kCases[] = {
      {"shrunk", false, shrink, {}, LogFileChange::kShrunk},
      {"shrunk, many", true, shrink, {}, LogFileChange::kShrunk},
      {"removed, many", true, remove, missing, LogFileChange::kNone},
      {"replaced, many", true, replace, {}, LogFileChange::kReplaced},
  };
  for (const Case& c : kCases) {
    if (is_windows && !c.is_one_of_many) continue;  // an open file cannot be changed there
    const TemporaryFolder folder;
    WriteBytes(folder / "log.csv", log);
    for (int i = 0; c.is_one_of_many && i < 100; ++i) {
      WriteBytes(folder / ("other" + std::to_string(i) + ".csv"), "");
    }
    LogMerge merge(vexor::FindLogs({folder.path()}).series, {.buffer_size = 4096});
    std::uint64_t rows = 0;
    while (merge.Next()) {
      if (rows++ == 10) c.act(folder / "log.csv");
    }
    ASSERT_EQ(merge.Faults().size(), 1U) << c.name;
    EXPECT_EQ(merge.Faults()[0].error.default_error_condition(), c.error.default_error_condition())
        << c.name;
    EXPECT_EQ(merge.Faults()[0].change, c.change) << c.name;
    EXPECT_TRUE(rows > 10 && rows < 100) << c.name;
    // The last row may be the rest of one.
    EXPECT_LE(rows - merge.Faults()[0].line, 1U) << c.name;
  }
}

TEST(LogMerge, ReportsRowsThatAreTooLong) {
  const TemporaryFolder folder;
  const std::string much(2000, 'x');
  for (const int i : {0, 1}) {
    WriteBytes(folder / ("run_" + std::to_string(i) + ".csv"),
               LogOf({1, 2}) + much + "\n" + much + "\n" + "a last line\n");
  }
  LogMerge merge(vexor::FindLogs({folder.path()}).series, {.row_limit = 1024});
  int rows = 0;
  while (merge.Next()) ++rows;
  EXPECT_EQ(rows, 12);
  ASSERT_EQ(merge.Faults().size(), 2U);
  for (const vexor::LogFault& fault : merge.Faults()) {
    EXPECT_EQ(fault.error, std::errc::value_too_large);
    EXPECT_EQ(fault.line, 4U);
  }
}

// On a system that tells.
std::ptrdiff_t CountOpenFiles() {
  std::error_code none;
  const std::filesystem::directory_iterator files("/proc/self/fd", none);
  return none ? 0 : std::distance(begin(files), end(files));
}

TEST(LogMerge, OpensFewFilesAtATime) {
  const std::ptrdiff_t open_before = CountOpenFiles();
  constexpr int kFiles = 2000;
  const TemporaryFolder folder;
  for (int i = 0; i < kFiles; ++i) {
    WriteBytes(folder / ("log" + std::to_string(i) + ".csv"), LogOf({i, 2 * kFiles - i}));
  }
  const FoundLogs found = vexor::FindLogs({folder.path()});
  ASSERT_EQ(found.series.size(), std::size_t{kFiles});
  LogMerge merge(found.series);
  vexor::LogTime last = 0;
  int rows = 0;
  for (; merge.Next(); ++rows) {
    EXPECT_LE(last, merge.Time());
    last = merge.Time();
    if (rows % 1000 == 0) {
      EXPECT_LT(CountOpenFiles() - open_before, 100);
    }
  }
  EXPECT_EQ(rows, 3 * kFiles);
  EXPECT_TRUE(merge.Faults().empty());
}

}  // namespace
