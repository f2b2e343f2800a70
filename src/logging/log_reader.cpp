#include "vexor/logging/log_reader.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

#include "logging/log_extent.h"
#include "logging/log_row.h"
#include "logging/log_scan.h"
#include "logging/log_source.h"
#include "logging/log_time.h"
#include "logging/suite_header.h"

namespace vexor {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsProperPrefix(std::string_view text, std::string_view of) {
  return text.size() < of.size() && of.starts_with(text);
}

LogCells::Quotes FindQuotes(const Extent& extent) {
  if (!extent.quoted) return LogCells::Quotes::kNone;
  return extent.open_quote ? LogCells::Quotes::kOpen : LogCells::Quotes::kClosed;
}

const LogHeader& SuiteHeader() {
  static const LogHeader header(kSuiteHeader);
  return header;
}

// Whether there are enough bytes to tell whether the row begins with a time stamp.
bool ShowsStamp(std::string_view bytes, DataEnd end) {
  constexpr std::size_t kLongestLineEnd = 3;
  return end == DataEnd::kFinal || bytes.size() >= kStampSize + kLongestLineEnd ||
         bytes.find('\n') != std::string_view::npos;
}

// Whether a time stamp with this text behind it is a whole cell, not the beginning of a longer one.
bool EndsCell(std::string_view rest) {
  return rest.empty() || rest[0] == ',' || MeasureLineEnd(rest) > 0;
}

// The bytes that were read but do not belong to a finished row yet.
class LogBuffer {
 public:
  LogSource source;

  void Reset(std::size_t size) {
    begin_ = end_ = 0;
    if (bytes_.empty()) bytes_.resize(size + kScanMargin);
  }

  [[nodiscard]] std::string_view Bytes() const { return {bytes_.data() + begin_, end_ - begin_}; }
  void Drop(std::size_t count) {
    assert(count <= end_ - begin_);
    begin_ += count;
  }

  // Reads more bytes; false if there are none for now. Each attempt to find the end of the row
  // scans it from its start, so a long row's bytes are doubled each time: otherwise a row of n
  // bytes would cost n * n.
  bool ReadMore() {
    if (bytes_.empty()) return false;  // no file was opened
    constexpr std::size_t kMany = 65536;
    const std::size_t before = end_ - begin_;
    const std::size_t wanted = before < kMany ? before + 1 : 2 * before;
    std::memmove(bytes_.data(), bytes_.data() + begin_, before);
    begin_ = 0;
    end_ = before;
    std::size_t count = 0;
    do {
      if (end_ + kScanMargin == bytes_.size()) bytes_.resize(2 * end_ + kScanMargin);
      count = source.Read(bytes_.data() + end_, bytes_.size() - kScanMargin - end_);
      end_ += count;
    } while (count > 0 && end_ < wanted);
    return end_ > before;
  }

 private:
  std::vector<char> bytes_;  // with kScanMargin bytes at the end that hold no data
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

}  // namespace

struct LogReaderImpl {
  explicit LogReaderImpl(LogReaderOptions its_options);

  std::error_code Open(const std::string& its_path);
  bool Next();
  [[nodiscard]] std::uint64_t Offset() const { return offset_; }
  [[nodiscard]] std::uint64_t Line() const { return line_; }

  LogReaderOptions options;
  std::string path;
  LogRowParts row;
  LogBuffer buffer;
  bool finished = false;  // by the caller

 private:
  // These consume bytes of the buffer. They return false if they need more of them to decide.
  bool TakeRow(DataEnd end);
  bool SkipByteOrderMark(DataEnd end);
  bool SkipRest(DataEnd end);
  bool TakeNuls(DataEnd end);
  bool TakeLine(DataEnd end);

  [[nodiscard]] Extent Measure(std::string_view bytes, bool has_stamp, DataEnd end) const;
  void Judge(const Extent& extent, bool has_stamp);
  LogRowKind FindKind(const Extent& extent, bool has_stamp);
  [[nodiscard]] bool IsHeader(const Extent& extent) const;
  [[nodiscard]] bool IsCutStamp(std::string_view text) const;
  [[nodiscard]] bool BeginsKnownHeader() const;
  void JudgeRow(const Extent& extent);
  void TakeHeader(std::string_view line);
  void Drop(std::size_t count);

