// Log files that survive crashes and power cuts, and the routing of threads to them.
//
// A `VexorLogging` object writes lines of comma-separated values to a ".csv" file under a header
// line. When a call that logs returns, its line is on the disk. The exception is a locked log: it
// keeps lines in memory, where they are lost with the process, until it is unlocked, saved or
// closed. Without an open file, lines go to standard output.
//
//   VexorLogging log;
//   log.SetLinesLimitToSplit(100000);
//   if (!log.Initialize("C:\\logs", "run", TRACE_INFORMATION, LOG_FILE_NEW)) return;
//   VexorLogging::SetThreadTestLog(worker.get_id(), PM_TEST_CSTATES, TRACE_DEBUG, &log);
//   log.LogNote("package C6 reached", TRACE_INFORMATION);  // a row with its text under "Notes"
//   VexorLogging::LogSpecificLevel("from code that knows only its thread", TRACE_DEBUG);
//
// A line is logged if it is forced or if its level is not above the object's level; other lines are
// dropped. If a file cannot be written, this is printed once on standard output, and its lines go
// there until the file can be written again. The first failed flush of a file is printed as well. A
// file that another program has removed or cut gets the header line again, and its lines are
// counted again from what it still has.
//
// With a limit of lines, a long log continues in numbered files: run_0.csv, run_1.csv, ... Moving
// to the next file empties it if it exists. So a new series overwrites the files of an earlier run
// one by one, even with LOG_FILE_APPEND, which applies only to the first file. To keep the earlier
// files, continue the series after its last file:
//
//   log.SetLinesLimitToSplit(100000);
//   vexor::MakeFolders("C:\\logs");                                 // a log creates no folders
//   vexor::ContinueLog(log, "C:\\logs", "run", TRACE_INFORMATION);  // run_0.csv, or say run_7.csv
//
// Several objects, even in several processes, may append to one file without mixing their lines.
// But each counts lines for itself: with a limit, they would overwrite each other's files.
//
// Any thread may call any function while the object exists. A mutex that fails throws
// std::system_error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <tuple>
#include <vector>

#include "vexor/export.h"
#include "vexor/logging/console.h"
#include "vexor/logging/context_utils.h"
#include "vexor/vocabulary/pm_tests.h"

// How a log opens a file that exists. Any value but LOG_FILE_APPEND empties it.
enum LOG_FILE_OPTIONS : std::int32_t {
  LOG_FILE_APPEND = 0,
  LOG_FILE_OVERWRITE = 1,
  LOG_FILE_NEW = 2,
};

// Returns LOG_FILE_OVERWRITE for "Overwrite", LOG_FILE_NEW for "New" and LOG_FILE_APPEND for any
// other text. Case matters.
VEXOR_EXPORT LOG_FILE_OPTIONS ParseLogFileOptions(std::string_view text);

class VexorLogging;

namespace vexor {

template <class T>
class Immortal;  // an object that is never destroyed, so that destructors of globals may log

// Opens the log like `Initialize` with LOG_FILE_APPEND. With a limit of lines, continues the series
// of this name: appends to its file with the highest number, numbers further files from there, and
// empties no file of an earlier run. Starts a new series if there are no files. Returns whether a
// file was opened; false also if the folder cannot be read.
VEXOR_EXPORT bool ContinueLog(VexorLogging& log, std::string_view path, std::string_view name,
                              TRACE_LEVEL level);

struct LogContinuation;  // gives `ContinueLog` access to private members

}  // namespace vexor

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // private members of the standard library's types; see export.h
#endif

class VEXOR_EXPORT VexorLogging {
 public:
  // A log whose header line has the columns of the suite's tests, from "Time" to "Level".
  VexorLogging();
  // A log with another header line.
  explicit VexorLogging(std::string_view header_line);

  VexorLogging(const VexorLogging&) = delete;
  VexorLogging& operator=(const VexorLogging&) = delete;

  // Writes the lines that a locked log keeps and closes the file. Threads that were routed to this
  // object then have no log.
  ~VexorLogging();

