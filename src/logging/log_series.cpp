#include "logging/log_series.h"

#include <algorithm>
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

// A line end is added unless the line ends with one.
void AppendLine(std::string& text, std::string_view line) {
  text += line;
  if (!line.ends_with('\n')) text += '\n';
}

bool EndsInsideLine(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return file.seekg(-1, std::ios::end) && file.get() != '\n';
}

// The path leads to a file of its own on this system.
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
  std::error_code error = CheckName(name);
  if (error) return error;
  std::shared_ptr<DurableFile> opened = DurableFile::Open(path, name, mode, error);
  if (error) return error;
  const std::optional<FileStatus> status = opened->ReadStatus();
  const bool is_empty = !status || status->size == 0;
  const LogContent content = is_empty ? LogContent() : LookIntoLog(path, known);
  std::string its_name = name;
  std::string its_path = path;
  // Nothing is thrown from here on.
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

// The file is not what the log has written: others have cut it or made it anew.
void LogSeries::LookAnew() {
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
  if (const std::error_code error = file_->Reopen()) {
    ReportOnce(removed_ ? "make anew the removed" : "open", name_, error);
    return false;
  }
  lost_ = false;
  if (removed_ && !std::exchange(fault_reported_, true)) {
    PrintLine("Log file " + name_ + " was removed and begins anew");
  }
  torn_ = EndsInsideLine(path_);
  return true;
}

// False when there is no file to write to.
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

// Appends what is due of the header, and the line if there is one.
bool LogSeries::Append(std::optional<std::string_view> line, Aftermath& after) {
  if (!EnsureOpen(after)) return false;
  std::string block = MakeBlock(line);
  if (IsFullFor(block)) {
    if (!FileSplitter(after)) return false;
    block = MakeBlock(line);
  }
  const std::uint32_t count = CountLineEnds(block);
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
  // An entry that alone is longer than the limit still gets its file.
  if (limit_ == 0 || !has_logged_line_) return false;
  return std::uint64_t{lines_} + CountLineEnds(block) > limit_;
}

// Prints what is wrong with a file, unless something was since a line could last be written.
void LogSeries::ReportOnce(std::string_view what, std::string_view name,
                           const std::error_code& error) {
  if (!std::exchange(fault_reported_, true)) PrintFault(what, name, error);
}

void LogSeries::ReportFlushFault(DurableFile& file) {
  if (const auto error = file.TakeFault()) PrintFault("flush", file.Name(), *error);
}

}  // namespace vexor
