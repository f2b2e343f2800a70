// Where a row of a log ends. A result depends on the bytes alone and never on how many of them
// happen to be there yet: where that would make a difference, more are asked for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexor {

// What is known about the bytes behind those that are there.
enum class DataEnd : std::uint8_t {
  kUnknown,
  kPaused,  // none for now: the file may still grow
  kFinal,   // none
};

// The header above.
struct RowRules {
  std::size_t limit = 0;    // of a row's bytes
  bool timed = false;       // rows begin with a time stamp
  std::size_t columns = 0;  // 0 without a header
  std::string_view header;  // its line

  // A quote before this place that is open at a line end is taken as never closed: an earlier row
  // was cut off inside quotes, and a search for their end came to here.
  std::size_t searched = 0;
};

struct Extent {
  std::size_t size = 0;  // with the line end; 0 when more bytes are needed to tell
  std::size_t text = 0;  // without it
  std::size_t line_ends = 0;
  std::size_t commas = 0;  // outside quotes
  bool returns = false;    // the line end has a carriage return
  bool quoted = false;     // a cell may be quoted
  bool beyond_ascii = false;
  bool cut_off = false;
  bool too_long = false;
  bool open_quote = false;
  bool stray_quote = false;
  std::size_t searched = 0;  // for the rows behind: see RowRules

  [[nodiscard]] bool IsKnown() const { return size > 0; }
};

// Text up to the first line end; `commas` counts all.
Extent MeasureLine(std::string_view bytes, std::size_t limit, DataEnd end);

// Cells, of which the quoted ones may hold line ends.
Extent MeasureRow(std::string_view bytes, const RowRules& rules, DataEnd end);

// Judges a run of NUL bytes inside a line.
struct NulRun {
  enum class Kind : std::uint8_t { kText, kBlock, kUnknown };
  Kind kind = Kind::kText;
  std::size_t size = 0;  // of text
};
NulRun JudgeNuls(std::string_view bytes, std::size_t at, DataEnd end);

// The bytes of the line end that the text begins with, 0 when it begins with none.
std::size_t MeasureLineEnd(std::string_view bytes);

// Whether more bytes could make a line end of what the text begins with.
bool CouldBeLineEnd(std::string_view bytes);

}  // namespace vexor
