// The logs of the example engine: clean tables after an ordinary run, damaged ones after a bad
// night.
//   vexor_engine_log_tests LOG-FOLDER ENGINE EXAMPLES NIGHT-FOLDER
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "logging/log_test_tools.h"
#include "platform/child_process.h"

namespace {

namespace fs = std::filesystem;

enum Column : std::size_t { kTime, kTest, kIter, kAffinity, kScope, kResult, kNotes = 9 };

fs::path log_folder;
fs::path engine;
fs::path examples;
fs::path night_folder;

std::vector<fs::path> ListLogs(const fs::path& folder) {
  std::vector<fs::path> logs;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".csv") logs.push_back(entry.path());
  }
  std::ranges::sort(logs);
  return logs;
}

// The rows below the header, whole ones only: a power cut may have spoiled the last.
Rows ReadRows(const fs::path& path) {
  std::string text = ReadLog(path.generic_string());
  text.erase(text.rfind('\n') + 1);
  Rows rows = ParseCsv(text);
  EXPECT_GT(rows.size(), 1U) << path;
  if (!rows.empty()) rows.erase(rows.begin());
  return rows;
}

TEST(EngineLogs, AreCleanTables) {
  std::map<std::string, std::size_t> iterations;  // by test
  for (const fs::path& path : ListLogs(log_folder)) {
    SCOPED_TRACE(path.filename());
    const Rows rows = ParseCsv(ReadLog(path.generic_string()));
    ASSERT_GT(rows.size(), 1U);
    EXPECT_EQ(rows[0].front(), "Time");
    EXPECT_EQ(rows[0].back(), " Level");
    const std::string file = path.stem().string();
    const bool is_series = file.find('_') != std::string::npos;
    EXPECT_TRUE(!is_series || rows.size() <= 50U) << rows.size();
    for (std::size_t i = 1; i < rows.size(); ++i) {
      ASSERT_EQ(rows[i].size(), rows[0].size()) << "row " << i;
      if (is_series && !rows[i][kNotes].starts_with("Version,")) {
        EXPECT_EQ(rows[i][kTest], file.substr(0, file.rfind('_'))) << rows[i][kNotes];
      }
      if (!rows[i][kIter].empty()) ++iterations[rows[i][kTest]];
      EXPECT_TRUE(rows[i][kResult] != "FAIL" || rows[i][kNotes].starts_with("0x"));
    }
  }
  EXPECT_EQ(iterations.size(), 15U);      // "TSTATES" logs what is critical only
  EXPECT_EQ(iterations["CSTATES"], 48U);  // twelve on each of four cores
  EXPECT_EQ(iterations["GSTATES"], 25U);
}

TEST(EngineLogs, ExplainTheFailure) {
  const std::string text = ReadLog((log_folder / "Weekend.csv").generic_string());
  EXPECT_NE(text.find(",GSTATES failed: 0x00800008 EC_SX_STATE; EC_S0I3; failures: "),
            std::string::npos);
}

// Runs the engine once through the bad night, or until the machine goes down.
int RunNight(const fs::path& folder) {
  const std::string console = (folder / "console.txt").string();
  ChildProcess child({engine.string(), (examples / "night.xml").string(), folder.string(),
                      "--iterations", "100", "--bad-night"},
                     {.output = console, .errors = console});
  return child.Wait();
}

// Returns the content of a log without what depends on the build.
std::string ReadWithoutBuild(const fs::path& path) {
  static const std::regex kBuild("Version,[^\"]*");
  return std::regex_replace(ReadLog(path.generic_string()), kBuild, "Version");
}

