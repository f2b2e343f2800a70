// The columns of many logs, brought together.
#pragma once

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

// Returns a row's cell of a column: null when it is empty, and a number when it measures or counts
// one. Affinities stay texts, whatever they look like.
Json MakeCell(const vexor::LogRow& row, const std::string& column, std::string_view cell);

// Returns the columns of all headers, in the order in which they first stand, and how they are used
// by the rows that pass. Reads all files once; does not report what cannot be read.
std::vector<ColumnUse> CollectColumns(const Logs& logs, const RowFilter& filter,
                                      Progress& progress);

// Returns whether all names are columns of the logs; if not, reports on standard error, as of the
// option, which is none.
bool AreColumns(std::string_view option, const std::vector<std::string>& names,
                const std::vector<ColumnUse>& columns);

// Finds columns of a row by name, without a search for every row.
class ColumnFinder {
 public:
  explicit ColumnFinder(std::vector<std::string> names) : names_(std::move(names)) {}

  [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }

  // The row's cell for a name, without the blanks around it. A row of text has its text in "Notes",
  // or in the last column without one.
  std::string_view Cell(const vexor::LogRow& row, std::size_t name);

 private:
  std::vector<std::string> names_;
  std::vector<std::size_t> places_;  // in the header
  std::vector<std::string> header_;
};

}  // namespace tools::vexorlog
