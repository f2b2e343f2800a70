// Reads log files of VexorLogging row by row, even if they are damaged.
//
// A `LogReader` reads files of any size in constant memory. It handles header lines, also repeated
// or different ones in the middle of a file; rows with quoted cells and line ends in them; raw
// lines of `LogLine`; both kinds of line ends and a byte-order mark; and the damage of crashes and
// power cuts: rows that are cut off, blocks of NUL bytes, bytes that are not UTF-8. No content of a
// file makes the reader throw or stop before the end: damaged rows are returned with marks.
//
//   vexor::LogReader reader;
//   reader.Open("logs/CSTATES_0.csv");
//   while (reader.Next()) {
//     const vexor::LogRow row = reader.Row();
//     if (row.Result() == vexor::LogResult::kFail) Show(row.Line(), row.Time(), row.At("Notes"));
//   }
//   if (reader.Error()) Complain(reader.Error().message());
//
// One thread at a time may use a reader and its rows. Different readers are independent, even on
// the same file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "vexor/export.h"
#include "vexor/logging/console.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexor {

// ---- Time.

// Milliseconds from 1970-01-01 00:00:00.000 to a time stamp, both in local time, ignoring time
// zones and daylight saving. If the clock was set back or daylight saving ended, later rows have
// smaller times; the reader does not correct that.
using LogTime = std::int64_t;

// Means "no time". Smaller than any time.
inline constexpr LogTime kNoLogTime = std::numeric_limits<LogTime>::min();

// Returns the time of a stamp as `GetCurTimeStamp` writes it, "2024-03-07 09:05:02.017", with a
// year of four digits; `kNoLogTime` for any other text and for dates that do not exist.
VEXOR_EXPORT LogTime ParseLogTime(std::string_view stamp);

// Returns the stamp of a time, the inverse of `ParseLogTime`. Empty text for `kNoLogTime` and for
// years outside 0 to 9999.
VEXOR_EXPORT std::string FormatLogTime(LogTime time);

// ---- Rows.

enum class LogRowKind : std::uint8_t {
  kRow,       // cells under the last header
  kHeader,    // the names of the columns of the following rows
  kText,      // a raw line of `LogLine` or `LogSpecificLevel`, or any line of a log without header
  kNulBlock,  // NUL bytes that a power cut left in place of data; has no cells
};

// What is wrong with a row. A row may have several kinds of damage.
enum class LogDamage : std::uint8_t {
  kCutOff,      // it ends too early: at the end of the file, at a NUL block, or at the next row
  kNoStart,     // its beginning is lost: it follows a NUL block in the same line
  kTooLong,     // it is longer than the limit; only its beginning is returned
  kNoUtf8,      // it has bytes that are not UTF-8
  kOtherWidth,  // it has more or fewer cells than the header has columns
  kOpenQuote,   // a quoted cell has no closing quote
  kStrayQuote,  // text follows the closing quote of a cell; it is returned as part of the cell
};
inline constexpr int kLogDamageCount = 7;

enum class LogResult : std::uint8_t { kNone, kPass, kFail };

// Means "no such column".
inline constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);

struct LogRowParts;

// A row of a reader: a handle that is cheap to copy. It and all texts that it returns are valid
// until the reader's next call of `Next` or `Open`, or its destruction. Throws only std::bad_alloc.
class VEXOR_EXPORT LogRow {
 public:
  [[nodiscard]] LogRowKind Kind() const;
  [[nodiscard]] bool Has(LogDamage damage) const;
  [[nodiscard]] bool IsDamaged() const;

  // Return where the row begins, as a line number from 1 and a byte offset from 0, and its size in
  // bytes with its line end. Of a row that is too long, the size counts only the returned part.
  [[nodiscard]] std::uint64_t Line() const;
  [[nodiscard]] std::uint64_t Offset() const;
  [[nodiscard]] std::uint64_t Size() const;

  // Returns the row as it is in the file, without its line end (which includes carriage returns
  // before the line feed). For raw lines, this is the logged text. Empty for a NUL block.
  [[nodiscard]] std::string_view Text() const;

  // Return the number of cells (0 for a NUL block, otherwise at least 1) and a cell by its
  // position; empty text from position `Width()` on. Cells are returned without their quotes. In a
  // row that ends with "\r\n", a "\r\n" inside a quoted cell is returned as "\n", as it was logged.
  // The cells of a header keep the blanks around them.
  [[nodiscard]] std::size_t Width() const;
  [[nodiscard]] std::string_view Cell(std::size_t position) const;

  // Return the columns of the last header (or of this one, if the row is a header), without the
  // blanks around them, and the header's number. Without a header there are no columns, and the
  // number is 0. The number changes when the columns change, so callers can keep the results of
  // `Column` while it stays the same.
  [[nodiscard]] const std::vector<std::string_view>& Columns() const;
  [[nodiscard]] std::uint32_t HeaderNumber() const;

  // Returns the first column of this name, `kNoColumn` if there is none. Case matters.
  [[nodiscard]] std::size_t Column(std::string_view name) const;

  // Returns the cell of a column; empty text if the row has none, and for any kind but `kRow`. If a
  // row has more cells than the header has columns, the surplus cells are taken to be where
  // `LogData` puts them: before "Level", or at the end if no column has that name.
  [[nodiscard]] std::string_view At(std::size_t column) const;
  [[nodiscard]] std::string_view At(std::string_view name) const { return At(Column(name)); }

  // Cells converted to values. For kinds other than `kRow`, the cells count as missing.

