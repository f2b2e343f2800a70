// Rows of logs as lines for people.
#pragma once

#include <string>
#include <vector>

#include "columns.h"

namespace tools::vexorlog {

// Formats rows to stand under titles: columns of the width of their texts, long ones cut but for
// the last.
class RowFormat {
 public:
  // Columns that the uses do not name get the width of their title.
  RowFormat(const std::vector<std::string>& names, const std::vector<ColumnUse>& uses);

  [[nodiscard]] std::string FormatTitles() const;
  std::string Format(const vexor::LogRow& row);

 private:
  ColumnFinder finder_;
  std::vector<std::size_t> widths_;
  bool colours_;
};

}  // namespace tools::vexorlog
