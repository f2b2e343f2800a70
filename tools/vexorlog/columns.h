// The columns of several logs with different headers.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json.h"
#include "logs.h"
#include "selection.h"

namespace tools::vexorlog {

struct ColumnUse {
  std::string name;
  std::size_t cells = 0;   // that hold something, in the rows that were selected
  std::size_t widest = 0;  // the widest of these cells, in characters
};

// Returns whether the numbers in a column are measurements, not names or counts.
bool IsMeasurement(std::string_view column);

// Returns the columns of all headers in order of first appearance, and how the selected rows use
// them. Reads all files once; does not report files that cannot be read.
std::vector<ColumnUse> CollectColumns(const Logs& logs, const RowFilter& filter,
                                      Progress& progress);

// Returns whether all names are columns of the logs; if not, prints on standard error which value
// of `option` is not.
bool AreColumns(std::string_view option, const std::vector<std::string>& names,
                const std::vector<ColumnUse>& columns);

// Finds cells of rows by column name, without searching the header for every cell.
class ColumnFinder {
 public:
  explicit ColumnFinder(std::vector<std::string> names) : names_(std::move(names)) {}

  [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }

  // To be called for every row before its cells are read.
  void Select(const vexor::LogRow& row);

  // Returns the row's cell for a name, without the blanks around it. For a raw line, the text is in
  // "Notes", or in the last column if there is no "Notes".
  [[nodiscard]] std::string_view Cell(const vexor::LogRow& row, std::size_t name) const;

  // Returns the number in that cell.
  [[nodiscard]] std::optional<double> Number(const vexor::LogRow& row, std::size_t name) const {
    return row.Number(places_[name]);
  }

  // Returns the cell as JSON: null if it is empty, a number if it is a measurement or a count.
  // Affinities are always texts, even if they look like numbers.
  [[nodiscard]] Json MakeCell(const vexor::LogRow& row, std::size_t name) const;

 private:
  std::vector<std::string> names_;
  std::vector<std::size_t> places_;  // in the header
  std::vector<std::string> header_;
};

}  // namespace tools::vexorlog