  // Closes the file that is open, if any, after writing the lines that a locked log keeps. Then
  // opens the log file of this folder and name (see `BuildLogFile`) and returns whether that
  // succeeded; if not, prints the reason, and lines go to standard output. The folder must exist
  // (see `vexor::MakeFolders`). Only regular files are
  // accepted: devices, pipes, names with a zero byte, and on Windows names such as NUL or COM1.csv
  // are refused. An empty name stands for one made from the time, with "-2", "-3", ... added if
  // that is taken. Before appending to a file, its lines are counted; for a long file that takes a
  // while, but does not hold up other logs.
  //
  // Unless `continue_log` is set, all threads of the process lose their routing, and a new series
  // begins: with a limit of lines, the name gets "_0". With `locked_at_start`, or after
  // `UnexpectedInit`, the name stays as it is, and the series continues after the number that the
  // name ends with. Prints the name on the console unless `silent` is set. Logs a note of the
  // library's version unless `no_version_note` is set. Routes the calling thread to this object;
  // with `continue_log`, only if it has no route yet.
  bool Initialize(std::string_view path, std::string_view name, TRACE_LEVEL level,
                  LOG_FILE_OPTIONS file_option, bool locked_at_start = false,
                  bool no_version_note = false, bool continue_log = false, bool silent = false);

  // Returns the path of the log `name` in the folder `path`, or just the name if `path` is empty.
  // Adds ".csv" unless the name ends with it in any case. An empty name becomes "VexorLog_" and the
  // time.
  static std::string BuildLogFile(std::string_view path, std::string_view name);

  // Returns the name of the file with this index in a series: inserts "_" and the index before the
  // extension, in place of the previous index if the name ends with it: run.csv, run_0.csv,
  // run_1.csv.
  static std::string UpdateFileNameToSplit(std::string_view name, std::uint32_t index);

  // Logs the text unchanged, with a line end added if it has none. The text is not quoted and has
  // no time, test or level: a reader of the file splits it at its commas.
  void LogLine(std::string_view text, TRACE_LEVEL level, bool force = false);

  // The following four functions log a row under the current header line. The columns "Time",
  // "TestType", "Affinity" and "Level", as far as the header has them, get the time of the call,
  // the calling thread's test and affinity label, and `level`. The texts go to the columns named at
  // each function. A text whose column the header lacks goes to the next free column, or before
  // "Level" if there is none. Cells are quoted where CSV needs it; one line end at the end of a
  // text is dropped.

  // `text` goes to "Notes".
  void LogNote(std::string_view text, TRACE_LEVEL level, bool force = false);

  // The texts go to the free columns in order; surplus texts are inserted before "Level".
  void LogData(const std::vector<std::string>& texts, TRACE_LEVEL level, bool force = false);

  // `text` goes to "Notes", `request` to "Request", `status` to "Status".
  void LogMsgData(std::string_view text, TRACE_LEVEL level, std::string_view request,
                  std::string_view status, bool force = false);

  // `text` goes to "Notes", `scope` to "Scope".
  void LogWorkloadData(std::string_view text, TRACE_LEVEL level, std::string_view scope,
                       bool force = false);

  // Logs the text as `LogLine` does, to the log of the calling thread, if `level` is not above the
  // level that the thread was registered with. If the thread has no log, prints the text on the
  // console if `level` is not above the print level.
  static void LogSpecificLevel(std::string_view text, TRACE_LEVEL level);

  // Writes the header line if it is due, a file is open and the log is not locked. Without this
  // call, the header is written together with the next line.
  void LogHeaderLine();

  // Sets the header line by which further rows are composed. The file gets the new line only after
  // `ResetInitHeaderLine`, or at the start of the next file.
  void UpdateHeaderLine(std::string_view header_line);

  // Makes the header line due again: it is written above the next line.
  void ResetInitHeaderLine();

  // Flushes the file and returns whether all its lines are on the disk: false if a flush of this
  // file has failed, now or earlier; true if no file is open.
  bool FlushToDisk();

  // Writes the lines that a locked log keeps, then does the same as `FlushToDisk`.
  bool SaveFile();

  // Flushes and closes the file, if one is open. With `save_kept`, first writes the lines that a
  // locked log keeps; otherwise drops them and prints how many.
  void CloseFile(bool save_kept);

  // Returns whether a file is open.
  [[nodiscard]] bool IsInitialized() const;

  // A locked log keeps lines in memory, in order, until it is unlocked, saved or closed. The lines
  // have the time of the call that logged them; lines that the level drops are not kept.
  void LockLogging();
  void UnlockLogging();
  [[nodiscard]] bool IsLoggingLocked() const;

