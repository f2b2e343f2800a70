// A header line of a log, and where the columns stand that the reader interprets.
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
  explicit LogHeader(std::string_view line) { Set(line); }
  LogHeader(const LogHeader&) = delete;
  LogHeader& operator=(const LogHeader&) = delete;

  // Replaces the header by this line; an empty line is no header.
  void Set(std::string_view line);

  // Whether the line is a header: distinct column names with "Time" among them or, in the first
  // line of a file, distinct names that are no numbers.
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
  std::string names_;  // all column names in one text, to which `columns_` refers
  std::vector<std::string_view> columns_;
};

}  // namespace vexor
