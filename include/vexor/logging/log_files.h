// Finds the logs in folders and puts the files of a series together.
//
// With a limit of lines, a log goes on in numbered files: CSTATES_0.csv, CSTATES_1.csv, ... After a
// night there are dozens of such series in a folder, some with numbers missing, some with
// leftovers: higher numbers that an earlier, longer run has written and the last run has not
// reached.
//
//   const vexor::FoundLogs found = vexor::FindLogs({"logs"});
//   for (const vexor::FoundSeries& series : found.series) {
//     for (const vexor::FoundLog& file : series.files) Read(file.path);
//   }
//
// Any thread may call. Files are opened one after another and closed again.
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
  std::uint64_t size = 0;                    // in bytes, as found
  LogTime first = kNoLogTime;                // the first time stamp among the first 64 KiB
};

struct FoundSeries {
  std::string name;                 // path of its files without number and ".csv": "logs/CSTATES"
  std::vector<FoundLog> files;      // of the last run, by number; a file without one comes first
  std::vector<FoundLog> leftovers;  // of earlier runs, by number
  // Numbers for which there is no file, each pair from the first to the last: {2, 4} is 2, 3 and 4.
  // Those below the lowest count only when there are at least two files: one alone may have its
  // number of its own accord.
  std::vector<std::pair<std::uint32_t, std::uint32_t>> missing;
};

// Something that was given, or found in a folder, and is no log.
struct NoLog {
  enum class Reason : std::uint8_t {
    kUnreadable,  // missing, or it cannot be read: see `error`
    kOtherName,   // a file in a folder whose name does not end with ".csv"
    kBinary,      // it begins with bytes that are no text
  };
  std::string path;
  Reason reason = Reason::kUnreadable;
  std::error_code error;
};

struct FoundLogs {
  std::vector<FoundSeries> series;  // by the first appearance of their folder, then by name
  std::vector<NoLog> others;
};

// Returns the logs among the paths and, for folders, the files directly in them. Files count as
// logs when they are named ".csv", in any case; a path that is given counts whatever its name. A
// file that is given twice, or with its folder, is found once.
//
// run_0.csv, run_1.csv, ... are a series, and so are run.csv, run_1.csv, ... when there is no
// run_0.csv. A number with leading zeros, or that is part of a time stamp as `GetTimeStamp` gives
// it, is part of the name. A file is a leftover when its first time is before that of the file with
// the lowest number of its series.
VEXOR_EXPORT FoundLogs FindLogs(const std::vector<std::string>& paths);

}  // namespace vexor
