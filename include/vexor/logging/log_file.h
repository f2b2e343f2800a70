// Log files that survive the machine, and the routing of threads to them.
//
// A `VexorLogging` object writes lines of comma-separated values to a ".csv" file under a header
// line. When a call that logs has returned, its line is on the disk, unless the log is locked: a
// locked log keeps its lines in memory until it is unlocked, saved or closed, and until then they
// are lost with the process. Without an open file, lines go to standard output.
//
//   VexorLogging log;
//   log.SetLinesLimitToSplit(100000);
//   if (!log.Initialize("C:\\logs", "run", TRACE_INFORMATION, LOG_FILE_NEW)) return;
//   VexorLogging::SetThreadTestLog(worker.get_id(), PM_TEST_CSTATES, TRACE_DEBUG, &log);
//   log.LogNote("package C6 reached", TRACE_INFORMATION);  // a row with its text under "Notes"
//   VexorLogging::LogSpecificLevel("from code that knows only its thread", TRACE_DEBUG);
//
// A line passes when it is forced or when its level is not above the object's. A file that cannot
// be written is reported once on standard output; its lines go there until it can be written again.
// A flush that fails is reported once a file. A file that another program has removed or cut gets
// its header again, and its lines are counted anew.
//
// With a limit of lines, a long log goes on in numbered files: run_0.csv, run_1.csv, ... A log that
// moves to the next of them empties it, whatever was in it. So a series that begins anew empties,
// one by one, the files that an earlier run left, also with LOG_FILE_APPEND, which concerns the
// first file alone. To keep them, continue the series behind its last file after a restart:
//
//   log.SetLinesLimitToSplit(100000);
//   vexor::MakeFolders("C:\\logs");                                  // logs make no folder
//   vexor::ContinueLog(log, "C:\\logs", "run", TRACE_INFORMATION);  // run_0.csv, or run_7.csv
//
// Several objects, also of several processes, may append to one file and do not mix their lines.
// Each counts and splits for itself, however: with a limit they empty each other's files.
//
// Any thread may call anything at any time, as long as the object lives. Lines of different threads
// and objects never mix. A failure of a lock is thrown as std::system_error.
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

// How a log opens a file that exists. Any other value empties it, too.
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
class Immortal;  // an object that is never destroyed: logs of static storage duration use it

// Opens the log as `Initialize` does with LOG_FILE_APPEND, and with a limit of lines continues the
// series of this name where it ended: the file with the highest number is appended to, the next
// ones get the numbers behind it, and no file of an earlier run is emptied. A series without files
// begins. Returns whether a file was opened; it is not when the folder cannot be read.
VEXOR_EXPORT bool ContinueLog(VexorLogging& log, std::string_view path, std::string_view name,
                              TRACE_LEVEL level);

struct LogContinuation;  // what `ContinueLog` needs of a log; private

}  // namespace vexor

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // private members of the standard library's types; see export.h
#endif

class VEXOR_EXPORT VexorLogging {
 public:
  // The header line names the columns of the suite's tests, from "Time" to "Level".
  VexorLogging();
  explicit VexorLogging(std::string_view header_line);

  VexorLogging(const VexorLogging&) = delete;
  VexorLogging& operator=(const VexorLogging&) = delete;

  // Closes the file, lines kept by a locked log included. Threads routed to this object are routed
  // to none afterwards.
  ~VexorLogging();

  // Opens the log file of this folder and name (see `BuildLogFile`) and returns whether that
  // succeeded; when not, the reason and all lines go to standard output. The folder must exist (see
  // `vexor::MakeFolders`). What is no regular file is refused: a device, a pipe, on Windows also a
  // name such as NUL or COM1.csv; so is a name with a zero byte. Where the time, which stands for
  // an empty name, gives a name that is taken, "-2", "-3", ... is added. A file that was open is
  // closed. The lines of a file that is appended to are counted first: for a long file that takes
  // its time, in which other logs go on.
  //
  // Unless `continue_log` is set all threads of the process lose their routing and a series of
  // files begins anew: with a limit of lines the name gets "_0", or, when `locked_at_start` or
  // `UnexpectedInit` says that a series goes on, it is kept and the series continues behind the
  // number that it ends with. The name is announced on the console unless `silent` is set, a note
  // states the library's version unless `no_version_note` is set, and the calling thread is routed
  // to this object (with `continue_log`: unless it is routed already).
  bool Initialize(std::string_view path, std::string_view name, TRACE_LEVEL level,
                  LOG_FILE_OPTIONS file_option, bool locked_at_start = false,
                  bool no_version_note = false, bool continue_log = false, bool silent = false);

  // Returns the name with ".csv" behind it unless it ends so in any case, in the folder `path`; an
  // empty path is no folder. An empty name becomes "VexorLog_" and the time.
  static std::string BuildLogFile(std::string_view path, std::string_view name);

  // Returns the file name of this index in a series: "_" and the index stand before the extension,
  // in place of the index before it if the name ends with that: run.csv, run_0.csv, run_1.csv.
  static std::string UpdateFileNameToSplit(std::string_view name, std::uint32_t index);

  // Logs the text as it is, with a line end unless it ends with one. Nothing makes it a row of the
  // header: a reader splits it at its own commas.
  void LogLine(std::string_view text, TRACE_LEVEL level, bool force = false);

  // The following log a row of the current header: time, the calling thread's test and affinity
  // label and the level stand under "Time", "TestType", "Affinity" and "Level", the arguments under
  // the columns named here. A text whose column is missing takes the next empty one. A text loses
  // one line end at its end; any others are part of its cell, which is quoted.