  // Makes the next successful Initialize (without `continue_log`) continue the existing series: it
  // opens the file of the given name, and further files get the numbers after the one that the name
  // ends with.
  void UnexpectedInit();

  // Limits the lines of each file, including header lines; a file always gets at least one logged
  // line, even a longer one. 0, the initial value, means no limit. See the head of this file on
  // moving to further files.
  void SetLinesLimitToSplit(std::uint32_t limit);

  // Sets whom the log tells that it has moved to a new file. `context` (not owned; may be null)
  // gets the script and the flags of `info`. If bit 1 (value 2) of the flags is set, the log only
  // prints a line on standard output instead.
  void SetAutoRunInfo(ContextUtils* context, const std::tuple<std::string, unsigned char>& info);

  // Return the path of the current log file as `BuildLogFile` composes it, and the folder given to
  // `Initialize`.
  [[nodiscard]] std::string GetLogFile() const;
  [[nodiscard]] std::string GetLogPath() const;

  // Store a text for the caller; the log does not use it.
  void SetLogOvrOptions(std::string_view options);
  [[nodiscard]] std::string GetLogOvrOptions() const;

  // The object's level: lines above it are dropped unless forced. Initially TRACE_INFORMATION.
  [[nodiscard]] TRACE_LEVEL GetGlobalLogLevel() const;
  void SetGlobalTraceLevel(TRACE_LEVEL level);

  static constexpr std::size_t kBufferSize = 4096;

  // Returns a buffer of `kBufferSize` characters for the caller, initially zeros. The log does not
  // use or guard it.
  char* GetBuffer();

  // The routing of threads to tests and logs, one for the whole process. If a thread is registered
  // several times, its first registration is used.

  // Registers a thread with its test, its level and its log (not owned; may be null).
  static void SetThreadTestLog(std::thread::id thread, VEXOR_PM_TEST_ID test, TRACE_LEVEL level,
                               VexorLogging* log);

  // Returns the thread's test, PM_TEST_VEXOR for an unregistered thread.
  static VEXOR_PM_TEST_ID GetThreadTestId(std::thread::id thread);

  // Returns the thread's level, or this object's level for an unregistered thread.
  [[nodiscard]] TRACE_LEVEL GetThreadLogLevel(std::thread::id thread) const;

  // Returns the thread's log, null for an unregistered thread.
  static VexorLogging* GetThreadLogFileReference(std::thread::id thread);

  // Returns the level of the first registration with this test, or this object's level if there is
  // none.
  [[nodiscard]] TRACE_LEVEL GetTestLogLevel(VEXOR_PM_TEST_ID test) const;

  // Sets the thread's affinity label to the four numbers, printed as "%02u:%02u:%03u:%u". Rows have
  // it under "Affinity".
  static void SetThreadAffinityLog(std::thread::id thread, unsigned short a, unsigned short b,
                                   unsigned short c, unsigned short d);

  // Returns the thread's affinity label, empty text if it has none.
  static std::string GetThreadAffinityLog(std::thread::id thread);

  // Returns the numbers printed as "%02d:%03d", such as "01:005", with blanks in place of a number
  // of 32752 or more; empty text if both are above 32752.
  static std::string GetPkgCoreInfo(unsigned short package, unsigned short core);

 private:
  friend struct vexor::LogContinuation;

  struct Impl;

  static void AppendRoute(std::thread::id thread, VEXOR_PM_TEST_ID test, TRACE_LEVEL level,
                          VexorLogging* log);
  static void ForgetThreads();
  void ForgetLog();
  void RegisterThisThread(TRACE_LEVEL level, bool again);

  // Guards the state of all logs. Taken before m_mThreadIdMutex if both are needed.
  static vexor::Immortal<std::mutex> m_mFileHandleMutex;

  // Guards all of the following. The four vectors are parallel: one registration has one index.
  static vexor::Immortal<std::mutex> m_mThreadIdMutex;
  static vexor::Immortal<std::vector<std::thread::id>> m_vThreadsId;
  static vexor::Immortal<std::vector<VEXOR_PM_TEST_ID>> m_vLogTestId;
  static vexor::Immortal<std::vector<TRACE_LEVEL>> m_vFlowLogLevel;
  static vexor::Immortal<std::vector<VexorLogging*>> m_vLogFileReference;
  static vexor::Immortal<std::map<std::thread::id, std::string>> m_mThreadAffinityLog;

  std::unique_ptr<Impl> impl_;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif
