// Finds and reads the logs in a command's arguments.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "common/progress.h"
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

// Returns the paths with wildcards expanded.
std::vector<std::string> ExpandPaths(const std::vector<std::string>& paths);

enum class NoLogs : std::uint8_t { kAreAnError, kAreAwaited };

// Finds the logs among the paths, which may have wildcards. Reports on standard error paths that
// cannot be read or are not logs and, unless logs are awaited, that there are none at all.
Logs FindGivenLogs(const std::vector<std::string>& paths, NoLogs none = NoLogs::kAreAnError);

// Returns the number of bytes in all files of the series, as the amount of work to read them.
std::uint64_t CountBytes(const Logs& logs);

// Returns kClean for a file that may be written; reports on standard error if it is one of the
// logs.
Status KeepLogs(const Logs& logs, const std::string& output);

// Stores the duration in an option's text, unless the text is empty; false, with a message on
// standard error, if it is not a duration.
bool ReadDuration(std::string_view option, std::string_view text,
                  std::optional<vexor::LogTime>& duration);

// Returns the filter for a selection of rows of these logs; nothing, with a message on standard
// error, if the selection is not valid.
std::optional<RowFilter> MakeFilter(const Selection& selection, const Logs& logs);

// Prints on standard error which files could not be read to their end. Returns kNotRun if there are
// any, otherwise `status`.
Status ReportFaults(const std::vector<vexor::LogFault>& faults, Status status);

// Counts the rows of one thread as progress, in larger amounts: Progress takes a mutex.
class RowProgress {
 public:
  explicit RowProgress(Progress& progress) : progress_(progress) {}
  RowProgress(const RowProgress&) = delete;
  RowProgress& operator=(const RowProgress&) = delete;
  ~RowProgress() { progress_.Add(bytes_); }

  void Add(const vexor::LogRow& row) {
    constexpr std::uint64_t kPiece = 1U << 20U;
    bytes_ += row.Size();
    if (bytes_ < kPiece) return;
    progress_.Add(bytes_);
    bytes_ = 0;
  }

 private:
  Progress& progress_;
  std::uint64_t bytes_ = 0;
};

// Calls `visit` with every row of a file and its time, or the time of the row before it if it has
// none. Adds a file that cannot be read to its end to the faults.
template <class Visit>
void ReadRows(const std::string& path, std::vector<vexor::LogFault>& faults, Progress& progress,
              Visit visit) {
  RowProgress done(progress);
  vexor::LogReader reader;
  reader.Open(path);
  vexor::LogTime time = vexor::kNoLogTime;
  bool has_long_row = false;
  while (reader.Next()) {
    const vexor::LogRow row = reader.Row();
    if (row.Has(vexor::LogDamage::kTooLong) && !std::exchange(has_long_row, true)) {
      faults.push_back({.path = path,
                        .error = std::make_error_code(std::errc::value_too_large),
                        .line = row.Line()});
    }
    if (const vexor::LogTime own = row.Time(); own != vexor::kNoLogTime) time = own;
    done.Add(row);
    visit(row, time);
  }
  if (!reader.Error() && reader.Change() != vexor::LogFileChange::kShrunk) return;
  faults.push_back({.path = path,
                    .error = reader.Error(),
                    .change = reader.Change(),
                    .line = reader.Offset() > 0 ? reader.Line() : 0});
}

// Calls `work` with every number below `count`, on as many threads as the machine has processors.
// Returns when all calls have returned; rethrows an exception of a call.
void RunInParallel(std::size_t count, const std::function<void(std::size_t)>& work);

}  // namespace tools::vexorlog
