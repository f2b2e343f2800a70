// Composes rows of comma-separated values under a header line, quoted as in RFC 4180.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexor {

// A text for the column of this name or, if `column` is empty, for the next free column.
struct CsvCell {
  std::string_view column;
  std::string_view text;
};

// The columns that a header line names.
class CsvHeader {
 public:
  CsvHeader() = default;
  explicit CsvHeader(std::string_view line);

  // Returns one row without a line end. First `own` fills its columns; cells of `own` whose column
  // the header lacks are dropped. Then each of `cells` goes to its column. Those without a column
  // in the header fill the free columns from the left. What is left after that is not dropped: it
  // becomes surplus columns before "Level", or at the end if the header has no "Level".
  [[nodiscard]] std::string ComposeRow(std::span<const CsvCell> own,
                                       std::span<const CsvCell> cells) const;

 private:
  [[nodiscard]] std::size_t Find(std::string_view column) const;

  std::vector<std::string> columns_;
};

}  // namespace vexor
