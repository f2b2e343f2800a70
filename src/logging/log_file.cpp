#include "vexor/logging/log_file.h"

#include <array>
#include <atomic>
#include <deque>
#include <exception>
#include <optional>
#include <span>
#include <utility>

#include "logging/csv_row.h"
#include "logging/log_names.h"
#include "logging/log_series.h"
#include "logging/suite_header.h"
#include "logging/version_note.h"
#include "platform/immortal.h"
#include "platform/platform.h"
#include "util/standard_output.h"
#include "vexor/util/clock.h"

// Locks, in the order in which they are taken:
//  1. `m_mFileHandleMutex`, one for all logs: the open files, the lines kept while a log is locked.
//  2. `m_mThreadIdMutex`, also one for all logs: the routing tables (thread_routing.cpp). Making a
//     row and moving to a new file look threads up while they hold the first mutex.
//  2. The mutex of a `DurableFile`, when a file is reopened or its fault is fetched.
// The two mutexes of the second rank are never held together, and no other lock is taken under
// them. None of the three is held during a flush or while the front end runs: a slow disk would
// hold up the logs on all other disks, and a front end that logs would deadlock.

namespace {

using vexor::Aftermath;
using vexor::CsvCell;
using vexor::OpenMode;

// Returns the text without its last line end, for a cell: callers end texts as they end lines.
std::string_view WithoutLineEnd(std::string_view text) {
  if (!text.ends_with('\n')) return text;
  text.remove_suffix(1);
  if (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

// Locks the mutex, spinning briefly before it blocks: the holder usually writes one line, which
// takes less time than putting a thread to sleep and waking it.
std::unique_lock<std::mutex> LockSoon(std::mutex& mutex) {
  constexpr int kTries = 100;
  for (int i = 0; i < kTries; ++i) {
    if (std::unique_lock lock(mutex, std::try_to_lock); lock) return lock;
    vexor::HintSpinWait();
  }
  return std::unique_lock(mutex);
}

// Runs a step of a destructor and prints what it throws, as no exception may leave a destructor.
// Prints without allocating: the exception may be std::bad_alloc.
template <class Step>
void RunAndReport(const Step& step) {
  try {
    step();
  } catch (const std::exception& error) {
    vexor::StandardOutput() << error.what() << '\n';
  } catch (...) {
    vexor::StandardOutput() << "The front end of a log threw an exception of unknown type\n";
  }
}

// Runs the step. Returns the exception that it threw, null if it threw none.
template <class Step>
std::exception_ptr Try(const Step& step) {
  try {
    step();
    return nullptr;
  } catch (...) {
    return std::current_exception();
  }
}

// Marks that this thread is inside the front end of `log`, which announces a move to a new file. A
// front end that logs to the same log may cause another move; announcing that one as well could
// recurse without end. The marks of a thread form a list on its stack, because a front end may log
// to other logs, which have front ends of their own.
class Telling {
 public:
  explicit Telling(const void* log) : log_(log) { innermost = this; }
  Telling(const Telling&) = delete;
  Telling& operator=(const Telling&) = delete;
  ~Telling() { innermost = outer_; }

  static bool IsBy(const void* log) {
    const Telling* telling = innermost;
    while (telling != nullptr && telling->log_ != log) telling = telling->outer_;
    return telling != nullptr;
  }

 private:
  static constinit thread_local const Telling* innermost;

  const void* log_;
  const Telling* outer_ = innermost;
};

constinit thread_local const Telling* Telling::innermost = nullptr;

// The file that a log starts with, and the index of the next file of its series.
struct FirstFile {
  std::string name;
  std::uint32_t next_index;
};

}  // namespace

constinit vexor::Immortal<std::mutex> VexorLogging::m_mFileHandleMutex;

struct VexorLogging::Impl {
  explicit Impl(VexorLogging& log) : owner(log) {}

  [[nodiscard]] bool Drops(TRACE_LEVEL line_level, bool force) const;
  void LogRow(std::span<const CsvCell> cells, TRACE_LEVEL line_level, bool force);

  // Runs a step under `m_mFileHandleMutex`. Then releases the mutex, flushes what the step wrote
  // and tells the front end about new files, even if the step threw; its exception is rethrown at
  // the end. Returns false if a flush of a file that the step wrote to has failed, now or earlier.
  template <class Step>
  bool Run(const Step& step);

  // The same, but first writes the lines that were kept while the log was locked.
  template <class Step>
  bool RunAfterKept(const Step& step);

  vexor::LogContent LookAhead(const std::string& file, bool continues, bool is_locked);
  bool FlushAndAnnounce(Aftermath& after);
  bool Flush(const std::shared_ptr<vexor::DurableFile>& file, std::uint64_t count);
  void UpdateAutoRunScript(unsigned& moves);

  // The rest is called under `m_mFileHandleMutex`.
  bool Start(std::string_view name, OpenMode mode, bool continues, const vexor::LogContent& known);
  std::error_code StartFile(const std::string& file, OpenMode mode, bool continues,
                            const vexor::LogContent& known);
  [[nodiscard]] FirstFile PlanStart(const std::string& file, bool continues, bool is_locked) const;
  [[nodiscard]] std::string MakeRow(std::span<const CsvCell> cells, TRACE_LEVEL line_level) const;
  void WriteOrKeep(std::string_view line, Aftermath& after);
  void WriteKept(std::size_t& due, Aftermath& after);
  void DropKept();

  VexorLogging& owner;
  std::atomic<TRACE_LEVEL> level = TRACE_INFORMATION;
  std::atomic<bool> locked = false;
  // Moves that an exception kept from being announced to the front end; the next call does it.
  std::atomic<unsigned> untold_moves = 0;

  // The rest is guarded by `m_mFileHandleMutex`.
  vexor::LogSeries series;
  vexor::CsvHeader columns;
  std::deque<std::string> kept;  // lines logged while the log is locked
  bool unexpected = false;       // after UnexpectedInit: keep the name that Initialize is given
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

void VexorLogging::Impl::WriteOrKeep(std::string_view line, Aftermath& after) {
  if (locked.load(std::memory_order_relaxed)) {
    kept.emplace_back(line);
  } else {
    series.Write(line, after);
  }
}

// Writes up to `due` of the kept lines. Stops early when this has filled many files: those are
// flushed and closed, without the mutex, before further ones are opened.
void VexorLogging::Impl::WriteKept(std::size_t& due, Aftermath& after) {
  constexpr std::size_t kMostOpenFiles = 16;
  for (; due > 0 && !kept.empty() && after.left.size() < kMostOpenFiles; --due) {
    series.Write(kept.front(), after);
    kept.pop_front();
  }
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
  Run([&](Aftermath& after) { WriteOrKeep(MakeRow(cells, line_level), after); });
}

void VexorLogging::LogLine(std::string_view text, TRACE_LEVEL level, bool force) {
  if (impl_->Drops(level, force)) return;
  impl_->Run([&](Aftermath& after) { impl_->WriteOrKeep(text, after); });
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
  impl_->Run([this](Aftermath& after) {
    if (!impl_->locked) impl_->series.WriteHeader(after);
  });
}

void VexorLogging::UpdateHeaderLine(std::string_view header_line) {
  const std::lock_guard lock(*m_mFileHandleMutex);
  // In this order an exception leaves both forms of the old header.
  vexor::CsvHeader columns(header_line);
  impl_->series.SetHeader(header_line);
  impl_->columns = std::move(columns);
}

void VexorLogging::ResetInitHeaderLine() {
  const std::lock_guard lock(*m_mFileHandleMutex);
  impl_->series.MakeHeaderDue();
}

void VexorLogging::LockLogging() {
  const std::lock_guard lock(*m_mFileHandleMutex);
  impl_->locked = true;
}

void VexorLogging::UnlockLogging() {
  impl_->RunAfterKept([this](Aftermath& /*after*/) { impl_->locked = false; });
}

bool VexorLogging::IsLoggingLocked() const { return impl_->locked.load(std::memory_order_relaxed); }

// ---- Opening and closing.

VexorLogging::VexorLogging() : VexorLogging(vexor::kSuiteHeader) {}

VexorLogging::VexorLogging(std::string_view header_line) : impl_(std::make_unique<Impl>(*this)) {
  UpdateHeaderLine(header_line);
}

VexorLogging::~VexorLogging() {
  RunAndReport([this] { CloseFile(true); });
  RunAndReport([this] { ForgetLog(); });  // even if closing failed: no thread may find this log
}

bool VexorLogging::Initialize(std::string_view path, std::string_view name, TRACE_LEVEL level,
                              LOG_FILE_OPTIONS file_option, bool locked_at_start,
                              bool no_version_note, bool continue_log, bool silent) {
  const OpenMode mode = file_option == LOG_FILE_APPEND ? OpenMode::kAppend : OpenMode::kTruncate;
  vexor::LogContent known;
  if (mode == OpenMode::kAppend && !name.empty()) {
    known = impl_->LookAhead(vexor::MakeLogName(path, name), continue_log, locked_at_start);
  }
  bool started = false;
  impl_->RunAfterKept([&](Aftermath& after) {
    impl_->series.Close(after);
    if (!continue_log) ForgetThreads();
    impl_->path = path;
    impl_->locked = locked_at_start;
    impl_->level = level;
    started = impl_->Start(name, mode, continue_log, known);
    if (!started) return;
    if (!silent) {
      ConsoleOut((continue_log ? "Continue on Log File: " : "Log File: ") + impl_->series.Name(),
                 TRACE_INFORMATION, false);
    }
    if (!no_version_note && !impl_->Drops(TRACE_CRITICAL, false)) {
      const std::string note = vexor::MakeVersionNote();
      const CsvCell cells[] = {{.column = "Notes", .text = note}};
      impl_->WriteOrKeep(impl_->MakeRow(cells, TRACE_CRITICAL), after);
    }
    RegisterThisThread(level, !continue_log);
  });
  return started;
}

// Counts the lines of the file that Initialize is about to append to. The file may be long, so it
// is read without the mutex; under it, LookIntoLog reads only what was added since.
vexor::LogContent VexorLogging::Impl::LookAhead(const std::string& file, bool continues,
                                                bool is_locked) {
  std::string first;
  {
    const std::lock_guard lock(*m_mFileHandleMutex);
    first = PlanStart(file, continues, is_locked).name;
  }
  return vexor::LookIntoLog(vexor::MakeAbsolute(first));
}

// Opens the file of this name. An empty name stands for one made from the time. Another log, in
// this process or another, may have taken that in the same millisecond: kCreate fails for a file
// that exists, and the name's next copy is tried.
bool VexorLogging::Impl::Start(std::string_view name, OpenMode mode, bool continues,
                               const vexor::LogContent& known) {
  if (!name.empty()) return !StartFile(vexor::MakeLogName(path, name), mode, continues, known);
  std::error_code error = std::make_error_code(std::errc::file_exists);
  for (unsigned copy = 1; error == std::errc::file_exists; ++copy) {
    error = StartFile(vexor::MakeLogName(path, name, copy), OpenMode::kCreate, continues, known);
  }
  return !error;
}

std::error_code VexorLogging::Impl::StartFile(const std::string& file, OpenMode mode,
                                              bool continues, const vexor::LogContent& known) {
  const FirstFile first = PlanStart(file, continues, locked);
  series.SetNextIndex(first.next_index);
  const std::error_code error = series.Start(first.name, mode, known);
  if (!error && !continues) unexpected = false;
  return error;
}

// With a line limit, a log starts a series with the file of index 0. The name stays as it is when
// a log is continued, when the log starts locked, and after UnexpectedInit, which says that the
// name is that of a file within a series.
FirstFile VexorLogging::Impl::PlanStart(const std::string& file, bool continues,
                                        bool is_locked) const {
  if (continues) return {file, series.NextIndex()};
  if (series.Limit() == 0) return {file, 1};
  if (!is_locked && !unexpected) return {vexor::MakeSplitName(file, 0), 1};
  const auto index = vexor::FindSeriesIndex(file);
  return {file, index ? *index + 1 : 1};
}

struct vexor::LogContinuation {
  // Returns whether the log has a line limit, that is, whether it writes a series of files.
  static bool SetUnexpected(VexorLogging& log, bool unexpected) {
    const std::lock_guard lock(*VexorLogging::m_mFileHandleMutex);
    log.impl_->unexpected = unexpected;
    return log.impl_->series.Limit() > 0;
  }
};

bool vexor::ContinueLog(VexorLogging& log, std::string_view path, std::string_view name,
                        TRACE_LEVEL level) {
  std::string last;
  if (LogContinuation::SetUnexpected(log, false) && !name.empty()) {
    std::error_code error;
    last = FindLastOfSeries(path, name, error);
    if (error) {
      log.CloseFile(true);
      PrintFault("find the series of", VexorLogging::BuildLogFile(path, name), error);
      return false;
    }
  }
  if (last.empty()) return log.Initialize(path, name, level, LOG_FILE_APPEND);
  LogContinuation::SetUnexpected(log, true);
  const bool started = log.Initialize(path, last, level, LOG_FILE_APPEND);
  if (!started) LogContinuation::SetUnexpected(log, false);
  return started;
}

void VexorLogging::Impl::DropKept() {
  if (kept.empty()) return;
  vexor::PrintLine("Log file " + series.Name() + " drops " + std::to_string(kept.size()) +
                   " line(s) kept while it was locked");
  kept.clear();
}

void VexorLogging::CloseFile(bool save_kept) {
  const auto close = [this](Aftermath& after) { impl_->series.Close(after); };
  if (save_kept) {
    impl_->RunAfterKept(close);
    return;
  }
  impl_->Run([&](Aftermath& after) {
    impl_->DropKept();
    close(after);
  });
}

bool VexorLogging::SaveFile() {
  return impl_->RunAfterKept([this](Aftermath& after) { impl_->series.FlushAll(after); });
}

bool VexorLogging::FlushToDisk() {
  return impl_->Run([this](Aftermath& after) { impl_->series.FlushAll(after); });
}

template <class Step>
bool VexorLogging::Impl::Run(const Step& step) {
  Aftermath after;
  std::exception_ptr failure;
  {
    const auto lock = LockSoon(*m_mFileHandleMutex);
    failure = Try([&] { step(after); });
    if (after.moves > 0) {
      // Under the same lock as the move: otherwise another log's Initialize could forget all
      // threads between the two, and this older registration would survive it.
      const auto other_failure =
          Try([&] { owner.RegisterThisThread(level.load(std::memory_order_relaxed), false); });
      if (!failure) failure = other_failure;
    }
  }
  const bool durable = FlushAndAnnounce(after);
  if (failure) std::rethrow_exception(failure);
  return durable;
}

template <class Step>
bool VexorLogging::Impl::RunAfterKept(const Step& step) {
  std::optional<std::size_t> due;
  bool durable = true;
  std::exception_ptr failure;
  for (bool done = false; !done;) {
    bool completed = false;
    const auto turn = [&](Aftermath& after) {
      // Counted once: other threads may log between two turns, and could keep this loop busy for
      // ever.
      if (!due) due = kept.size();
      WriteKept(*due, after);
      if (*due == 0 || kept.empty()) {
        for (; !kept.empty(); kept.pop_front()) series.Write(kept.front(), after);
        step(after);
        done = true;
      }
      completed = true;
    };
    const auto failure_of_turn = Try([&] { durable = Run(turn) && durable; });
    if (!failure) failure = failure_of_turn;
    // A turn that fails would fail again. One that completed, but whose front end threw, does not
    // keep the other lines from being written.
    if (!completed) break;
  }
  if (failure) std::rethrow_exception(failure);
  return durable;
}

bool VexorLogging::Impl::Flush(const std::shared_ptr<vexor::DurableFile>& file,
                               std::uint64_t count) {
  if (file->Flush(count)) return true;
  const std::lock_guard lock(*m_mFileHandleMutex);
  vexor::LogSeries::ReportFlushFault(*file);
  return false;
}

bool VexorLogging::Impl::FlushAndAnnounce(Aftermath& after) {
  bool durable = true;
  const bool is_telling = Telling::IsBy(this);
  if (is_telling) after.moves = 0;
  const auto failure = Try([&] {
    // Oldest first: a power cut meanwhile should cost the newest lines, not those before them.
    for (const auto& file : after.left) durable = Flush(file, file->Appended()) && durable;
    after.left.clear();  // closes them: the front end may want to copy or move them
    if (after.file) durable = Flush(after.file, after.appended) && durable;
    if (is_telling) return;
    if (untold_moves.load(std::memory_order_relaxed) > 0) after.moves += untold_moves.exchange(0);
    while (after.moves > 0) UpdateAutoRunScript(after.moves);
  });
  if (failure) {
    untold_moves += after.moves;
    std::rethrow_exception(failure);
  }
  return durable;
}

// Tells the front end about one move. Counts it as told before the call: if the front end throws,
// the move is not announced again.
void VexorLogging::Impl::UpdateAutoRunScript(unsigned& moves) {
  constexpr unsigned char kAnnounceOnly = 2;
  ContextUtils* front_end = nullptr;
  std::string its_script;
  unsigned char its_flags = 0;
  {
    const std::lock_guard lock(*m_mFileHandleMutex);
    if ((flags & kAnnounceOnly) != 0) {
      vexor::PrintLine("Update VexorPanel auto-run");
    } else {
      front_end = context;
      its_script = script;
      its_flags = flags;
    }
  }
  --moves;
  // Without a lock: the front end may log, even to this log.
  const Telling telling(this);
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
  const std::lock_guard lock(*m_mFileHandleMutex);
  return impl_->series.IsOpen();
}

void VexorLogging::UnexpectedInit() {
  const std::lock_guard lock(*m_mFileHandleMutex);
  impl_->unexpected = true;
}

void VexorLogging::SetLinesLimitToSplit(std::uint32_t limit) {
  const std::lock_guard lock(*m_mFileHandleMutex);
  impl_->series.SetLimit(limit);
}

void VexorLogging::SetAutoRunInfo(ContextUtils* context,
                                  const std::tuple<std::string, unsigned char>& info) {
  const std::lock_guard lock(*m_mFileHandleMutex);
  std::tie(impl_->script, impl_->flags) = info;
  impl_->context = context;
}

std::string VexorLogging::GetLogFile() const {
  const std::lock_guard lock(*m_mFileHandleMutex);
  return impl_->series.Name();
}

std::string VexorLogging::GetLogPath() const {
  const std::lock_guard lock(*m_mFileHandleMutex);
  return impl_->path;
}

void VexorLogging::SetLogOvrOptions(std::string_view options) {
  const std::lock_guard lock(*m_mFileHandleMutex);
  impl_->override_options = options;
}

std::string VexorLogging::GetLogOvrOptions() const {
  const std::lock_guard lock(*m_mFileHandleMutex);
  return impl_->override_options;
}

TRACE_LEVEL VexorLogging::GetGlobalLogLevel() const {
  return impl_->level.load(std::memory_order_relaxed);
}

void VexorLogging::SetGlobalTraceLevel(TRACE_LEVEL level) {
  impl_->level.store(level, std::memory_order_relaxed);
}

char* VexorLogging::GetBuffer() { return impl_->buffer.data(); }
