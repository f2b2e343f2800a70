// Finds where a row of a log ends. The result depends on the content of the file alone, never on
// how much of it was read so far: where that would make a difference, the caller is asked for more
// bytes. Otherwise the same log would show different rows with another buffer size or while it
// grows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexor {

// What is known about the data after the bytes in the buffer.
enum class DataEnd : std::uint8_t {
  kUnknown,
  kPaused,  // nothing for now, but the file may grow
  kFinal,   // nothing, and it stays so
};

// What the header above the row says about rows, and how far to search.
struct RowRules {
  std::size_t limit = 0;    // most bytes of a row
  bool timed = false;       // rows begin with a time stamp
  std::size_t columns = 0;  // 0 without a header
  std::string_view header;  // its line

  // An earlier row turned out to be cut off inside quotes after a search of all bytes before this
  // offset. A quote that opens before it and is still open at a line end is given up at once:
  // searching the same bytes again for every row would cost the square of their number.
  std::size_t searched = 0;
};

struct Extent {
  std::size_t size = 0;  // with the line end; 0 if more bytes are needed to tell
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
  std::size_t searched = 0;  // bytes searched, for RowRules of the rows that follow

  [[nodiscard]] bool IsKnown() const { return size > 0; }
};

// Measures a line of text, up to the first line end. `commas` counts those in quotes, too. There
// must be at least one byte, and it is not NUL.
Extent MeasureLine(std::string_view bytes, std::size_t limit, DataEnd end);

// Measures a row of cells; quoted cells may hold line ends. There must be at least one byte, and it
// is not NUL.
Extent MeasureRow(std::string_view bytes, const RowRules& rules, DataEnd end);

// Judges a run of NUL bytes inside a line: a few are part of the text, many (or the last bytes of
// the file) are a block that the file system left in place of data that a power cut lost.
struct NulRun {
  enum class Kind : std::uint8_t { kText, kBlock, kUnknown };
  Kind kind = Kind::kText;
  std::size_t size = 0;  // of the run, if it is text
};
NulRun JudgeNuls(std::string_view bytes, std::size_t at, DataEnd end);

// Returns the size of the line end that the text begins with, 0 if it begins with none.
std::size_t MeasureLineEnd(std::string_view bytes);

// Whether the text could be the beginning of a line end.
bool CouldBeLineEnd(std::string_view bytes);

}  // namespace vexor
