// The rows that a command looks at.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"
#include "vexor/logging/log_files.h"
#include "vexor/logging/log_reader.h"

namespace re2 {
class RE2;
}

namespace tools::vexorlog {

// Returns the names of all tests.
std::vector<std::string> NamesOfTests();

// Returns the milliseconds of a duration such as "90s", "5min", "1h30min" or "2d"; nothing for
// another text.
std::optional<vexor::LogTime> ParseDuration(std::string_view text);

// Returns a duration in its two largest units: "2 h 03 min", "1.250 s".
std::string FormatDuration(vexor::LogTime milliseconds);

// Returns the time that a text names: "2024-03-07 21:00" and longer or shorter forms of it;
// "21:00", the first such time from `start` on; "+2h", so long after `start`; "-30min", so long
// before `end`. Nothing for another text.
std::optional<vexor::LogTime> ParsePointInTime(std::string_view text, vexor::LogTime start,
                                               vexor::LogTime end);

// What a selection of rows lets pass. Threads may share a filter.
class RowFilter {
 public:
  // `start` and `end` are the first and the last time of the logs. Throws std::invalid_argument,
  // with the option, its text and what was expected, for a selection that cannot be understood.
  RowFilter(const Selection& selection, vexor::LogTime start, vexor::LogTime end);
  RowFilter(RowFilter&& other) noexcept;
  RowFilter& operator=(RowFilter&& other) noexcept;
  ~RowFilter();

  // `time` is the row's time, or that of the row before it where it has none. Rows of text pass
  // unless they are asked for by test, level or failure; headers never pass.
  [[nodiscard]] bool Passes(const vexor::LogRow& row, vexor::LogTime time) const;

 private:
  std::vector<VEXOR_PM_TEST_ID> tests_;
  std::optional<TRACE_LEVEL> level_;
  vexor::LogTime since_ = vexor::kNoLogTime;
  std::optional<vexor::LogTime> until_;
  std::unique_ptr<re2::RE2> pattern_;
  bool failed_ = false;
};

}  // namespace tools::vexorlog
