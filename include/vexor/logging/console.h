// Levels of console and log lines, and levelled output to the console.
//
// A smaller level is more important: a line passes when it is forced or when its level is not above
// the filter's. Log files have filters of their own.
//
//   ConsoleOutput::SetPrintLevel(TRACE_CRITICAL);
//   ConsoleOut("Log File: run.csv", TRACE_INFORMATION, false);  // prints nothing
//
// Any thread may call; messages of several threads stay whole, as far as the standard output stream
// keeps them so.
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

// Returns the level's name ("No-Log", "Critical", "Information", "Debug"), with `short_name` its
// short one ("L1" to "L4"). Any other value yields an empty text.
VEXOR_EXPORT const char* GetTraceLevelName(TRACE_LEVEL level, bool short_name);

// Returns the level of this long name, and `default_level` for any other text, the short names
// included. Case matters.
VEXOR_EXPORT TRACE_LEVEL ParseTraceLevelID(std::string_view text, TRACE_LEVEL default_level);

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4251)  // private members of the standard library's types; see export.h
#endif

// The console's filter: one print level for the process, TRACE_INFORMATION at the start.
class VEXOR_EXPORT ConsoleOutput {
 public:
  static TRACE_LEVEL GetPrintLevel();

  // Accepts any value, also one that is no level, and keeps it as it is.
  static void SetPrintLevel(TRACE_LEVEL level);

 private:
  static std::atomic<TRACE_LEVEL> m_ePrintLevel;
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif

// Writes the message and a line end, in one piece, to standard output when `force` is set or
// `level` is not above the print level. A message that ends in a line end is followed by an empty
// line.
VEXOR_EXPORT void ConsoleOut(std::string_view message, TRACE_LEVEL level, bool force);

// The same for all the text that the stream has gathered; the stream stays as it is.
VEXOR_EXPORT void ConsoleOut(const std::stringstream& message, TRACE_LEVEL level, bool force);
