// Measures reading a log of 200 MB like those of the suite's tests, 44 columns of which most are
// empty, in processor time:
//
//   log_read_bench [FOLDER [ROUNDS]]
//
// The programs are measured in turns; the result of each is its fastest round. The table shows the
// time for 1 GB.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "suite_log.h"
#include "table.h"

namespace {

constexpr std::size_t kSize = 200'000'000;

// The result of a program; all must have the same.
struct Found {
  std::size_t rows = 0;
  std::size_t failures = 0;
  std::size_t note_bytes = 0;

  bool operator==(const Found&) const = default;
};

Found ReadRows(const std::string& path) {
  Found found;
  vexor::LogReader reader;
  reader.Open(path);
  while (reader.Next()) ++found.rows;
  return found;
}

Found ReadFiveColumns(const std::string& path) {
  Found found;
  vexor::LogReader reader;
  reader.Open(path);
  std::size_t notes = vexor::kNoColumn;
  vexor::LogTime last = vexor::kNoLogTime;
  while (reader.Next()) {
    const vexor::LogRow row = reader.Row();
    ++found.rows;
    if (row.Kind() == vexor::LogRowKind::kHeader) notes = row.Column("Notes");
    if (row.Kind() != vexor::LogRowKind::kRow) continue;
    const bool counts = row.Time() >= last && row.Test() == PM_TEST_CSTATES && row.Level();
    last = row.Time();
    if (counts && row.Result() == vexor::LogResult::kFail) ++found.failures;
    found.note_bytes += row.At(notes).size();
  }
  return found;
}

Found ReadBytes(const std::string& path) {
  Found found;
  std::vector<char> bytes(std::size_t{1} << 18);
  std::FILE* const file = std::fopen(path.c_str(), "rb");
  std::setvbuf(file, nullptr, _IONBF, 0);
  while (std::fread(bytes.data(), 1, bytes.size(), file) > 0) {
  }
  std::fclose(file);
  return found;
}

// A straightforward reader, line by line and byte by byte.
Found ReadByHand(const std::string& path) {
  Found found;
  std::ifstream file(path, std::ios::binary);
  std::vector<std::string> cells;
  for (std::string line; std::getline(file, line);) {
    cells.assign(1, "");
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (line[i] == '"') {
        if (quoted && i + 1 < line.size() && line[i + 1] == '"') {
          cells.back() += line[i++];
        } else {
          quoted = !quoted;
        }
      } else if (line[i] == ',' && !quoted) {
        cells.emplace_back();
      } else {
        cells.back() += line[i];
      }
    }
    if (found.rows++ == 0) continue;
    if (cells[5] == "FAIL" && cells[1] == "CSTATES") ++found.failures;
    found.note_bytes += cells[9].size();
  }
  return found;
}

struct Work {
  const char* name;
  Found (*run)(const std::string& path);
  double best = std::numeric_limits<double>::infinity();  // seconds
  Found found = {};
};

void Measure(Work& work, const std::string& path) {
  const std::clock_t begin = std::clock();
  work.found = work.run(path);
  const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
  work.best = std::min(work.best, seconds);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string folder = argc > 1 ? argv[1] : "log_bench_files";
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  std::filesystem::create_directories(folder);
  const std::string path = vexor::WriteSuiteLog(folder, "bench", kSize);
  std::array<Work, 4> works = {{{"read a log, its rows", ReadRows},
                                {"read a log, 5 of 44 columns", ReadFiveColumns},
                                {"reading the bytes", ReadBytes},
                                {"loop by hand", ReadByHand}}};
  for (int round = 0; round < rounds; ++round) {
    for (Work& work : works) Measure(work, path);
  }
  const auto& [rows, columns, bytes, by_hand] = works;
  std::filesystem::remove_all(folder);
  if (columns.found != by_hand.found || rows.found.rows != by_hand.found.rows) {
    std::cerr << "the loop by hand has found something else\n";
    return 1;
  }
  for (const Work* const own : {&rows, &columns}) {
    for (const Work* const other : {&bytes, &by_hand}) {
      constexpr double kNanosecondsForAGigabyte = 1e9 * 1e9 / kSize;
      vexor::PrintRow(own->name, other->name, own->best * kNanosecondsForAGigabyte,
                      other->best * kNanosecondsForAGigabyte, own->best / other->best);
    }
  }
}
