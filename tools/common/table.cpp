#include "common/table.h"

#include <algorithm>

namespace tools {

std::size_t CountCharacters(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

std::string TextTable::Format() const {
  constexpr std::string_view kSeparator = "  ";
  std::vector<std::size_t> widths(columns_.size(), 0);
  for (const auto& row : rows_) {
    for (std::size_t i = 0; i < std::min(row.size(), widths.size()); ++i) {
      widths[i] = std::max(widths[i], CountCharacters(row[i]));
    }
  }
  for (std::size_t i = 0; i < widths.size(); ++i) {
    if (widths[i] > 0) widths[i] = std::max(widths[i], CountCharacters(columns_[i].title));
  }

  std::string text;
  const auto add_line = [&](auto cell_of) {
    std::string line;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      if (widths[i] == 0) continue;
      const std::string& cell = cell_of(i);
      const std::string padding(widths[i] - CountCharacters(cell), ' ');
      if (!line.empty()) line += kSeparator;
      line += columns_[i].align == Align::kRight ? padding + cell : cell + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
  };
  const std::string none;
  add_line([this](std::size_t i) -> const std::string& { return columns_[i].title; });
  for (const auto& row : rows_) {
    add_line([&](std::size_t i) -> const std::string& { return i < row.size() ? row[i] : none; });
  }
  return text;
}

}  // namespace tools
