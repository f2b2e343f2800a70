// Reads a log file row by row, as VexorLogging writes it, whatever has happened to it since.
//
// A `LogReader` goes through a file of any size in constant memory. It knows what a log may hold:
// header lines, also repeated or replaced in the middle; rows with quoted cells and line ends in
// them; raw lines of `LogLine`; both kinds of line ends and a byte-order mark; and what a crash or
// a power cut leaves behind: rows that are cut off, blocks of NUL bytes, bytes that are not UTF-8.
// Nothing in a file makes the reader throw or stop before the end: damaged rows are returned with
// marks.
//
//   vexor::LogReader reader;
//   reader.Open("logs/CSTATES_0.csv");
//   while (reader.Next()) {
//     const vexor::LogRow row = reader.Row();
//     if (row.Result() == vexor::LogResult::kFail) Show(row.Line(), row.Time(), row.At("Notes"));
//   }
//   if (reader.Error()) Complain(reader.Error().message());
//
// A reader, and the rows that it gives, belong to one thread at a time; different readers are
// independent, also on the same file.
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

// Milliseconds from 1970-01-01 00:00:00.000 to a time stamp, both taken as local time without time
// zone or daylight saving. Stamps carry the date, so midnight needs no care. Where the clock was
// set back, or daylight saving ended, later rows have smaller times: the reader leaves that as it
// is.
using LogTime = std::int64_t;

// The time of a row that has none. Smaller than any other.
inline constexpr LogTime kNoLogTime = std::numeric_limits<LogTime>::min();

// Returns the time of a stamp of exactly the form of `GetCurTimeStamp`, "2024-03-07 09:05:02.017",
// with a year of four digits; `kNoLogTime` for any other text and for dates that do not exist.
VEXOR_EXPORT LogTime ParseLogTime(std::string_view stamp);

// Returns the stamp of a time: `ParseLogTime` backwards. Empty for `kNoLogTime` and for years
// outside 0 to 9999.
VEXOR_EXPORT std::string FormatLogTime(LogTime time);

// ---- Rows.

enum class LogRowKind : std::uint8_t {
  kRow,       // cells under the header above
  kHeader,    // names the columns of the rows below
  kText,      // a raw line: `LogLine`, `LogSpecificLevel`, or any row of a log without a header
  kNulBlock,  // NUL bytes, which a power cut leaves in place of what was written; has no cells
};

// What is wrong with a row. A row may have several marks.
enum class LogDamage : std::uint8_t {
  kCutOff,      // it ends too early: at the end of the file, at a NUL block, or at the next row
  kNoStart,     // its first part is lost: it stands behind a NUL block, in the same line
  kTooLong,     // it was longer than the limit; only its beginning is given
  kNoUtf8,      // it holds bytes that are not UTF-8
  kOtherWidth,  // it has more or fewer cells than the header has columns
  kOpenQuote,   // a quoted cell has no closing quote
  kStrayQuote,  // text follows the closing quote of a cell; it is given as part of the cell
};
inline constexpr int kLogDamageCount = 7;

enum class LogResult : std::uint8_t { kNone, kPass, kFail };

// The column for which a header has no name, or no header is there.
inline constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);

struct LogRowParts;

// A row of a reader. A handle, cheap to copy; it and all texts that it returns are valid until the
// reader's next call of `Next`, `Open` or its destructor. Nothing here throws but std::bad_alloc.
class VEXOR_EXPORT LogRow {
 public:
  [[nodiscard]] LogRowKind Kind() const;
  [[nodiscard]] bool Has(LogDamage damage) const;
  [[nodiscard]] bool IsDamaged() const;

  // Where the row starts: the physical line, from 1, and the byte, from 0. The size counts the
  // bytes up to the end of the row, with its line end; of a row that is too long, those that are
  // given.
  [[nodiscard]] std::uint64_t Line() const;
  [[nodiscard]] std::uint64_t Offset() const;
  [[nodiscard]] std::uint64_t Size() const;

  // The row as it stands in the file, without its line end (carriage returns before the line feed
  // included). For raw lines, this is what was logged. Empty for a NUL block.
  [[nodiscard]] std::string_view Text() const;

  // The cells of the row itself, by their position: 0 for a NUL block, at least 1 otherwise. Quotes
  // are resolved; a "\r\n" in a quoted cell of a row that itself ends with "\r\n" reads "\n", as it
  // was logged. `Cell` is empty from `Width()` on. A header's cells keep their blanks.
  [[nodiscard]] std::size_t Width() const;
  [[nodiscard]] std::string_view Cell(std::size_t position) const;

  // The columns of the header above, or of this header, without surrounding blanks (" Level" is
  // "Level"); none when there is no header yet. The number tells headers apart: 0 without one, and
  // another number from each header on that differs from the one before, so that the result of
  // `Column` can be kept.
  [[nodiscard]] const std::vector<std::string_view>& Columns() const;
  [[nodiscard]] std::uint32_t HeaderNumber() const;

  // Returns the first column of this name; case matters. `kNoColumn` when there is none.
  [[nodiscard]] std::size_t Column(std::string_view name) const;

  // Returns the text of a column; empty when the row has none, and for any row but `kRow`. In a row
  // with more cells than columns, the surplus stands before "Level" (or at the end when no column
  // is called so), as `LogData` puts it: `At` of "Level" and the columns behind it takes that into
  // account.
  [[nodiscard]] std::string_view At(std::size_t column) const;
  [[nodiscard]] std::string_view At(std::string_view name) const { return At(Column(name)); }