  bool final_ = false;        // no more bytes will come
  std::uint64_t offset_ = 0;  // of the bytes in the buffer
  std::uint64_t line_ = 1;
  std::uint64_t searched_ = 0;  // see RowRules
  bool at_start_ = true;        // of the file
  bool is_first_line_ = true;
  bool skipping_ = false;   // the rest of a row that was too long
  bool mid_line_ = false;   // a block of NUL bytes came before, in the same line
  std::uint64_t nuls_ = 0;  // of a block whose end is not in the buffer yet
  StampReader stamps_;
  LogHeader given_;           // the option
  const LogHeader& assumed_;  // the header of rows that come before the first one in the file
};

LogReaderImpl::LogReaderImpl(LogReaderOptions its_options)
    : options(std::move(its_options)), assumed_(options.header.empty() ? SuiteHeader() : given_) {
  options.row_limit = std::clamp(options.row_limit, std::size_t{1} << 10, std::size_t{1} << 30);
  options.buffer_size = std::max(options.buffer_size, std::size_t{1});
  given_.Set(options.header);
}

std::error_code LogReaderImpl::Open(const std::string& its_path) {
  path = its_path;
  finished = final_ = skipping_ = mid_line_ = false;
  at_start_ = is_first_line_ = true;
  offset_ = searched_ = nuls_ = 0;
  line_ = 1;
  stamps_ = {};
  row.header.Set("");
  row.header_number = 0;
  buffer.Reset(options.buffer_size);
  return buffer.source.Open(path, options.keep_open, options.follow);
}

bool LogReaderImpl::Next() {
  DataEnd end = final_ ? DataEnd::kFinal : DataEnd::kUnknown;
  while (!TakeRow(end)) {
    if (end != DataEnd::kUnknown) return false;
    if (buffer.ReadMore()) continue;
    final_ = !options.follow || finished;
    end = final_ ? DataEnd::kFinal : DataEnd::kPaused;
  }
  return true;
}

bool LogReaderImpl::TakeRow(DataEnd end) {
  if (at_start_ && !SkipByteOrderMark(end)) return false;
  if (skipping_ && !SkipRest(end)) return false;
  const std::string_view bytes = buffer.Bytes();
  if (nuls_ > 0 || bytes.starts_with('\0')) return TakeNuls(end);
  return !bytes.empty() && TakeLine(end);
}

void LogReaderImpl::Drop(std::size_t count) {
  buffer.Drop(count);
  offset_ += count;
}

bool LogReaderImpl::SkipByteOrderMark(DataEnd end) {
  const std::string_view bytes = buffer.Bytes();
  if (end != DataEnd::kFinal && IsProperPrefix(bytes, kByteOrderMark)) return false;
  if (bytes.starts_with(kByteOrderMark)) Drop(kByteOrderMark.size());
  at_start_ = false;
  return true;
}

bool LogReaderImpl::SkipRest(DataEnd end) {
  while (skipping_) {
    const std::string_view bytes = buffer.Bytes();
    Passed passed;
    const char* const stop = FindStop(bytes.data(), bytes.data() + bytes.size(), passed);
    const auto place = static_cast<std::size_t>(stop - bytes.data());
    Drop(place);
    if (place == bytes.size()) return false;
    if (bytes[place] != '\0') {
      Drop(1);
      if (bytes[place] == '"') continue;
      ++line_;
      skipping_ = false;
      break;
    }
    const NulRun run = JudgeNuls(bytes, place, end);
    if (run.kind == NulRun::Kind::kUnknown) return false;
    skipping_ = run.kind == NulRun::Kind::kText;
    Drop(run.size);
  }
  return true;
}

bool LogReaderImpl::TakeNuls(DataEnd end) {
  std::string_view bytes = buffer.Bytes();
  const std::size_t count = std::min(bytes.find_first_not_of('\0'), bytes.size());
  if (nuls_ == 0) row.offset = offset_;
  nuls_ += count;
  Drop(count);
  bytes.remove_prefix(count);
  if (end != DataEnd::kFinal && (bytes.empty() || CouldBeLineEnd(bytes))) return false;
  const std::size_t line_end = MeasureLineEnd(bytes);
  row.kind = LogRowKind::kNulBlock;
  row.damages = 0;
  row.line = line_;
  row.size = std::exchange(nuls_, 0) + line_end;
  row.text = {};
  row.has_time = true;
  row.time = kNoLogTime;
  row.has_level = false;
  Drop(line_end);
  if (line_end > 0) ++line_;
  mid_line_ = line_end == 0;
  return true;
}

Extent LogReaderImpl::Measure(std::string_view bytes, bool has_stamp, DataEnd end) const {
  const LogHeader& header = row.header.IsThere() ? row.header : assumed_;
  // Under a header that begins with "Time", a line without a stamp is text that a program logged
  // with LogLine. Its quotes mean nothing and must not make it swallow the rows below.
  if (row.header.BeginsWithTime() && !has_stamp) {
    return MeasureLine(bytes, options.row_limit, end);
  }
  RowRules rules = {.limit = options.row_limit,
                    .timed = has_stamp,
                    .columns = header.Columns().size(),
                    .header = header.Line()};
  if (searched_ > offset_) rules.searched = static_cast<std::size_t>(searched_ - offset_);
  if (!row.header.IsThere() && !has_stamp) rules.columns = 0;  // a text or a header, not a row
  return MeasureRow(bytes, rules, end);
}

bool LogReaderImpl::TakeLine(DataEnd end) {
  const std::string_view bytes = buffer.Bytes();
  const bool may_have_stamp = row.header.BeginsWithTime() || !row.header.IsThere();
  bool has_stamp = false;
  if (may_have_stamp) {
    if (!ShowsStamp(bytes, end)) return false;
    row.time = stamps_.Read(bytes);
    has_stamp = row.time != kNoLogTime && EndsCell(bytes.substr(kStampSize));
  }
  const Extent extent = Measure(bytes, has_stamp, end);
  if (!extent.IsKnown()) return false;
  row.damages = 0;
  row.line = line_;
  row.offset = offset_;
  row.size = extent.size;
  row.text = bytes.substr(0, extent.text);
  Judge(extent, has_stamp);
  line_ += extent.line_ends;
  Drop(extent.size);
  if (extent.searched > 0) searched_ = std::max(searched_, row.offset + extent.searched);
  skipping_ = extent.too_long;
  mid_line_ = is_first_line_ = false;
  return true;
}

// ---- What a line is.

void LogReaderImpl::Judge(const Extent& extent, bool has_stamp) {
  const bool has_timed_header = row.header.BeginsWithTime();
  const bool is_raw = has_timed_header && !has_stamp;
  row.cells.Start(row.text, is_raw && extent.quoted ? LogCells::kUnknownWidth : extent.commas + 1,
                  FindQuotes(extent), extent.returns);
  const bool begins_header = !row.text.empty() && IsProperPrefix(row.text, row.header.Line());
  row.kind = FindKind(extent, has_stamp);
  row.has_time = row.kind != LogRowKind::kRow || row.header.BeginsWithTime();
  if (row.kind != LogRowKind::kRow || !has_stamp) row.time = kNoLogTime;
  row.has_level = false;
  row.Mark(LogDamage::kTooLong, extent.too_long);
  row.Mark(LogDamage::kNoStart, mid_line_ && row.kind == LogRowKind::kText);
  row.Mark(LogDamage::kNoUtf8, extent.beyond_ascii && !IsUtf8(row.text));
  if (row.kind == LogRowKind::kRow) {
    JudgeRow(extent);
  } else {
    const bool has_no_line_end = extent.cut_off && extent.size == extent.text;
    row.Mark(LogDamage::kCutOff, has_no_line_end || begins_header || BeginsKnownHeader());
  }
}

LogRowKind LogReaderImpl::FindKind(const Extent& extent, bool has_stamp) {
  if (has_stamp) {
    // The header may be lost, for example in a power cut. A row with a time and enough cells is
    // then read under the assumed header.
    const bool fits = row.cells.Width() >= assumed_.Columns().size();
    if (!row.header.IsThere() && fits) TakeHeader(assumed_.Line());
    return row.header.IsThere() ? LogRowKind::kRow : LogRowKind::kText;
  }
  if (IsHeader(extent)) {
    TakeHeader(row.text);
    return LogRowKind::kHeader;
  }
  if (mid_line_ || !row.header.IsThere()) return LogRowKind::kText;
  const bool is_row = row.header.BeginsWithTime() ? IsCutStamp(row.text) : extent.commas > 0;
  return is_row ? LogRowKind::kRow : LogRowKind::kText;
}

bool LogReaderImpl::IsHeader(const Extent& extent) const {
  if (extent.too_long || extent.open_quote || extent.line_ends > 1) return false;
  if (row.text.empty()) return false;
  return row.text == row.header.Line() || row.text == options.header ||
         LogHeader::IsHeader(row.text, is_first_line_);
}

void LogReaderImpl::TakeHeader(std::string_view line) {
  // A header that was cut off inside its line end is still the same header.
  while (line.ends_with('\r')) line.remove_suffix(1);
  if (line == row.header.Line()) return;
  const std::vector<std::string> before(row.header.Columns().begin(), row.header.Columns().end());
  row.header.Set(line);
  const auto& now = row.header.Columns();
  if (!std::equal(before.begin(), before.end(), now.begin(), now.end())) ++row.header_number;
}

// Whether the line is a row that was cut off inside its time stamp. Up to four digits could be any
// number, so they count only if the last stamp begins with them, too.
bool LogReaderImpl::IsCutStamp(std::string_view text) const {
  constexpr std::size_t kYear = 4;
  if (text.empty() || !BeginsStamp(text)) return false;
  const std::string_view last = stamps_.LastDate();
  return text.size() > kYear || last.empty() || last.starts_with(text);
}

// Whether the line is a header that was cut off before any row was written.
bool LogReaderImpl::BeginsKnownHeader() const {
  const bool may_be = is_first_line_ || row.kind == LogRowKind::kHeader;
  return may_be && !row.text.empty() &&
         (IsProperPrefix(row.text, assumed_.Line()) || IsProperPrefix(row.text, kSuiteHeader));
}

void LogReaderImpl::JudgeRow(const Extent& extent) {
  const bool lacks_level = row.header.EndsWithLevel() && !row.EndsWithLevel();
  const bool is_cut_off = extent.cut_off || (lacks_level && !extent.too_long) ||
                          (row.header.BeginsWithTime() && row.time == kNoLogTime);
  row.Mark(LogDamage::kCutOff, is_cut_off);
  row.Mark(LogDamage::kOpenQuote, extent.open_quote);
  row.Mark(LogDamage::kStrayQuote, extent.stray_quote);
  const bool has_other_width = row.cells.Width() != row.header.Columns().size();
  row.Mark(LogDamage::kOtherWidth, has_other_width && !is_cut_off && !extent.too_long);
}

// ---- The public face.

LogReader::LogReader(LogReaderOptions options)
    : impl_(std::make_unique<LogReaderImpl>(std::move(options))) {}
LogReader::LogReader(LogReader&& other) noexcept = default;
LogReader& LogReader::operator=(LogReader&& other) noexcept = default;
LogReader::~LogReader() = default;

std::error_code LogReader::Open(const std::string& path) { return impl_->Open(path); }
bool LogReader::Next() { return impl_->Next(); }
LogRow LogReader::Row() const { return LogRow(&impl_->row); }
void LogReader::Finish() { impl_->finished = true; }
std::error_code LogReader::Error() const { return impl_->buffer.source.Error(); }
LogFileChange LogReader::Change() const { return impl_->buffer.source.Change(); }
const std::string& LogReader::Path() const { return impl_->path; }
std::uint64_t LogReader::Offset() const { return impl_->Offset(); }
std::uint64_t LogReader::Line() const { return impl_->Line(); }

}  // namespace vexor