  // Returns "Time"; `kNoLogTime` if the cell is missing or not a time stamp.
  [[nodiscard]] LogTime Time() const;

  // Returns the test whose name, as `GetPMTestName` returns it, is in "TestType"; PM_TEST_MAX if
  // the cell is missing or has another text.
  [[nodiscard]] VEXOR_PM_TEST_ID Test() const;

  // Returns "Level"; nothing if the cell is missing or, without the blanks around it, not the long
  // name of a level.
  [[nodiscard]] std::optional<TRACE_LEVEL> Level() const;

  // Returns "Result" or, if that is empty or missing, "Status": kPass for "pass" and "passed",
  // kFail for "fail", "failed" and "error", in "Result" also kPass for "ok" and kFail for "not ok".
  // Case and blanks around the word do not matter. kNone for any other text.
  [[nodiscard]] LogResult Result() const;

  // Returns the number in a column: decimal, such as "-2.5" or "1e3", or unsigned hexadecimal, such
  // as "0x1f"; blanks around it and a "%" after it do not matter. Returns nothing for any other
  // text, including "inf" and "nan". Does not depend on the locale.
  [[nodiscard]] std::optional<double> Number(std::size_t column) const;
  [[nodiscard]] std::optional<double> Number(std::string_view name) const {
    return Number(Column(name));
  }

  // Returns whether this is the note of the library's version that `Initialize` logs. It marks the
  // places where a log was started or restarted.
  [[nodiscard]] bool IsVersionNote() const;

 private:
  friend class LogReader;
  explicit LogRow(LogRowParts* parts) : parts_(parts) {}
  LogRowParts* parts_;
};

// ---- Files.

struct LogReaderOptions {
  // For a file that is still being written. `Next` may be called again after it returned false. A
  // last row without line end, or with an open quote, is held back until it is complete or `Finish`
  // is called.
  bool follow = false;

  // The most bytes of a row, from 1 KiB to 1 GiB; other values are clamped. A longer row is cut
  // there and marked `kTooLong`; the rest up to the next line end, quoted or not, is skipped.
  std::size_t row_limit = std::size_t{1} << 20;

  // Size of the buffer, at least 1. It grows only for rows that are longer.
  std::size_t buffer_size = std::size_t{256} << 10;

  // If false, the file is open only while bytes are read. For thousands of readers at a time.
  bool keep_open = true;

  // A line to be recognised as a header even if it does not look like one; may be empty.
  std::string header = {};
};

// What happened to the file while it was read.
enum class LogFileChange : std::uint8_t {
  kNone,
  kShrunk,    // it has fewer bytes than were read
  kReplaced,  // another file has its path now, or it was emptied and written again
  kRemoved,   // its path does not exist any more
};

struct LogReaderImpl;

// How lines are interpreted:
// - A header is a line with at least two columns that have different, non-empty names, one of them
//   "Time". Without "Time", the first line of a file is a header if its names are not numbers and
//   have no blanks around them ("Level" may). A line that equals the last header or the option
//   `header` is a header, too.
// - Under a header that begins with "Time", a line that begins with a time stamp is a row, and any
//   other line is text. A line that ends inside its time stamp is a row that was cut off, and so is
//   a row without a level under a header that ends with "Level".
// - Under any other header, a line with a comma is a row, and a line without one is text.
// - A quoted cell may hold line ends. If the closing quote is missing, is followed by more text of
//   the cell, or does not lead to a complete row, the row was cut off. It then ends before the next
//   line that begins with a time stamp (under a header that begins with "Time") or is a header. If
//   there is none, it ends at its first line end, except for the last row of a file under a header
//   that begins with "Time", which ends with the file.
// - NUL bytes are a block if there are at least eight, if they begin a line, or if they end the
//   file; otherwise they are part of the text. A line end after a block belongs to it.
class VEXOR_EXPORT LogReader {
 public:
  explicit LogReader(LogReaderOptions options = {});
  LogReader(LogReader&& other) noexcept;
  LogReader& operator=(LogReader&& other) noexcept;
  ~LogReader();

  // Closes the file that was open and opens the one at `path`, which may be a pipe or a device.
  // Returns `Error()`.
  std::error_code Open(const std::string& path);

  // Moves to the next row; false at the end of the data, or after an error. With `follow`, a later
  // call may find more. Blocks while a read blocks, for example of a pipe.
  bool Next();

  // Returns the current row. Only to be called after `Next` has returned true.
  [[nodiscard]] LogRow Row() const;

  // Tells a reader with `follow` that the file is complete: further calls of `Next` return all that
  // is left, including a last row without line end.
  void Finish();

  // Returns the first error of opening or reading, for example because the path is a folder. It
  // compares with std::errc. A pipe that no program opens for writing gives
  // std::errc::broken_pipe after two seconds.
  [[nodiscard]] std::error_code Error() const;

  // Returns what happened to the file; known when `Next` has returned false. Without `follow`, only
  // kShrunk is noticed, and with `keep_open` false also kReplaced. Rows in the reader's buffer are
  // returned first. To continue with the new content, call `Finish`, read the rest of the old
  // content, and `Open` the path again.
  [[nodiscard]] LogFileChange Change() const;

  // Return the path given to `Open`, and where the next row begins: its byte offset from 0 and its
  // line from 1.
  [[nodiscard]] const std::string& Path() const;
  [[nodiscard]] std::uint64_t Offset() const;
  [[nodiscard]] std::uint64_t Line() const;

 private:
  std::unique_ptr<LogReaderImpl> impl_;
};

}  // namespace vexor