  // Typed views. All are of kind `kRow`; the others give what is said for no such column.

  // "Time"; `kNoLogTime` when the cell is no time stamp.
  [[nodiscard]] LogTime Time() const;

  // "TestType"; PM_TEST_MAX for a text that is not the name of a test as `GetPMTestName` gives it.
  [[nodiscard]] VEXOR_PM_TEST_ID Test() const;

  // "Level", with or without blanks around it; nothing for a text that is no level's long name.
  [[nodiscard]] std::optional<TRACE_LEVEL> Level() const;

  // "Result", or "Status" where "Result" is empty or missing: kPass for "pass" and "passed", kFail
  // for "fail", "failed" and "error", in any case and with or without blanks around it; "Result"
  // may also say "ok" or "not ok". kNone for any other text.
  [[nodiscard]] LogResult Result() const;

  // A decimal number such as "-2.5" or "1e3", or an unsigned "0x1f", with or without blanks around
  // it and a "%" behind it; nothing for any other text, for infinities and for what is not a
  // number. The locale does not matter.
  [[nodiscard]] std::optional<double> Number(std::size_t column) const;
  [[nodiscard]] std::optional<double> Number(std::string_view name) const {
    return Number(Column(name));
  }

  // Whether this is the note of the library's version that `Initialize` writes: where a log was
  // started or started again.
  [[nodiscard]] bool IsVersionNote() const;

 private:
  friend class LogReader;
  explicit LogRow(LogRowParts* parts) : parts_(parts) {}
  LogRowParts* parts_;
};

// ---- Files.

struct LogReaderOptions {
  // For a file that is still being written: a last row without its line end, or with an open quote,
  // is not given until it is complete or `Finish` was called, and `Next` may be called again after
  // it returned false.
  bool follow = false;

  // A row of more bytes is cut there and given as `kTooLong`; it then ends at its next line end,
  // quoted or not. At least 1 KiB counts, at most 1 GiB.
  std::size_t row_limit = std::size_t{1} << 20;

  // Bytes read at once, and the memory that a reader holds unless a row is longer. At least 1.
  std::size_t buffer_size = std::size_t{256} << 10;

  // With false the file is open only while bytes are read, for thousands of readers at a time.
  bool keep_open = true;

  // A header line that is to be recognised even though nothing shows it to be one; may be empty.
  std::string header = {};
};

// What became of the file while it was read.
enum class LogFileChange : std::uint8_t {
  kNone,
  kShrunk,    // it has fewer bytes than were read
  kReplaced,  // its path leads to another file, or it was emptied and written anew
  kRemoved,   // its path leads to no file
};

struct LogReaderImpl;

// How a line is understood:
// - A header is a line of at least two columns, all named and different, one of them "Time".
//   Without "Time" a line is a header when it is the first of the file and its names have no blanks
//   around them ("Level" may); or when it is the option `header` or equals the header above.
// - Under a header that begins with "Time", a row begins with a time stamp, and any other line is
//   text. A line that is the beginning of a time stamp is a row that was cut off, and so is a row
//   without a level under a header that ends with "Level".
// - Under any other header every line is a row, but for one without a comma, which is text.
// - A quoted cell may hold line ends. A row whose quoted cell is never closed, or closed where no
//   complete row results, ends at the first line in it that begins with a time stamp (under a
//   header that begins with "Time") or is a header, or else, unless it is the file's last row under
//   such a header, at its first line end.
// - NUL bytes are a block when there are at least eight of them, when they begin a line, and at the
//   end of the file; otherwise they are part of a text. A line end behind a block belongs to it.
class VEXOR_EXPORT LogReader {
 public:
  explicit LogReader(LogReaderOptions options = {});
  LogReader(LogReader&& other) noexcept;
  LogReader& operator=(LogReader&& other) noexcept;
  ~LogReader();

  // Begins with the file at `path`, which may also be a pipe or a device; returns `Error()`. What
  // was open before is closed.
  std::error_code Open(const std::string& path);

  // Goes to the next row; false at the end of the data, or after an error. With `follow` a later
  // call may find more. A read that takes time (a pipe) holds the call up.
  bool Next();

  // The current row. To be called only after `Next` has returned true.
  [[nodiscard]] LogRow Row() const;

  // Tells a reader with `follow` that the file is closed: the following calls of `Next` give what
  // is left, to its end.
  void Finish();

  // The first error of opening or reading, such as that of a folder; it compares with std::errc. A
  // pipe that no program opens for writing is std::errc::broken_pipe after two seconds.
  [[nodiscard]] std::error_code Error() const;

  // Known when `Next` has returned false. With `follow` everything is looked for; without it, only
  // whether the file has shrunk, and with `keep_open` false also whether it was replaced. Rows that
  // are in the reader's buffer are still given before. To go on with the new content, `Open` the
  // path again (`Finish` first gives what is left of the old).
  [[nodiscard]] LogFileChange Change() const;

  // The path as given to `Open`, the bytes read so far of which rows were given, and the line, from
  // 1, that stands behind them.
  [[nodiscard]] const std::string& Path() const;
  [[nodiscard]] std::uint64_t Offset() const;
  [[nodiscard]] std::uint64_t Line() const;

 private:
  std::unique_ptr<LogReaderImpl> impl_;
};

}  // namespace vexor
