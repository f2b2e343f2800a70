// Reads the rows of many series of log files in the order of their times.
//
//   const vexor::FoundLogs found = vexor::FindLogs({"logs"});
//   vexor::LogMerge merge(found.series);
//   while (merge.Next()) Show(merge.File().path, merge.Row());
//   for (const vexor::LogFault& fault : merge.Faults()) Complain(fault.path, fault.error);
//
// The files of a series are read one after another, as one stream; leftovers are not read. Of the
// next rows of all streams, the one with the smallest time comes first; of equal times, the one of
// the earlier series. The order within a series never changes, even if its times go backwards. A
// row without a time (a header, a raw line) follows the row before it; at the start of a series, it
// is placed by the first time stamp after it.
//
// The first file of a series is opened when the merge reaches its first time. With many series, a
// file is open only while it is read; memory stays below some 50 MB for 10,000 series.
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
  // No error if the file has shrunk or was replaced: see `change`. std::errc::value_too_large for
  // the first row of a file that is longer than `row_limit`; such rows are returned cut.
  std::error_code error;
  LogFileChange change = LogFileChange::kNone;
  std::uint64_t line = 0;  // where reading ended, or of that row; 0 if the file was not opened
};

struct LogMergeImpl;

class VEXOR_EXPORT LogMerge {
 public:
  // The options `follow` and `keep_open` are ignored. `buffer_size` is the most that a series gets;
  // with many series, each gets less.
  explicit LogMerge(std::vector<FoundSeries> series, LogReaderOptions options = {});
  LogMerge(LogMerge&& other) noexcept;
  LogMerge& operator=(LogMerge&& other) noexcept;
  ~LogMerge();

  // Moves to the next row; false if there is none left.
  bool Next();

  // Return the current row, its file, and the index of its series in the constructor's argument.
  // Only to be called after `Next` has returned true. The row is valid until the next such call.
  [[nodiscard]] LogRow Row() const;
  [[nodiscard]] const FoundLog& File() const;
  [[nodiscard]] std::size_t SeriesIndex() const;

  // Returns the time that determines the row's place: its own or, if it has none, that of the row
  // that it was placed with.
  [[nodiscard]] LogTime Time() const;

  // Returns what could not be read so far, in the order of reading. After a fault, the series
  // continues with its next file.
  [[nodiscard]] const std::vector<LogFault>& Faults() const;

 private:
  std::unique_ptr<LogMergeImpl> impl_;
};

}  // namespace vexor
