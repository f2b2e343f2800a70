// Formats rows of logs for people to read.
#pragma once

#include <string>
#include <vector>

#include "columns.h"

namespace tools::vexorlog {

// Formats rows in columns under titles. Columns are as wide as their texts; long texts are cut,
// except in the last column.
class RowFormat {
 public:
  // Columns that are not in the uses get the width of their title.
  RowFormat(const std::vector<std::string>& names, const std::vector<ColumnUse>& uses);

  [[nodiscard]] std::string FormatTitles() const;
  std::string Format(const vexor::LogRow& row);

 private:
  ColumnFinder finder_;
  std::vector<std::size_t> widths_;
  bool colours_;
};

}  // namespace tools::vexorlog
