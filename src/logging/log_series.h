// The files of one log: the one that is open, and those in which it goes on.
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

// Writes the line and a line end to standard output, in one piece.
void PrintLine(std::string_view line);

// Prints that something cannot be done to a log file.
void PrintFault(std::string_view what, std::string_view name, const std::error_code& error);

// What is left to do, without a lock, for lines that were written.
struct Aftermath {
  std::vector<std::shared_ptr<DurableFile>> left;  // to be flushed and closed, in this order
  std::shared_ptr<DurableFile> file;               // to be flushed as far as it was written to
  std::uint64_t appended = 0;
  unsigned moves = 0;  // the log has moved to a new file so often
};

// Lines go to the file that is open, below the header line, and to standard output when there is
// none. A file that cannot be written is reported once; its lines go to standard output, and every
// further line tries it anew. Nothing here takes a lock: the caller's serialises all calls on all
// logs, and is held.
class LogSeries {
 public:
  // Opens the first file; a file that was open must have been closed. The header is due. What is
  // known of the file's content is not read again. The error is printed, unless it says that a file
  // to be created exists.
  std::error_code Start(const std::string& name, OpenMode mode, const LogContent& known);

  // Writes the line, and a line end unless it has one, with the header above it if that is due. A
  // file that would get more lines than the limit is left for the next of the series before.
  void Write(std::string_view line, Aftermath& after);

  // Writes the header if it is due and a file is open.
  void WriteHeader(Aftermath& after);

  // Leaves the file: it is to be flushed and closed.
  void Close(Aftermath& after);

  // Has the open file flushed, whatever was written to it.
  void FlushAll(Aftermath& after) const;

  [[nodiscard]] bool IsOpen() const { return file_ != nullptr; }
  [[nodiscard]] const std::string& Name() const { return name_; }
  void SetHeader(std::string_view line) { header_ = line; }
  void MakeHeaderDue() { header_due_ = true; }
  void SetLimit(std::uint32_t limit) { limit_ = limit; }
  [[nodiscard]] std::uint32_t Limit() const { return limit_; }
  [[nodiscard]] std::uint32_t NextIndex() const { return next_index_; }
  void SetNextIndex(std::uint32_t index) { next_index_ = index; }

  // Prints the fault of a flush of the file, if there is one that was not printed.
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
  bool lost_ = false;     // the file was removed or could not be written, and is to be opened anew
  bool removed_ = false;  // it was removed
  bool torn_ = false;     // the file ends in the middle of a line
  bool fault_reported_ = false;

  std::string header_;
  bool header_due_ = true;

  std::uint64_t size_ = 0;   // the file has at least so many bytes, unless others cut it
  std::uint32_t lines_ = 0;  // in the file, headers included
  bool has_logged_line_ = false;
  std::uint32_t limit_ = 0;
  std::uint32_t next_index_ = 1;
  bool next_pending_ = false;  // the next file of the series could not be created yet
};

}  // namespace vexor
