// The current row of a reader, behind the public LogRow.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "logging/log_cells.h"
#include "logging/log_header.h"
#include "vexor/logging/log_reader.h"

namespace vexor {

struct LogRowParts {
  LogRowKind kind = LogRowKind::kText;
  std::uint32_t damages = 0;  // a bit for each `LogDamage`
  std::uint64_t line = 0;
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
  std::string_view text;
  LogCells cells;
  LogTime time = kNoLogTime;
  bool has_time = false;  // `time` was computed
  std::optional<TRACE_LEVEL> level;
  bool has_level = false;  // `level` was computed

  LogHeader header;
  std::uint32_t header_number = 0;

  // The result of the last look-up, kept over rows: most rows of a log are of the same test.
  std::string test_name;
  VEXOR_PM_TEST_ID test = PM_TEST_MAX;

  void Mark(LogDamage damage, bool is_so = true) {
    if (is_so) damages |= 1U << static_cast<unsigned>(damage);
  }

  // Returns the cell under a column of the header. Surplus cells are assumed where the writer puts
  // them: before "Level", or at the end.
  std::string_view At(std::size_t column);
  std::optional<TRACE_LEVEL> Level();

  // Whether the last cell is a level, even if the row has fewer cells than columns.
  bool EndsWithLevel();
};

}  // namespace vexor
