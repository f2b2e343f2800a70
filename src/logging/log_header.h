// A header line of a log, and the columns that the reader knows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/logging/log_reader.h"

namespace vexor {

class LogHeader {
 public:
  LogHeader() = default;
  explicit LogHeader(std::string_view line) { Take(line); }
  LogHeader(const LogHeader&) = delete;
  LogHeader& operator=(const LogHeader&) = delete;

  // Takes the columns of the line.
  void Take(std::string_view line);

  // Whether the line names columns, one of them "Time", or could do so as the first of a file.
  static bool IsHeader(std::string_view line, bool is_first);

  [[nodiscard]] bool IsThere() const { return !columns_.empty(); }
  [[nodiscard]] const std::string& Line() const { return line_; }
  [[nodiscard]] const std::vector<std::string_view>& Columns() const { return columns_; }
  [[nodiscard]] std::size_t Find(std::string_view name) const;

  [[nodiscard]] bool BeginsWithTime() const { return time == 0; }
  [[nodiscard]] bool EndsWithLevel() const { return IsThere() && level == columns_.size() - 1; }

  std::size_t time = kNoColumn;
  std::size_t test = kNoColumn;
  std::size_t level = kNoColumn;
  std::size_t result = kNoColumn;
  std::size_t status = kNoColumn;
  std::size_t notes = kNoColumn;

 private:
  std::string line_;
  std::string names_;  // of the columns, one behind the other
  std::vector<std::string_view> columns_;
};

}  // namespace vexor
