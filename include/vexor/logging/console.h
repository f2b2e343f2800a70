// The levels of console and log lines, and output to the console.
//
// A smaller level is more important. A line is printed if it is forced or if its level is not above
// the print level. Each log has a level of its own.
//
//   ConsoleOutput::SetPrintLevel(TRACE_CRITICAL);
//   ConsoleOut("Log File: run.csv", TRACE_INFORMATION, false);  // prints nothing
//
// Any thread may call. A message is passed to the standard output stream in one call.
#pragma once

#include <atomic>
#include <cstdint>
#include <sstream>
#include <string_view>

#include "vexor/export.h"

enum TRACE_LEVEL : std::int32_t {
  TRACE_NO_LOG = 0,
  TRACE_CRITICAL = 1,
  TRACE_INFORMATION = 2,
  TRACE_DEBUG = 3,
};

// Returns the level's name ("No-Log", "Critical", "Information", "Debug") or, with `short_name`,
// its short name ("L1" to "L4"). Returns empty text for any other value.
VEXOR_EXPORT const char* GetTraceLevelName(TRACE_LEVEL level, bool short_name);

// Returns the level with this long name; `default_level` for any other text, including the short
// names. Case matters.
VEXOR_EXPORT TRACE_LEVEL ParseTraceLevelID(std::string_view text, TRACE_LEVEL default_level);

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // private members of the standard library's types; see export.h
#endif

// The console's print level: one for the process, initially TRACE_INFORMATION.
class VEXOR_EXPORT ConsoleOutput {
 public:
  static TRACE_LEVEL GetPrintLevel();

  // Accepts any value, even one that is not a level.
  static void SetPrintLevel(TRACE_LEVEL level);

 private:
  static std::atomic<TRACE_LEVEL> m_ePrintLevel;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

// Writes the message and a line end to standard output if `force` is set or `level` is not above
// the print level. Always adds the line end: a message that has one is followed by an empty line.
VEXOR_EXPORT void ConsoleOut(std::string_view message, TRACE_LEVEL level, bool force);

// Writes the whole content of the stream in the same way. Does not change the stream.
VEXOR_EXPORT void ConsoleOut(const std::stringstream& message, TRACE_LEVEL level, bool force);
