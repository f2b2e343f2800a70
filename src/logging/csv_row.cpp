#include "logging/csv_row.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "util/text.h"

namespace vexor {

namespace {

void AppendCell(std::string& row, bool first, std::string_view text) {
  if (!first) row += ',';
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    row += text;
    return;
  }
  row += '"';
  for (const char c : text) {
    if (c == '"') row += '"';
    row += c;
  }
  row += '"';
}

}  // namespace

CsvHeader::CsvHeader(std::string_view line) {
  if (TrimSpace(line).empty()) return;
  std::string name;
  bool quoted = false;
  for (const char c : line) {
    if (c == '"') {
      quoted = !quoted;
    } else if (c == ',' && !quoted) {
      columns_.emplace_back(TrimSpace(name));
      name.clear();
    } else {
      name += c;
    }
  }
  columns_.emplace_back(TrimSpace(name));
}

std::size_t CsvHeader::Find(std::string_view column) const {
  return static_cast<std::size_t>(std::find(columns_.begin(), columns_.end(), column) -
                                  columns_.begin());
}

std::string CsvHeader::ComposeRow(std::span<const CsvCell> own,
                                  std::span<const CsvCell> cells) const {
  const std::size_t end = columns_.size();
  std::vector<std::optional<std::string_view>> texts(end);
  for (const CsvCell& cell : own) {
    if (const std::size_t at = Find(cell.column); at < end) texts[at] = cell.text;
  }
  std::vector<std::string_view> homeless;
  for (const CsvCell& cell : cells) {
    const std::size_t at = cell.column.empty() ? end : Find(cell.column);
    if (at < end) {
      texts[at] = cell.text;
    } else {
      homeless.push_back(cell.text);
    }
  }
  // Only after all named cells are in place is it known which columns are free.
  auto next = homeless.begin();
  for (auto text = texts.begin(); text != texts.end() && next != homeless.end(); ++text) {
    if (!*text) *text = *next++;
  }

  std::string row;
  bool first = true;
  const std::size_t level = Find("Level");
  for (std::size_t i = 0; i <= end; ++i) {
    for (; i == level && next != homeless.end(); ++next) {
      AppendCell(row, std::exchange(first, false), *next);
    }
    if (i < end) AppendCell(row, std::exchange(first, false), texts[i].value_or(""));
  }
  return row;
}

}  // namespace vexor
