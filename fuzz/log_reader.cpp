// Reads any bytes as a log. The rows must be the same however the bytes arrive.
#include "vexor/logging/log_reader.h"

#include <algorithm>

#include "fuzz.h"

namespace {

struct SeenRow {
  vexor::LogRowKind kind;
  std::uint32_t damages;
  std::uint64_t line;
  std::uint64_t offset;
  std::uint64_t size;
  std::string text;
  std::vector<std::string> cells;
  std::uint32_t header;
  vexor::LogTime time;

  bool operator==(const SeenRow&) const = default;
};

SeenRow See(const vexor::LogRow& row) {
  SeenRow seen = {.kind = row.Kind(),
                  .damages = 0,
                  .line = row.Line(),
                  .offset = row.Offset(),
                  .size = row.Size(),
                  .text = std::string(row.Text()),
                  .cells = {},
                  .header = row.HeaderNumber(),
                  .time = row.Time()};
  for (int i = 0; i < vexor::kLogDamageCount; ++i) {
    seen.damages |= std::uint32_t{row.Has(static_cast<vexor::LogDamage>(i))} << i;
  }
  // The last cell first: LogCells finds it in a different way.
  seen.cells.resize(row.Width());
  for (std::size_t i = row.Width(); i > 0; --i) seen.cells[i - 1] = row.Cell(i - 1);
  for (std::size_t i = 0; i < row.Columns().size(); ++i) static_cast<void>(row.Number(i));
  static_cast<void>(row.Result());
  static_cast<void>(row.IsVersionNote());
  static_cast<void>(row.Test());
  static_cast<void>(row.Level());
  return seen;
}

std::vector<SeenRow> ReadAll(const std::string& path, std::size_t buffer_size, bool keep_open) {
  vexor::LogReader reader({.row_limit = 1024, .buffer_size = buffer_size, .keep_open = keep_open});
  Require(!reader.Open(path), "the file can be opened");
  std::vector<SeenRow> rows;
  while (reader.Next()) rows.push_back(See(reader.Row()));
  Require(!reader.Error(), "the file can be read");
  return rows;
}

// Whether the rows are in order and at the places that they report.
void CheckPlaces(const std::vector<SeenRow>& rows, std::string_view input) {
  std::uint64_t end = 0;
  for (const SeenRow& row : rows) {
    Require(row.offset >= end && row.size > 0, "rows follow one another", row.text);
    end = row.offset + row.size;
    Require(end <= input.size(), "rows end with the file", row.text);
    Require(input.substr(row.offset).starts_with(row.text), "a text is in the file", row.text);
    const auto begin = input.begin() + static_cast<std::ptrdiff_t>(row.offset);
    const auto lines = static_cast<std::uint64_t>(std::count(input.begin(), begin, '\n'));
    Require(row.line == lines + 1, "lines are counted", row.text);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = AsText(data, size);
  const std::string& path = HoldInFile(input);
  const std::vector<SeenRow> rows = ReadAll(path, std::size_t{1} << 16, true);
  CheckPlaces(rows, input);
  Require(ReadAll(path, 1, true) == rows, "one byte at a time gives the same");
  Require(ReadAll(path, 37, false) == rows, "a file that is closed meanwhile gives the same");

  // While a file grows, rows may be read differently than in the end, but each only in one way.
  vexor::LogReader reader({.follow = true, .row_limit = 1024, .buffer_size = 64});
  HoldInFile(input.substr(0, size / 2));
  reader.Open(path);
  std::vector<SeenRow> grown;
  while (reader.Next()) grown.push_back(See(reader.Row()));
  Require(reader.Change() == vexor::LogFileChange::kNone, "the file is the same");
  HoldInFile(input);
  while (reader.Next()) grown.push_back(See(reader.Row()));
  reader.Finish();
  while (reader.Next()) grown.push_back(See(reader.Row()));
  CheckPlaces(grown, input);
  Require(reader.Offset() == size, "all is read");
  return 0;
}
