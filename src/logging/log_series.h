// The files of one log: the open one, and the numbered files that follow it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "logging/durable_file.h"
#include "logging/log_content.h"
#include "platform/platform.h"

namespace vexor {

// Writes the line and a line end to standard output in one call, so that lines of several threads
// do not mix.
void PrintLine(std::string_view line);

// Prints "Cannot <what> log file <name>: <error>".
void PrintFault(std::string_view what, std::string_view name, const std::error_code& error);

// What the caller does after it has released the lock, because flushing takes long and the front
// end may log.
struct Aftermath {
  std::vector<std::shared_ptr<DurableFile>> left;  // full or closed files: flush in this order
  std::shared_ptr<DurableFile> file;               // the open file, if it was written to
  std::uint64_t appended = 0;                      // flush `file` up to this block
  unsigned moves = 0;                              // how often the log moved to a new file
};

// Writes lines to the open file, below the header line. Without an open file, lines go to standard
// output. So do the lines of a file that cannot be written: its fault is printed once, and every
// further line tries the file again. Takes no lock: the caller holds the one that serialises the
// calls on all logs.
class LogSeries {
 public:
  // Opens the first file, with its header line due; no other file may be open. `known` is what an
  // earlier look at the file found, which is not read again. Prints the error, unless it is that a
  // file to be created exists.
  std::error_code Start(const std::string& name, OpenMode mode, const LogContent& known);

  // Writes the header if it is due, then the line, with a line end unless it has one. Moves to the
  // next file of the series first if this one would exceed the line limit.
  void Write(std::string_view line, Aftermath& after);

  // Writes the header if it is due and a file is open.
  void WriteHeader(Aftermath& after);

  // Leaves the open file to `after`, to be flushed and closed.
  void Close(Aftermath& after);

  // Has `after` flush the open file, even if nothing was written to it by this call.
  void FlushAll(Aftermath& after) const;

  [[nodiscard]] bool IsOpen() const { return file_ != nullptr; }
  [[nodiscard]] const std::string& Name() const { return name_; }
  void SetHeader(std::string_view line) { header_ = line; }
  void MakeHeaderDue() { header_due_ = true; }
  void SetLimit(std::uint32_t limit) { limit_ = limit; }
  [[nodiscard]] std::uint32_t Limit() const { return limit_; }
  [[nodiscard]] std::uint32_t NextIndex() const { return next_index_; }
  void SetNextIndex(std::uint32_t index) { next_index_ = index; }

  // Prints the error of the file's first failed flush, if it was not printed before.
  static void ReportFlushFault(DurableFile& file);

 private:
  std::error_code Open(const std::string& name, const std::string& path, OpenMode mode,
                       const LogContent& known);
  bool Reopen();
  bool EnsureOpen(Aftermath& after);
  bool FileSplitter(Aftermath& after);
  void LookAnew();
  [[nodiscard]] std::string MakeBlock(std::optional<std::string_view> line) const;
  [[nodiscard]] bool IsFullFor(std::string_view block) const;
  bool Append(std::optional<std::string_view> line, Aftermath& after);
  void ReportOnce(std::string_view what, std::string_view name, const std::error_code& error);

  std::string name_;
  std::string path_;  // absolute: a later change of the current folder does not move the log
  std::shared_ptr<DurableFile> file_;
  bool lost_ = false;     // the file was removed or could not be written: reopen it
  bool removed_ = false;  // the file was removed
  bool torn_ = false;     // the file ends in the middle of a line
  bool fault_reported_ = false;

  std::string header_;
  bool header_due_ = true;

  std::uint64_t size_ = 0;   // the smallest size the file can have unless others have cut it
  std::uint32_t lines_ = 0;  // in the file, headers included
  bool has_logged_line_ = false;
  std::uint32_t limit_ = 0;
  std::uint32_t next_index_ = 1;
  bool next_pending_ = false;  // the next file of the series could not be created yet
};

}  // namespace vexor
