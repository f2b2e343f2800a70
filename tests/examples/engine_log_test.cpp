// The logs of the example engine are clean tables: read by the rules of RFC 4180, every row has the
// header's number of columns.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace {

using Row = std::vector<std::string>;

std::filesystem::path log_folder;

std::vector<Row> ParseCsv(const std::string& text) {
  std::vector<Row> rows(1, Row(1));
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    std::string& cell = rows.back().back();
    if (text[i] == '"' && quoted && i + 1 < text.size() && text[i + 1] == '"') {
      cell += text[++i];
    } else if (text[i] == '"') {
      quoted = !quoted;
    } else if (text[i] == ',' && !quoted) {
      rows.back().emplace_back();
    } else if (text[i] == '\n' && !quoted) {
      rows.emplace_back(1);
    } else if (text[i] != '\r' || quoted) {
      cell += text[i];
    }
  }
  EXPECT_FALSE(quoted);
  EXPECT_EQ(rows.back(), Row(1)) << "the last line has no end";
  rows.pop_back();
  return rows;
}

std::vector<Row> ReadLog(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return ParseCsv({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
}

TEST(EngineLogs, AreCleanTables) {
  std::map<std::string, std::size_t> cycles;  // by test
  for (const auto& entry : std::filesystem::directory_iterator(log_folder)) {
    SCOPED_TRACE(entry.path().filename());
    const std::vector<Row> rows = ReadLog(entry.path());
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
  for (const Row& row : ReadLog(log_folder / "Weekend.csv")) {
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
