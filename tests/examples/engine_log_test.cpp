// The logs of the example engine are clean tables: read by the rules of RFC 4180, every row has the
// header's number of columns.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "logging/log_test_tools.h"

namespace {

std::filesystem::path log_folder;

Rows ReadRows(const std::filesystem::path& path) {
  Rows rows = ParseCsv(ReadLog(path.generic_string()));
  EXPECT_FALSE(rows.empty()) << path;
  return rows;
}

TEST(EngineLogs, AreCleanTables) {
  std::map<std::string, std::size_t> cycles;  // by test
  for (const auto& entry : std::filesystem::directory_iterator(log_folder)) {
    SCOPED_TRACE(entry.path().filename());
    const Rows rows = ReadRows(entry.path());
    ASSERT_GT(rows.size(), 1u);
    EXPECT_EQ(rows[0].front(), "Time");
    EXPECT_EQ(rows[0].back(), " Level");
    const std::string file = entry.path().stem().string();
    const bool is_series = file.find('_') != std::string::npos;
    EXPECT_TRUE(!is_series || rows.size() <= 30u) << rows.size();
    for (std::size_t i = 1; i < rows.size(); ++i) {
      ASSERT_EQ(rows[i].size(), rows[0].size()) << "row " << i;
      const std::string& test = rows[i][1];
      const std::string& notes = rows[i][9];
      if (is_series && !notes.starts_with("Version,")) {
        EXPECT_EQ(test, file.substr(0, file.rfind('_'))) << notes;
      }
      if (notes.starts_with("cycle ")) ++cycles[test];
    }
  }
  EXPECT_EQ(cycles.size(), 15u);      // "TSTATES" logs what is critical only
  EXPECT_EQ(cycles["CSTATES"], 24u);  // twelve on each of two threads
  EXPECT_EQ(cycles["GSTATES"], 50u);
}

TEST(EngineLogs, ExplainTheFailure) {
  bool explained = false;
  for (const auto& row : ReadRows(log_folder / "Weekend.csv")) {
    explained = explained || row[9].starts_with("GSTATES failed: EC_SX_STATE;");
  }
  EXPECT_TRUE(explained);
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 2) return 2;
  log_folder = argv[1];
  return RUN_ALL_TESTS();
}
