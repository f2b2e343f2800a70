// Rows of comma-separated values under a header line, quoted as RFC 4180 asks.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexor {

// A text for the column of this name; without a name, for the next column that is still empty.
struct CsvCell {
  std::string_view column;
  std::string_view text;
};

// The columns that a header line names.
class CsvHeader {
 public:
  CsvHeader() = default;
  explicit CsvHeader(std::string_view line);

  // Returns one row, without a line end: `own` fills its columns first and leaves out those that
  // the header lacks; `cells` go to theirs. A cell whose column is missing or taken goes to the
  // next empty one, and when there is none it stands, as a column more, before "Level" or at the
  // end.
  [[nodiscard]] std::string ComposeRow(std::span<const CsvCell> own,
                                       std::span<const CsvCell> cells) const;

 private:
  [[nodiscard]] std::size_t Find(std::string_view column) const;

  std::vector<std::string> columns_;
};

}  // namespace vexor
