// Reads the rows of many series of log files in the order of their times.
//
//   const vexor::FoundLogs found = vexor::FindLogs({"logs"});
//   vexor::LogMerge merge(found.series);
//   while (merge.Next()) Show(merge.File().path, merge.Row());
//   for (const vexor::LogFault& fault : merge.Faults()) Complain(fault.path, fault.error);
//
// The files of a series are read one after another, as one stream; leftovers are not read. Of the
// streams' next rows, the one with the smallest time comes first, and of equal times that of the
// earlier series: the order within a stream always stays as it is, even where time runs backwards.
// A row without a time (a header, a raw line) goes with the row before it, or at the start of a
// series with the first time stamp behind it.
//
// A file is opened when the merge gets to its first time. However many series there are, few files
// are open at a time, and memory stays below some 50 MB for 10,000 series.
//
// A merge belongs to one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "vexor/export.h"
#include "vexor/logging/log_files.h"
#include "vexor/logging/log_reader.h"

namespace vexor {

// A file that could not be read, or not all of it.
struct LogFault {
  std::string path;
  // None when the file has shrunk or was replaced. For the first row of a file that is longer than
  // `row_limit`, of which only the beginning is given, std::errc::value_too_large.
  std::error_code error;
  LogFileChange change = LogFileChange::kNone;
  std::uint64_t line = 0;  // where reading ended, or of the row; 0 when the file was not opened
};

struct LogMergeImpl;

class VEXOR_EXPORT LogMerge {
 public:
  // The options `follow` and `keep_open` are not used. A `buffer_size` is taken as the most for one
  // of few series; many get less.
  explicit LogMerge(std::vector<FoundSeries> series, LogReaderOptions options = {});
  LogMerge(LogMerge&& other) noexcept;
  LogMerge& operator=(LogMerge&& other) noexcept;
  ~LogMerge();

  // Goes to the next row; false when all are read.
  bool Next();

  // The current row, its file and the index of its series among those given. To be called only
  // after `Next` has returned true; the row is valid until the next call.
  [[nodiscard]] LogRow Row() const;
  [[nodiscard]] const FoundLog& File() const;
  [[nodiscard]] std::size_t SeriesIndex() const;

  // The time by which the row stands where it does: its own, or for a row without one that of the
  // row that it goes with.
  [[nodiscard]] LogTime Time() const;

  // What could not be read so far, in the order in which it was met; its series goes on with the
  // next file.
  [[nodiscard]] const std::vector<LogFault>& Faults() const;

 private:
  std::unique_ptr<LogMergeImpl> impl_;
};

}  // namespace vexor
