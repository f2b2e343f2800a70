#include "logging/log_series.h"

#include <algorithm>
#include <cassert>
#include <fstream>
#include <utility>

#include "logging/log_names.h"
#include "util/standard_output.h"
#include "vexor/logging/console.h"

namespace vexor {

namespace {

std::uint32_t CountLineEnds(std::string_view text) {
  return static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n'));
}

// Adds a line end unless the line has one.
void AppendLine(std::string& text, std::string_view line) {
  text += line;
  if (!line.ends_with('\n')) text += '\n';
}

bool EndsInsideLine(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return file.seekg(-1, std::ios::end) && file.get() != '\n';
}

// Returns an error for a path that this system would not take for a file of exactly this name.
std::error_code CheckName(const std::string& path) {
  if (const std::error_code error = CheckPath(path)) return error;
  const bool is_reserved = kHasWindowsNames && NamesDeviceOrStream(path);
  return is_reserved ? MakeError(PathFault::kReserved) : std::error_code();
}

}  // namespace

void PrintLine(std::string_view line) {
  std::string text(line);
  text += '\n';
  vexor::StandardOutput().write(text.data(), static_cast<std::streamsize>(text.size()));
}

void PrintFault(std::string_view what, std::string_view name, const std::error_code& error) {
  std::string text = "Cannot ";
  PrintLine(
      text.append(what).append(" log file ").append(name).append(": ").append(error.message()));
}

std::error_code LogSeries::Start(const std::string& name, OpenMode mode, const LogContent& known) {
  name_ = name;
  fault_reported_ = false;
  const std::error_code error = Open(name, MakeAbsolute(name), mode, known);
  if (error && error != std::errc::file_exists) ReportOnce("open", name, error);
  return error;
}

std::error_code LogSeries::Open(const std::string& name, const std::string& path, OpenMode mode,
                                const LogContent& known) {
  assert(!file_);
  std::error_code error = CheckName(name);
  if (error) return error;
  std::shared_ptr<DurableFile> opened = DurableFile::Open(path, name, mode, error);
  if (error) return error;
  const std::optional<FileStatus> status = opened->ReadStatus();
  const bool is_empty = !status || status->size == 0;
  const LogContent content = is_empty ? LogContent() : LookIntoLog(path, known);
  std::string its_name = name;
  std::string its_path = path;
  // From here on nothing throws: the members change together or, above, not at all.
  file_ = std::move(opened);
  name_ = std::move(its_name);
  path_ = std::move(its_path);
  lost_ = false;
  removed_ = false;
  header_due_ = true;
  size_ = is_empty ? 0 : status->size;
  lines_ = content.Lines();
  torn_ = content.torn;
  has_logged_line_ = !is_empty;
  return {};
}

// Others have cut the file or put a new one in its place: reads again what the log knew about it.
void LogSeries::LookAnew() {
  assert(file_);
  const LogContent content = LookIntoLog(path_);
  const std::optional<FileStatus> status = file_->ReadStatus();
  size_ = status ? status->size : 0;
  lines_ = content.Lines();
  torn_ = content.torn;
  has_logged_line_ = content.Lines() > 0;
  header_due_ = true;
  removed_ = false;
}

bool LogSeries::Reopen() {
  assert(file_);
  if (const std::error_code error = file_->Reopen()) {
    ReportOnce(removed_ ? "create again the removed" : "open", name_, error);
    return false;
  }
  lost_ = false;
  if (removed_ && !std::exchange(fault_reported_, true)) {
    PrintLine("Log file " + name_ + " was removed and is created again");
  }
  // The write that failed may have left a part of its bytes.
  torn_ = EndsInsideLine(path_);
  return true;
}

// Returns whether there is a file to write to. Looks at the file before each line: a log runs for
// days, and users remove, cut and copy logs meanwhile.
bool LogSeries::EnsureOpen(Aftermath& after) {
  if (next_pending_) return FileSplitter(after);
  if (!file_) return false;
  std::optional<FileStatus> status = file_->ReadStatus();
  if (!lost_ && status && status->removed) lost_ = removed_ = true;
  if (lost_) {
    if (!Reopen()) return false;
    status = file_->ReadStatus();
  }
  if (removed_ || (status && status->size < size_)) {
    LookAnew();
  } else if (status) {
    size_ = status->size;
  }
  return true;
}

// Moves to the next file of the series. If that cannot be created, the full file stays closed and
// each further line tries again: lines must not exceed the limit of the full file.
bool LogSeries::FileSplitter(Aftermath& after) {
  if (!next_pending_) {
    Close(after);
    next_pending_ = true;
  }
  const std::string next = MakeSplitName(name_, next_index_);
  const std::string next_path = MakeSplitName(path_, next_index_);
  if (Open(next, next_path, OpenMode::kTruncate, {})) {
    if (!std::exchange(fault_reported_, true)) PrintLine("Unable to create log file");
    return false;
  }
  next_pending_ = false;
  ++next_index_;
  ++after.moves;
  ConsoleOut("Continue on Log File: " + next, TRACE_INFORMATION, false);
  return true;
}

void LogSeries::Close(Aftermath& after) {
  if (file_) {
    after.left.push_back(file_);
    file_->EndAppending();
    file_.reset();
    after.file.reset();
  }
  next_pending_ = false;
}

void LogSeries::FlushAll(Aftermath& after) const {
  after.file = file_;
  after.appended = file_ ? file_->Appended() : 0;
}

void LogSeries::Write(std::string_view line, Aftermath& after) {
  if (!Append(line, after)) PrintLine(line);
}

void LogSeries::WriteHeader(Aftermath& after) {
  if (header_due_ && !header_.empty()) Append(std::nullopt, after);
}

// Appends the header if it is due, and the line if there is one, in one write: a crash must not
// leave a header without its line, or parts of both.
bool LogSeries::Append(std::optional<std::string_view> line, Aftermath& after) {
  if (!EnsureOpen(after)) return false;
  assert(file_);
  std::string block = MakeBlock(line);
  if (IsFullFor(block)) {
    if (!FileSplitter(after)) return false;
    block = MakeBlock(line);  // the new file needs a header
  }
  const std::uint32_t count = CountLineEnds(block);
  // The line that was cut off is counted already; it only gets its line end.
  if (torn_) block.insert(block.begin(), '\n');
  UseSystemLineEnds(block);
  if (const std::error_code error = file_->Append(block)) {
    lost_ = true;
    ReportOnce("write to", name_, error);
    return false;
  }
  fault_reported_ = false;
  torn_ = false;
  header_due_ = false;
  size_ += block.size();
  lines_ += count;
  has_logged_line_ = has_logged_line_ || line;
  after.file = file_;
  after.appended = file_->Appended();
  return true;
}

std::string LogSeries::MakeBlock(std::optional<std::string_view> line) const {
  std::string block;
  if (header_due_ && !header_.empty()) AppendLine(block, header_);
  if (line) AppendLine(block, *line);
  return block;
}

bool LogSeries::IsFullFor(std::string_view block) const {
  // A text with more lines than the limit still gets a file of its own.
  if (limit_ == 0 || !has_logged_line_) return false;
  return std::uint64_t{lines_} + CountLineEnds(block) > limit_;
}

// Prints a fault of a file, once until a line is written again.
void LogSeries::ReportOnce(std::string_view what, std::string_view name,
                           const std::error_code& error) {
  if (!std::exchange(fault_reported_, true)) PrintFault(what, name, error);
}

void LogSeries::ReportFlushFault(DurableFile& file) {
  if (const auto error = file.TakeFault()) PrintFault("flush", file.Name(), *error);
}

}  // namespace vexor
