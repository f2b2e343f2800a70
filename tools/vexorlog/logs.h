// The logs that a command was given.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "common/status.h"
#include "selection.h"
#include "vexor/logging/log_files.h"
#include "vexor/logging/log_merge.h"
#include "vexor/logging/log_reader.h"

namespace tools::vexorlog {

struct Logs {
  std::vector<vexor::FoundSeries> series;
  vexor::LogTime start = vexor::kNoLogTime;  // the first time in any of them
  Status status = kClean;                    // kNotRun when something given cannot be read
};

// Finds the logs among the paths. What cannot be read, or is given and is no log, is said on
// standard error.
Logs FindGivenLogs(const std::vector<std::string>& paths);

// Returns the filter of a selection of these logs; nothing, with a message on standard error, for
// one that cannot be understood.
std::optional<RowFilter> MakeFilter(const Selection& selection, const Logs& logs);

// Says on standard error which files could not be read to their end; returns kNotRun if there are
// any, else `status`.
Status ReportFaults(const std::vector<vexor::LogFault>& faults, Status status);

// Calls `visit` with every row of a file and its time, or that of the row before it where it has
// none. A file that cannot be read to its end is added to the faults.
template <class Visit>
void ReadRows(const std::string& path, std::vector<vexor::LogFault>& faults, Visit visit) {
  vexor::LogReader reader;
  reader.Open(path);
  vexor::LogTime time = vexor::kNoLogTime;
  while (reader.Next()) {
    const vexor::LogRow row = reader.Row();
    if (const vexor::LogTime own = row.Time(); own != vexor::kNoLogTime) time = own;
    visit(row, time);
  }
  if (!reader.Error() && reader.Change() != vexor::LogFileChange::kShrunk) return;
  faults.push_back({.path = path, .error = reader.Error(), .change = reader.Change()});
}

// Calls `work` with every number below `count`, on as many threads as the machine has processors,
// and returns when all calls have. Rethrows what a call has thrown.
void RunInParallel(std::size_t count, const std::function<void(std::size_t)>& work);

}  // namespace tools::vexorlog