  // Text: "Notes".
  void LogNote(std::string_view text, TRACE_LEVEL level, bool force = false);

  // Texts: the columns that are still empty, in order; surplus ones stand before "Level".
  void LogData(const std::vector<std::string>& texts, TRACE_LEVEL level, bool force = false);

  // Texts: "Notes", "Request", "Status".
  void LogMsgData(std::string_view text, TRACE_LEVEL level, std::string_view request,
                  std::string_view status, bool force = false);

  // Texts: "Notes", "Scope".
  void LogWorkloadData(std::string_view text, TRACE_LEVEL level, std::string_view scope,
                       bool force = false);

  // Logs the text as it is, without time, test and level, as `LogLine` does, to the log of the
  // calling thread, under the level that the thread was registered with; on the console, under its
  // print level, when the thread has no log.
  static void LogSpecificLevel(std::string_view text, TRACE_LEVEL level);

  // Writes the header line now, unless the file has it or the log is locked. Without this call it
  // is written above the next line.
  void LogHeaderLine();

  // Replaces the header line, for rows from now on; the file gets it after `ResetInitHeaderLine`.
  void UpdateHeaderLine(std::string_view header_line);

  // Has the header line written once more, above the next line.
  void ResetInitHeaderLine();

  // Returns when all lines in the file are on the disk; false when a flush of this file has failed,
  // now or earlier.
  bool FlushToDisk();

  // Writes the lines that a locked log keeps, then does as `FlushToDisk`.
  bool SaveFile();

  // Closes the file, if one is open, with all its lines on the disk. The lines that a locked log
  // keeps are written first with `save_kept`, and dropped, which is reported, without.
  void CloseFile(bool save_kept);

  // Returns whether a file is open.
  [[nodiscard]] bool IsInitialized() const;

  // A locked log keeps the lines that pass its level, in memory and in order, until it is unlocked,
  // saved or closed. They get the header and are counted when they are written.
  void LockLogging();
  void UnlockLogging();
  [[nodiscard]] bool IsLoggingLocked() const;

  // Lets the next `Initialize` that succeeds, and does not continue a log, go on with a series.
  void UnexpectedInit();

  // No file gets more than `limit` lines, header lines included, but each at least one logged line;
  // 0, as at the start, sets no limit. The files that the log moves on to are emptied first.
  void SetLinesLimitToSplit(std::uint32_t limit);

  // Names what is told when the log has moved to a new file: `context` (not owned; may be null)
  // gets the script and the flags, unless bit 1 (value 2) of the flags asks for no more than a line
  // on standard output.
  void SetAutoRunInfo(ContextUtils* context, const std::tuple<std::string, unsigned char>& info);

  // Return the name of the log file, as joined by `BuildLogFile`, and the path given for it.
  [[nodiscard]] std::string GetLogFile() const;
  [[nodiscard]] std::string GetLogPath() const;

  // A text that the log keeps for its owner.
  void SetLogOvrOptions(std::string_view options);
  [[nodiscard]] std::string GetLogOvrOptions() const;

  // The object's level, TRACE_INFORMATION at the start.
  [[nodiscard]] TRACE_LEVEL GetGlobalLogLevel() const;
  void SetGlobalTraceLevel(TRACE_LEVEL level);

  static constexpr std::size_t kBufferSize = 4096;

  // Returns a buffer of `kBufferSize` characters for the owner's use, zeros at the start.
  char* GetBuffer();

  // The routing of threads, one for the process. The first registration of a thread counts for
  // good: a later one is kept, but not found.

  // Registers a thread with its test, its level and its log (not owned; may be null).
  static void SetThreadTestLog(std::thread::id thread, VEXOR_PM_TEST_ID test, TRACE_LEVEL level,
                               VexorLogging* log);

  // Returns the thread's test, PM_TEST_VEXOR for an unregistered thread.
  static VEXOR_PM_TEST_ID GetThreadTestId(std::thread::id thread);

  // Returns the thread's level, this object's level for an unregistered thread.
  [[nodiscard]] TRACE_LEVEL GetThreadLogLevel(std::thread::id thread) const;

  // Returns the thread's log, null for an unregistered thread.
  static VexorLogging* GetThreadLogFileReference(std::thread::id thread);

  // Returns the level of the first thread registered with the test, this object's level when there
  // is none.
  [[nodiscard]] TRACE_LEVEL GetTestLogLevel(VEXOR_PM_TEST_ID test) const;

  // Gives the thread the label "%02u:%02u:%03u:%u" of the four numbers, in place of an earlier one.
  static void SetThreadAffinityLog(std::thread::id thread, unsigned short a, unsigned short b,
                                   unsigned short c, unsigned short d);

  // Returns the thread's label, empty text when it has none.
  static std::string GetThreadAffinityLog(std::thread::id thread);

  // Returns "%02d:%03d" of the numbers, such as "01:005", with blanks for the digits of a number
  // from 32752 on; empty text when both are above 32752.
  static std::string GetPkgCoreInfo(unsigned short package, unsigned short core);

 private:
  friend struct vexor::LogContinuation;

  struct Impl;

  static void AppendRoute(std::thread::id thread, VEXOR_PM_TEST_ID test, TRACE_LEVEL level,
                          VexorLogging* log);
  static void ForgetThreads();
  void ForgetLog();
  void RegisterThisThread(TRACE_LEVEL level, bool again);

  // Guards every write to a log and every object's state.
  static vexor::Immortal<std::mutex> m_mFileHandleMutex;

  // Guards all of the following. The entries of one index in the four vectors belong together.
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
