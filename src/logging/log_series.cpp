#include "logging/log_series.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <utility>

#include "logging/log_names.h"
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

struct Content {
  std::uint32_t lines = 0;  // the one included that the file ends in the middle of
  bool torn = false;        // there is such a line
};

Content LookInto(const std::string& path) {
  Content content;
  std::ifstream file(path, std::ios::binary);
  std::array<char, 65536> bytes = {};
  do {
    file.read(bytes.data(), bytes.size());
    content.lines += CountLineEnds({bytes.data(), static_cast<std::size_t>(file.gcount())});
  } while (file);
  content.torn = EndsInsideLine(path);
  if (content.torn) ++content.lines;
  return content;
}

void PrintFault(std::string_view name, std::string_view what, const std::error_code& error) {
  std::string text = "Log File: ";
  text.append(name).append(" ").append(what);
  if (error) text.append(": ").append(error.message());
  PrintLine(text);
}

}  // namespace

void PrintLine(std::string_view line) {
  std::string text(line);
  text += '\n';
  std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
}

bool LogSeries::Start(const std::string& name, OpenMode mode) {
  name_ = name;
  fault_reported_ = false;
  const std::error_code error = Open(name, MakeAbsolute(name), mode);
  if (error) ReportOnce(name, "cannot be opened", error);
  return !error;
}

std::error_code LogSeries::Open(const std::string& name, const std::string& path, OpenMode mode) {
  std::error_code error;
  std::shared_ptr<DurableFile> opened = DurableFile::Open(path, name, mode, error);
  if (error) return error;
  const bool is_empty = opened->IsEmpty();
  const Content content = is_empty ? Content() : LookInto(path);
  std::string its_name = name;
  std::string its_path = path;
  // Nothing is thrown from here on.
  file_ = std::move(opened);
  name_ = std::move(its_name);
  path_ = std::move(its_path);
  lost_ = false;
  header_due_ = true;
  lines_ = content.lines;
  torn_ = content.torn;
  has_logged_line_ = !is_empty;
  return {};
}

bool LogSeries::Reopen() {
  if (const std::error_code error = file_->Reopen()) {
    ReportOnce(name_, "cannot be opened", error);
    return false;
  }
  lost_ = false;
  const bool is_new = file_->IsEmpty();
  torn_ = !is_new && EndsInsideLine(path_);
  if (is_new) {
    header_due_ = true;
    lines_ = 0;
    has_logged_line_ = false;
  }
  return true;
}

// False when there is no file to write to.
bool LogSeries::EnsureOpen(Aftermath& after) {
  if (next_pending_) return FileSplitter(after);
  if (!file_) return false;
  if (!lost_ && file_->IsRemoved()) {
    lost_ = true;
    ReportOnce(name_, "was removed and begins anew", {});
  }
  return !lost_ || Reopen();
}

bool LogSeries::FileSplitter(Aftermath& after) {
  if (!std::exchange(next_pending_, true)) FlushAndClose();
  const std::string next = MakeSplitName(name_, next_index_);
  const std::string next_path = MakeSplitName(path_, next_index_);
  if (Open(next, next_path, OpenMode::kTruncate)) {
    if (!std::exchange(fault_reported_, true)) PrintLine("Unable to create log file");
    return false;
  }
  next_pending_ = false;
  ++next_index_;
  ++after.splits;
  ConsoleOut("Continue on Log File: " + next, TRACE_INFORMATION, false);
  return true;
}

void LogSeries::FlushAndClose() {
  if (file_ && !file_->Flush(file_->Appended())) ReportFlushFault(*file_);
  file_.reset();
}

void LogSeries::Close() {
  FlushAndClose();
  next_pending_ = false;
}

Aftermath LogSeries::Position() const {
  return {.file = file_, .appended = file_ ? file_->Appended() : 0, .splits = 0};
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
    ReportOnce(name_, "cannot be written", error);
    return false;
  }
  fault_reported_ = false;
  torn_ = false;
  header_due_ = false;
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
void LogSeries::ReportOnce(std::string_view name, std::string_view what,
                           const std::error_code& error) {
  if (!std::exchange(fault_reported_, true)) PrintFault(name, what, error);
}

void LogSeries::ReportFlushFault(DurableFile& file) {
  if (const auto error = file.TakeFault()) PrintFault(file.Name(), "cannot be flushed", *error);
}

}  // namespace vexor