TEST(BadNight, EqualsTheLogsInTheExamples) {
  constexpr int kMachineDown = 3;
  fs::remove_all(night_folder);
  fs::create_directories(night_folder);
  ASSERT_EQ(RunNight(night_folder), kMachineDown);  // reset
  ASSERT_EQ(RunNight(night_folder), kMachineDown);  // power cut
  const std::vector<fs::path> logs = ListLogs(night_folder);
  const std::vector<fs::path> expected = ListLogs(examples / "night");
  EXPECT_EQ(logs.size(), expected.size());
  for (const fs::path& path : logs) {
    EXPECT_TRUE(ReadWithoutBuild(path) == ReadWithoutBuild(examples / "night" / path.filename()))
        << path << " differs from examples/night; where that is meant: scripts/renew.sh night";
  }
}

TEST(BadNight, EndsAfterTheRestarts) {
  const fs::path folder = night_folder.string() + "-continued";
  fs::remove_all(folder);
  fs::copy(night_folder, folder);
  EXPECT_EQ(RunNight(folder), 0);
  EXPECT_FALSE(fs::exists(folder / "progress.txt"));
  EXPECT_NE(ReadLog((folder / "Night.csv").string()).find(",UFS passed,"), std::string::npos);
}

TEST(BadNight, ContinuesWhereTheMachineWentDown) {
  std::map<std::string, std::size_t> iterations;  // by test and core
  std::size_t restarts = 0;
  for (const std::string test : {"CSTATES", "GSTATES", "PCIe-Link"}) {
    std::string time;
    for (int i = 0;; ++i) {
      const fs::path path = examples / "night" / (test + "_" + std::to_string(i) + ".csv");
      if (!fs::exists(path)) break;
      const Rows rows = ReadRows(path);
      for (const std::vector<std::string>& row : rows) {
        if (row.front() == "Time") continue;  // the header again
        EXPECT_LE(time, row[kTime]) << path;
        time = row[kTime];
        if (row[kNotes].starts_with("Version,") && (i > 0 || &row != &rows.front())) ++restarts;
        if (row[kIter].empty()) continue;
        EXPECT_EQ(std::to_string(++iterations[test + row[kAffinity]]), row[kIter]) << path;
      }
    }
  }
  EXPECT_EQ(iterations.size(), 6U);
  EXPECT_EQ(restarts, 3U);
}

TEST(BadNight, HasTheExpectedGapsFailuresAndLogEnds) {
  Rows rows;
  int torn = 0;
  int zeroed = 0;
  for (const fs::path& path : ListLogs(examples / "night")) {
    const std::string text = ReadLog(path.generic_string());
    if (text.ends_with('\0')) {
      ++zeroed;
    } else if (!text.ends_with('\n')) {
      ++torn;
    }
    for (const std::vector<std::string>& row : ReadRows(path)) {
      if (row.front() != "Time") rows.push_back(row);
    }
  }
  EXPECT_EQ(torn, 1);
  EXPECT_EQ(zeroed, 1);

  std::ranges::stable_sort(rows, {}, [](const auto& row) { return row[kTime]; });
  const auto first =
      std::ranges::find_if(rows, [](const auto& row) { return row[kResult] == "FAIL"; });
  ASSERT_NE(first, rows.end());
  const auto is_like_first = [&](const auto& row) {
    return row[kAffinity] == "00:01:003:0" &&
           row[kNotes].starts_with("0x00200004 EC_CSTATE; EC_C6;");
  };
  EXPECT_TRUE(is_like_first(*first)) << (*first)[kNotes];
  EXPECT_GT(std::ranges::count_if(rows, is_like_first), 3);

  const auto woke = std::ranges::find_if(rows, [](const auto& row) {
    return std::regex_match(row[kNotes], std::regex(R"(woke from S4 after \d{4,5}\.\d{3} sec)"));
  });
  ASSERT_NE(woke, rows.end());
  // No log has a row of that time.
  EXPECT_TRUE((*(woke - 1))[kNotes].starts_with("enters S4 for ")) << (*(woke - 1))[kNotes];
  EXPECT_NE((*(woke - 1))[kTime].substr(11, 2), (*woke)[kTime].substr(11, 2));
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 5) return 2;
  log_folder = argv[1];
  engine = argv[2];
  examples = argv[3];
  night_folder = argv[4];
  return RUN_ALL_TESTS();
}
