// Writes a log like those of the suite's tests, for the benchmarks of reading.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <string>

#include "vexor/logging/log_file.h"
#include "vexor/logging/log_reader.h"
#include "vexor/util/random.h"

namespace vexor {

// The columns of a row between "Time" and "Level": a text for those that every row of a test has,
// and counters with their shares, such as the residencies of C-states.
class SuiteRows {
 public:
  std::string Next() {
    time_ += random_.Next32(0, 900);
    ++cycle_;
    std::string row = FormatLogTime(time_);
    switch (cycle_ % 16) {
      case 0:
        return row + ",GSTATES,,,,,,S0ix,enter,enters S0ix for 43.203 sec" + Level();
      case 1:
        return row + ",GSTATES," + Cycle() + ",,System,PASS,0,S4,100.0 %,,,,,,,,,,,,,,,," +
               Share() + Empty(17) + ",Information\n";
      case 2:
        return row + ",VEXOR,,,,,,,ok,\"cycle " + Cycle() + R"(, ""idle"" for 97.5 %")" + Level();
      case 3:
        if (cycle_ % 4096 == 3) return row + Failure();
        break;
      default:
        break;
    }
    return row + ",CSTATES," + Cycle() + ",00:01:003:0,Core,PASS,0,C10,reached,,,,,,,,,,,," +
           Share() + ",,," + Share() + ",,," + Share() + ",,," + Share() + Empty(9) +
           ",Information\n";
  }

 private:
  static std::string Empty(std::size_t cells) { return std::string(cells, ','); }
  static std::string Level() { return Empty(33) + ",Information\n"; }
  [[nodiscard]] std::string Cycle() const { return std::to_string(cycle_); }

  std::string Failure() {
    return ",CSTATES," + Cycle() + ",00:01:003:0,Core,FAIL,1,C10,missed,EC_CSTATE EC_MISSED at " +
           Cycle() + Level();
  }

  std::string Share() {
    std::array<char, 64> text = {};
    const auto count = random_.Next32(100'000'000, 2'000'000'000);
    std::snprintf(text.data(), text.size(), "%u,%.6g", count, count / 2e7);
    return text.data();
  }

  UserRand random_{1};
  LogTime time_ = ParseLogTime("2024-03-07 21:00:00.000");
  unsigned cycle_ = 0;
};

// Writes FOLDER/NAME.csv of at least this many bytes, with the library's header; returns its path.
inline std::string WriteSuiteLog(const std::string& folder, const std::string& name,
                                 std::size_t size) {
  VexorLogging log;
  log.Initialize(folder, name, TRACE_DEBUG, LOG_FILE_NEW, false, true, false, true);
  log.LogHeaderLine();
  log.CloseFile(true);
  const std::string path = folder + "/" + name + ".csv";
  std::ofstream file(path, std::ios::binary | std::ios::app);
  SuiteRows rows;
  for (std::size_t written = 0; written < size;) {
    const std::string row = rows.Next();
    file << row;
    written += row.size();
  }
  return path;
}

}  // namespace vexor
