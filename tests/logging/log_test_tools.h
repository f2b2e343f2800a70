// Helpers to open and read the logs of tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "temporary_folder.h"
#include "vexor/logging/log_file.h"
#include "vexor/util/files.h"

using Rows = std::vector<std::vector<std::string>>;

// Returns the rows of a text of comma-separated values as defined in RFC 4180; nothing if the text
// is not valid.
inline Rows ParseCsv(std::string_view text) {
  Rows rows(1, {""});
  enum { kStart, kPlain, kQuoted, kClosed } state = kStart;
  for (const char c : text) {
    std::string& cell = rows.back().back();
    if (state == kQuoted) {
      state = c == '"' ? kClosed : kQuoted;
      if (c != '"') cell += c;
    } else if (c == '"') {
      if (state == kPlain) return {};
      if (state == kClosed) cell += c;
      state = kQuoted;
    } else if (c == ',' || c == '\n') {
      if (c == ',') rows.back().emplace_back();
      if (c == '\n') rows.push_back({""});
      state = kStart;
    } else {
      if (state == kClosed) return {};
      cell += c;
      state = kPlain;
    }
  }
  if (state == kQuoted || rows.back() != std::vector<std::string>{""}) return {};
  rows.pop_back();
  return rows;
}

// The text of a log, with "\n" for every line end.
inline std::string ReadLog(const std::string& path) { return ReadFile(path, true); }

// Opens a log without an announcement and a note of the version.
inline bool Open(VexorLogging& log, const TemporaryFolder& folder, std::string_view name,
                 TRACE_LEVEL level = TRACE_DEBUG, LOG_FILE_OPTIONS option = LOG_FILE_NEW,
                 bool locked = false, bool continues = false) {
  return log.Initialize(folder.path(), name, level, option, locked, true, continues, true);
}

// Opens a log of rows without columns: only what a test logs is in the file.
inline bool OpenPlain(VexorLogging& log, const TemporaryFolder& folder, std::string_view name,
                      LOG_FILE_OPTIONS option = LOG_FILE_NEW, bool locked = false) {
  log.UpdateHeaderLine("");
  return Open(log, folder, name, TRACE_INFORMATION, option, locked);
}

// Keeps the announcements of a test's logs off the console.
class QuietConsole {
 public:
  QuietConsole() { ConsoleOutput::SetPrintLevel(TRACE_NO_LOG); }
  QuietConsole(const QuietConsole&) = delete;
  QuietConsole& operator=(const QuietConsole&) = delete;
  ~QuietConsole() { ConsoleOutput::SetPrintLevel(before_); }

 private:
  TRACE_LEVEL before_ = ConsoleOutput::GetPrintLevel();
};
