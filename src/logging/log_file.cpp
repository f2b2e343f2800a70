#include "vexor/logging/log_file.h"

#include <array>
#include <atomic>
#include <deque>
#include <exception>
#include <iostream>
#include <span>
#include <utility>

#include "logging/csv_row.h"
#include "logging/log_names.h"
#include "logging/log_series.h"
#include "logging/suite_header.h"
#include "logging/version_note.h"
#include "platform/platform.h"
#include "vexor/util/clock.h"

namespace {

using vexor::Aftermath;
using vexor::CsvCell;
using vexor::OpenMode;

// The text of a cell: a row has one line end, its own.
std::string_view WithoutLineEnd(std::string_view text) {
  if (text.ends_with('\n')) text.remove_suffix(1);
  if (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

// Locks the mutex. Tries for a moment before it waits: a line is written in less time than a
// thread takes to sleep and to wake.
std::unique_lock<std::mutex> LockSoon(std::mutex& mutex) {
  constexpr int kTries = 100;
  for (int i = 0; i < kTries; ++i) {
    if (std::unique_lock lock(mutex, std::try_to_lock); lock) return lock;
    vexor::HintSpinWait();
  }
  return std::unique_lock(mutex);
}

// Runs a step of a destructor, which nothing may leave. Memory may have run out: the report needs
// none.
template <class Step>
void RunAndReport(const Step& step) {
  try {
    step();
  } catch (const std::exception& error) {
    std::cout << error.what() << '\n';
  }
}

}  // namespace

// Not constinit: mingw's mutex has no constant initializer.
std::mutex VexorLogging::m_mFileHandleMutex;

struct VexorLogging::Impl {
  explicit Impl(VexorLogging& log) : owner(log) {}

  [[nodiscard]] bool Drops(TRACE_LEVEL line_level, bool force) const;
  void LogRow(std::span<const CsvCell> cells, TRACE_LEVEL line_level, bool force);

  // Waits for the disk and tells the front end about new files. The result is false when a flush of
  // the file has failed.
  bool Settle(const Aftermath& after);
  void UpdateAutoRunScript();

  // The rest is called under `m_mFileHandleMutex`.
  bool Start(const std::string& file, OpenMode mode, bool continues);
  [[nodiscard]] std::string MakeRow(std::span<const CsvCell> cells, TRACE_LEVEL line_level) const;
  void Take(std::string_view line, Aftermath& after);
  void WriteKept(Aftermath& after);
  void Close(bool save_kept, Aftermath& after);

  VexorLogging& owner;
  std::atomic<TRACE_LEVEL> level = TRACE_INFORMATION;
  std::atomic<bool> locked = false;

  // The rest is guarded by `m_mFileHandleMutex`.
  vexor::LogSeries series;
  vexor::CsvHeader columns;
  std::deque<std::string> kept;  // lines that wait for the log to be unlocked
  bool unexpected = false;
  std::string path;
  std::string override_options;
  ContextUtils* context = nullptr;
  std::string script;
  unsigned char flags = 0;

  std::array<char, kBufferSize> buffer = {};
};

// ---- Lines.

bool VexorLogging::Impl::Drops(TRACE_LEVEL line_level, bool force) const {
  return !force && line_level > level.load(std::memory_order_relaxed);
}

void VexorLogging::Impl::Take(std::string_view line, Aftermath& after) {
  if (locked.load(std::memory_order_relaxed)) {
    kept.emplace_back(line);
  } else {
    series.Write(line, after);
  }
}

void VexorLogging::Impl::WriteKept(Aftermath& after) {
  for (; !kept.empty(); kept.pop_front()) series.Write(kept.front(), after);
}

std::string VexorLogging::Impl::MakeRow(std::span<const CsvCell> cells,
                                        TRACE_LEVEL line_level) const {
  const std::thread::id thread = std::this_thread::get_id();
  const std::string time = GetCurTimeStamp();
  const std::string test = GetPMTestName(GetThreadTestId(thread));
  const std::string label = GetThreadAffinityLog(thread);
  const CsvCell own[] = {{.column = "Time", .text = time},
                         {.column = "TestType", .text = test},
                         {.column = "Affinity", .text = label},
                         {.column = "Level", .text = GetTraceLevelName(line_level, false)}};
  return columns.ComposeRow(own, cells);
}

void VexorLogging::Impl::LogRow(std::span<const CsvCell> cells, TRACE_LEVEL line_level,
                                bool force) {
  if (Drops(line_level, force)) return;
  Aftermath after;
  {
    const auto lock = LockSoon(m_mFileHandleMutex);
    Take(MakeRow(cells, line_level), after);
  }
  Settle(after);
}

void VexorLogging::LogLine(std::string_view text, TRACE_LEVEL level, bool force) {
  if (impl_->Drops(level, force)) return;
  Aftermath after;
  {
    const auto lock = LockSoon(m_mFileHandleMutex);
    impl_->Take(text, after);
  }
  impl_->Settle(after);
}

void VexorLogging::LogNote(std::string_view text, TRACE_LEVEL level, bool force) {
  const CsvCell cells[] = {{.column = "Notes", .text = WithoutLineEnd(text)}};
  impl_->LogRow(cells, level, force);
}

void VexorLogging::LogData(const std::vector<std::string>& texts, TRACE_LEVEL level, bool force) {
  std::vector<CsvCell> cells;
  cells.reserve(texts.size());
  for (const std::string& text : texts) {
    cells.push_back({.column = {}, .text = WithoutLineEnd(text)});
  }
  impl_->LogRow(cells, level, force);
}

void VexorLogging::LogMsgData(std::string_view text, TRACE_LEVEL level, std::string_view request,
                              std::string_view status, bool force) {
  const CsvCell cells[] = {{.column = "Notes", .text = WithoutLineEnd(text)},
                           {.column = "Request", .text = WithoutLineEnd(request)},
                           {.column = "Status", .text = WithoutLineEnd(status)}};
  impl_->LogRow(cells, level, force);
}

void VexorLogging::LogWorkloadData(std::string_view text, TRACE_LEVEL level, std::string_view scope,
                                   bool force) {
  const CsvCell cells[] = {{.column = "Notes", .text = WithoutLineEnd(text)},
                           {.column = "Scope", .text = WithoutLineEnd(scope)}};
  impl_->LogRow(cells, level, force);
}

void VexorLogging::LogHeaderLine() {
  Aftermath after;
  {
    const std::lock_guard lock(m_mFileHandleMutex);
    if (!impl_->locked) impl_->series.WriteHeader(after);
  }
  impl_->Settle(after);
}

void VexorLogging::UpdateHeaderLine(std::string_view header_line) {
  const std::lock_guard lock(m_mFileHandleMutex);
  vexor::CsvHeader columns(header_line);
  impl_->series.SetHeader(header_line);
  impl_->columns = std::move(columns);
}

void VexorLogging::ResetInitHeaderLine() {
  const std::lock_guard lock(m_mFileHandleMutex);
  impl_->series.MakeHeaderDue();
}

void VexorLogging::LockLogging() {
  const std::lock_guard lock(m_mFileHandleMutex);
  impl_->locked = true;
}

void VexorLogging::UnlockLogging() {
  Aftermath after;
  {
    const std::lock_guard lock(m_mFileHandleMutex);
    impl_->WriteKept(after);
    impl_->locked = false;
  }
  impl_->Settle(after);
}

bool VexorLogging::IsLoggingLocked() const { return impl_->locked.load(std::memory_order_relaxed); }

// ---- Opening and closing.

VexorLogging::VexorLogging() : VexorLogging(vexor::kSuiteHeader) {}

VexorLogging::VexorLogging(std::string_view header_line) : impl_(std::make_unique<Impl>(*this)) {
  UpdateHeaderLine(header_line);
}

VexorLogging::~VexorLogging() {
  RunAndReport([this] { CloseFile(true); });
  RunAndReport([this] { ForgetLog(); });  // whatever became of the file
}

bool VexorLogging::Initialize(std::string_view path, std::string_view name, TRACE_LEVEL level,
                              LOG_FILE_OPTIONS file_option, bool locked_at_start,
                              bool no_version_note, bool continue_log, bool silent) {
  Aftermath after;
  bool started = false;
  {
    const std::lock_guard lock(m_mFileHandleMutex);
    impl_->Close(true, after);
    if (!continue_log) ForgetThreads();
    impl_->path = path;
    impl_->locked = locked_at_start;
    impl_->level = level;
    const OpenMode mode = file_option == LOG_FILE_APPEND ? OpenMode::kAppend : OpenMode::kTruncate;
    started = impl_->Start(BuildLogFile(path, name), mode, continue_log);
    if (started && !silent) {
      ConsoleOut((continue_log ? "Continue on Log File: " : "Log File: ") + impl_->series.Name(),
                 TRACE_INFORMATION, false);
    }
    if (started && !no_version_note && !impl_->Drops(TRACE_CRITICAL, false)) {
      const std::string note = vexor::MakeVersionNote();
      const CsvCell cells[] = {{.column = "Notes", .text = note}};
      impl_->Take(impl_->MakeRow(cells, TRACE_CRITICAL), after);
    }
    if (started) RegisterThisThread(level, !continue_log);
  }
  impl_->Settle(after);
  return started;
}

// Opens the file of this name, or of the name in the series that it begins or goes on with.
bool VexorLogging::Impl::Start(const std::string& file, OpenMode mode, bool continues) {
  std::string name = file;
  if (!continues) series.SetNextIndex(1);
  if (!continues && series.Limit() > 0) {
    if (!locked && !unexpected) {
      name = vexor::MakeSplitName(file, 0);
    } else if (const auto index = vexor::FindSeriesIndex(file)) {
      series.SetNextIndex(*index + 1);
    }
  }
  if (!series.Start(name, mode)) return false;
  if (!continues) unexpected = false;
  return true;
}

void VexorLogging::Impl::Close(bool save_kept, Aftermath& after) {
  if (save_kept) {
    WriteKept(after);
  } else if (!kept.empty()) {
    vexor::PrintLine("Log File: " + series.Name() + " drops " + std::to_string(kept.size()) +
                     " lines that it kept while locked");
    kept.clear();
  }
  series.Close();
}

void VexorLogging::CloseFile(bool save_kept) {
  Aftermath after;
  {
    const std::lock_guard lock(m_mFileHandleMutex);
    impl_->Close(save_kept, after);
  }
  impl_->Settle(after);
}

bool VexorLogging::SaveFile() {
  Aftermath after;
  {
    const std::lock_guard lock(m_mFileHandleMutex);
    impl_->WriteKept(after);
    const unsigned splits = after.splits;
    after = impl_->series.Position();
    after.splits = splits;
  }
  return impl_->Settle(after);
}

bool VexorLogging::FlushToDisk() {
  Aftermath after;
  {
    const std::lock_guard lock(m_mFileHandleMutex);
    after = impl_->series.Position();
  }
  return impl_->Settle(after);
}

bool VexorLogging::Impl::Settle(const Aftermath& after) {
  bool durable = true;
  if (after.file && !after.file->Flush(after.appended)) {
    const std::lock_guard lock(m_mFileHandleMutex);
    vexor::LogSeries::ReportFlushFault(*after.file);
    durable = false;
  }
  for (unsigned i = 0; i < after.splits; ++i) {
    owner.RegisterThisThread(level.load(std::memory_order_relaxed), false);
    UpdateAutoRunScript();
  }
  return durable;
}

void VexorLogging::Impl::UpdateAutoRunScript() {
  constexpr unsigned char kAnnounceOnly = 2;
  ContextUtils* front_end = nullptr;
  std::string its_script;
  unsigned char its_flags = 0;
  {
    const std::lock_guard lock(m_mFileHandleMutex);
    if ((flags & kAnnounceOnly) != 0) return vexor::PrintLine("Update VexorPanel auto-run");
    front_end = context;
    its_script = script;
    its_flags = flags;
  }
  // Without a lock: the front end may log, to this log as well.
  if (front_end != nullptr) front_end->CreateAutoRun(std::move(its_script), its_flags);
}

// ---- Settings.

LOG_FILE_OPTIONS ParseLogFileOptions(std::string_view text) {
  if (text == "Overwrite") return LOG_FILE_OVERWRITE;
  return text == "New" ? LOG_FILE_NEW : LOG_FILE_APPEND;
}

std::string VexorLogging::BuildLogFile(std::string_view path, std::string_view name) {
  return vexor::MakeLogName(path, name);
}

std::string VexorLogging::UpdateFileNameToSplit(std::string_view name, std::uint32_t index) {
  return vexor::MakeSplitName(name, index);
}

bool VexorLogging::IsInitialized() const {
  const std::lock_guard lock(m_mFileHandleMutex);
  return impl_->series.IsOpen();
}

void VexorLogging::UnexpectedInit() {
  const std::lock_guard lock(m_mFileHandleMutex);
  impl_->unexpected = true;
}

void VexorLogging::SetLinesLimitToSplit(std::uint32_t limit) {
  const std::lock_guard lock(m_mFileHandleMutex);
  impl_->series.SetLimit(limit);
}

void VexorLogging::SetAutoRunInfo(ContextUtils* context,
                                  const std::tuple<std::string, unsigned char>& info) {
  const std::lock_guard lock(m_mFileHandleMutex);
  std::tie(impl_->script, impl_->flags) = info;
  impl_->context = context;
}

std::string VexorLogging::GetLogFile() const {
  const std::lock_guard lock(m_mFileHandleMutex);
  return impl_->series.Name();
}

std::string VexorLogging::GetLogPath() const {
  const std::lock_guard lock(m_mFileHandleMutex);
  return impl_->path;
}

void VexorLogging::SetLogOvrOptions(std::string_view options) {
  const std::lock_guard lock(m_mFileHandleMutex);
  impl_->override_options = options;
}

std::string VexorLogging::GetLogOvrOptions() const {
  const std::lock_guard lock(m_mFileHandleMutex);
  return impl_->override_options;
}

TRACE_LEVEL VexorLogging::GetGlobalLogLevel() const {
  return impl_->level.load(std::memory_order_relaxed);
}

void VexorLogging::SetGlobalTraceLevel(TRACE_LEVEL level) {
  impl_->level.store(level, std::memory_order_relaxed);
}

char* VexorLogging::GetBuffer() { return impl_->buffer.data(); }
