// Finds the logs in folders and groups the files of each series.
//
// With a limit of lines, a log continues in numbered files: CSTATES_0.csv, CSTATES_1.csv, ... After
// a night, a folder has dozens of such series. In some, numbers are missing. Some have leftovers:
// files with higher numbers that an earlier, longer run wrote and that the last run did not reach.
//
//   const vexor::FoundLogs found = vexor::FindLogs({"logs"});
//   for (const vexor::FoundSeries& series : found.series) {
//     for (const vexor::FoundLog& file : series.files) Read(file.path);
//   }
//
// Any thread may call. At most one file is open at a time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "vexor/export.h"
#include "vexor/logging/log_reader.h"

namespace vexor {

struct FoundLog {
  std::string path;
  std::optional<std::uint32_t> number = {};  // in its series: 3 of CSTATES_3.csv
  std::uint64_t size = 0;                    // in bytes, at the time of the search
  LogTime first = kNoLogTime;                // the first time stamp in the first 64 KiB
};

struct FoundSeries {
  std::string name;                 // path of its files without number and ".csv": "logs/CSTATES"
  std::vector<FoundLog> files;      // of the last run, by number; a file without one comes first
  std::vector<FoundLog> leftovers;  // of earlier runs, by number
  // Ranges of numbers without a file, first and last included: {2, 4} is 2, 3 and 4. A single file
  // has no missing numbers before it, as the user may have named it so.
  std::vector<std::pair<std::uint32_t, std::uint32_t>> missing;
};

// A path that was given, or a file found in a folder, that is not a log.
struct NoLog {
  enum class Reason : std::uint8_t {
    kUnreadable,  // missing, or it cannot be read: see `error`
    kOtherName,   // found in a folder, and its name does not end with ".csv"
    kBinary,      // it begins with bytes that are not text
  };
  std::string path;
  Reason reason = Reason::kUnreadable;
  std::error_code error;
};

struct FoundLogs {
  std::vector<FoundSeries> series;  // folders in the order of `paths`, then by name
  std::vector<NoLog> others;
};

// Returns the logs among the paths. A path may be a file of any name, or a folder, of which the
// files directly in it count whose names end with ".csv" in any case. A file that is given twice,
// or together with its folder, is found once.
//
// run_0.csv, run_1.csv, ... are a series; so are run.csv, run_1.csv, ... if there is no run_0.csv.
// A number with leading zeros is not a series number but part of the name, and so is the end of a
// time stamp that `GetTimeStamp` made. A file is a leftover if its first time stamp is before that
// of the file with the lowest number in its series.
VEXOR_EXPORT FoundLogs FindLogs(const std::vector<std::string>& paths);

}  // namespace vexor
