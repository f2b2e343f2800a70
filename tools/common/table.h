// Tables of text for people.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

enum class Align : std::uint8_t { kLeft, kRight };

struct TableColumn {
  std::string title;
  Align align = Align::kLeft;
};

// Returns the number of characters of a UTF-8 text; every stray byte counts as one.
std::size_t CountCharacters(std::string_view text);

// Rows of cells under titles, every column as wide as its widest cell.
class TextTable {
 public:
  explicit TextTable(std::vector<TableColumn> columns) : columns_(std::move(columns)) {}

  // Adds a row; cells that it lacks are empty, and surplus ones are dropped.
  void AddRow(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

  // Returns titles and rows, a line each. Columns without any text in their cells are left out.
  [[nodiscard]] std::string Format() const;

 private:
  std::vector<TableColumn> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace tools
