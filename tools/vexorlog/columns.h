// The columns of many logs, brought together.
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
  std::size_t widest = 0;  // of them, in characters
};

// Returns whether the numbers of a column measure something, rather than name or count rows.
bool IsMeasurement(std::string_view column);

// Returns the columns of all headers, in the order in which they first stand, and how they are used
// by the rows that pass. Reads all files once; does not report what cannot be read.
std::vector<ColumnUse> CollectColumns(const Logs& logs, const RowFilter& filter,
                                      Progress& progress);

// Returns whether all names are columns of the logs; if not, reports on standard error, as of the
// option, which is none.
bool AreColumns(std::string_view option, const std::vector<std::string>& names,
                const std::vector<ColumnUse>& columns);

// Finds columns of rows by name, without a search for every cell.
class ColumnFinder {
 public:
  explicit ColumnFinder(std::vector<std::string> names) : names_(std::move(names)) {}

  [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }

  // To be called for every row, before its cells are asked for.
  void Select(const vexor::LogRow& row);

  // The row's cell for a name, without the blanks around it. A row of text has its text in "Notes",
  // or in the last column without one.
  [[nodiscard]] std::string_view Cell(const vexor::LogRow& row, std::size_t name) const;

  // The number in that cell.
  [[nodiscard]] std::optional<double> Number(const vexor::LogRow& row, std::size_t name) const {
    return row.Number(places_[name]);
  }

  // The cell in JSON: null when it is empty, and a number when it measures or counts something.
  // Affinities stay texts, whatever they look like.
  [[nodiscard]] Json MakeCell(const vexor::LogRow& row, std::size_t name) const;

 private:
  std::vector<std::string> names_;
  std::vector<std::size_t> places_;  // in the header
  std::vector<std::string> header_;
};

}  // namespace tools::vexorlog
