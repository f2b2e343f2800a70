// Selects the rows that a command uses.
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

// Returns the milliseconds of a duration such as "90s", "5min", "1h30min" or "2d"; nothing for any
// other text.
std::optional<vexor::LogTime> ParseDuration(std::string_view text);

// Returns a duration in its two largest units: "2 h 03 min", "1.250 s".
std::string FormatDuration(vexor::LogTime milliseconds);

// Parses a time: "2024-03-07 21:00" and longer or shorter forms; "21:00" for the first such time
// from `start` on; "+2h" for a time after `start`; "-30min" for a time before `end`. Nothing for
// any other text.
std::optional<vexor::LogTime> ParsePointInTime(std::string_view text, vexor::LogTime start,
                                               vexor::LogTime end);

// Decides which rows pass a selection. Threads may share a filter.
class RowFilter {
 public:
  // `start` and `end` are the first and last time of the logs. Throws std::invalid_argument with
  // the option, its text and what was expected if the selection is not valid.
  RowFilter(const Selection& selection, vexor::LogTime start, vexor::LogTime end);
  RowFilter(RowFilter&& other) noexcept;
  RowFilter& operator=(RowFilter&& other) noexcept;
  ~RowFilter();

  // `time` is the row's time, or that of the row before it if it has none. Raw lines pass unless
  // the selection is by test, level or failure; headers never pass.
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
