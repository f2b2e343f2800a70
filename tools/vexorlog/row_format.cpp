#include "row_format.h"

#include <algorithm>

#include "common/table.h"
#include "common/terminal.h"
#include "common/text_output.h"

namespace tools::vexorlog {
namespace {

// Wider texts are cut; users find them in the file.
constexpr std::size_t kWidest = 40;

std::string_view ColourOf(const vexor::LogRow& row) {
  if (row.Result() == vexor::LogResult::kFail) return "\x1b[1;31m";
  return row.Level() == TRACE_CRITICAL ? "\x1b[1;33m" : "";
}

// Cuts the text to this many whole characters.
std::string Shorten(std::string text, std::size_t width) {
  if (CountCharacters(text) <= width) return text;
  while (CountCharacters(text) >= width) text.pop_back();
  return text + "~";
}

}  // namespace

RowFormat::RowFormat(const std::vector<std::string>& names, const std::vector<ColumnUse>& uses)
    : finder_(names), colours_(UsesColours()) {
  for (const std::string& name : names) {
    const auto use = std::ranges::find(uses, name, &ColumnUse::name);
    const std::size_t widest = use == uses.end() ? 0 : use->widest;
    widths_.push_back(std::max(CountCharacters(name), std::min(widest, kWidest)));
  }
}

std::string RowFormat::FormatTitles() const {
  std::string line;
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    const std::string& name = finder_.Names()[i];
    line += name + std::string(widths_[i] - CountCharacters(name) + 2, ' ');
  }
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

std::string RowFormat::Format(const vexor::LogRow& row) {
  std::string line;
  finder_.Select(row);
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    const bool is_last = i + 1 == widths_.size();
    std::string cell = OneLine(finder_.Cell(row, i), std::string::npos);
    if (!is_last) cell = Shorten(std::move(cell), widths_[i]);
    const std::size_t width = CountCharacters(cell);
    line += cell;
    if (!is_last) line.append(widths_[i] - width + 2, ' ');
  }
  line.erase(line.find_last_not_of(' ') + 1);
  const std::string_view colour = colours_ ? ColourOf(row) : "";
  return std::string(colour) + line + (colour.empty() ? "" : "\x1b[0m");
}

}  // namespace tools::vexorlog
