// Formats tables of text for people to read.
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

// Returns the number of characters of a UTF-8 text.
std::size_t CountCharacters(std::string_view text);

// Rows of cells under titles. Each column is as wide as its widest cell.
class TextTable {
 public:
  explicit TextTable(std::vector<TableColumn> columns) : columns_(std::move(columns)) {}

  // Adds a row. Missing cells are empty; surplus cells are dropped.
  void AddRow(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

  // Returns one line for the titles and one for each row. Leaves out columns whose cells are all
  // empty.
  [[nodiscard]] std::string Format() const;

 private:
  std::vector<TableColumn> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace tools
