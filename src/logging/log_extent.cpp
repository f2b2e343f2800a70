#include "logging/log_extent.h"

#include <algorithm>
#include <cassert>

#include "logging/log_scan.h"
#include "logging/log_time.h"

namespace vexor {

namespace {

constexpr std::size_t kNulBlock = 8;

// "\r\r\n" arises when a write was torn between the two bytes of a line end: the next line begins
// with a line end of its own.
constexpr std::size_t kMostReturns = 2;

std::size_t CountReturns(std::string_view bytes) {
  std::size_t count = 0;
  while (count < std::min(bytes.size(), kMostReturns) && bytes[count] == '\r') ++count;
  return count;
}

// Returns where the text of a line ends, given the place of its line feed.
std::size_t FindTextEnd(std::string_view bytes, std::size_t line_feed) {
  assert(bytes[line_feed] == '\n');
  std::size_t end = line_feed;
  while (end > 0 && line_feed - end < kMostReturns && bytes[end - 1] == '\r') --end;
  return end;
}

Extent EndWithLine(std::string_view bytes, std::size_t line_feed) {
  Extent extent;
  extent.size = line_feed + 1;
  extent.text = FindTextEnd(bytes, line_feed);
  extent.returns = extent.text < line_feed;
  extent.line_ends = 1;
  return extent;
}

Extent CutOffAt(std::size_t place) {
  Extent extent;
  extent.size = place;
  extent.text = place;
  extent.cut_off = true;
  return extent;
}

// Cuts at the limit, or up to three bytes before it so as not to split a UTF-8 character.
Extent CutAtLimit(std::string_view bytes, std::size_t limit) {
  assert(limit > 3 && limit < bytes.size());
  std::size_t place = limit;
  for (int i = 0; i < 3 && (static_cast<unsigned char>(bytes[place]) & 0xC0U) == 0x80U; ++i) {
    --place;
  }
  Extent extent;
  extent.size = place;
  extent.text = place;
  extent.too_long = true;
  return extent;
}

// One pass over a row, which may hold line ends inside quotes.
//
// A line end inside quotes is ambiguous: it belongs to the cell, or a crash cut the row off inside
// the cell and the next row follows. In the second case, reading on to the next quote would swallow
// whole rows. The pass assumes the first, remembers the line end, and returns to it when the bytes
// that follow speak for the second: a row begins behind it, the quote closes where no cell can end,
// or the row ends with too few cells.
class RowPass {
 public:
  RowPass(std::string_view bytes, const RowRules& rules, DataEnd end)
      : bytes_(bytes),
        rules_(rules),
        end_(end),
        begin_(bytes.data()),
        bound_(begin_ + std::min(bytes.size(), rules.limit)) {}

  Extent Measure();

 private:
  enum class Answer : std::uint8_t { kYes, kNo, kUnknown };

  // A line end inside quotes, with the counts up to it.
  struct Place {
    std::size_t line_feed = 0;
    std::size_t line_ends = 0;
    std::size_t commas = 0;
    bool is_set = false;
  };

  bool StepOutside();
  bool StepInside();
  bool CloseQuote();
  bool NoteLineEnd();
  bool MeetNuls();
  void FinishLine();
  void FinishAtNuls();
  void FinishWithoutLine();
  [[nodiscard]] Answer IsRowStart(std::string_view rest) const;
  [[nodiscard]] bool IsComplete() const;
  void Finish(Extent extent);
  void ReturnTo(const Place& place);
  [[nodiscard]] std::size_t At() const { return static_cast<std::size_t>(at_ - begin_); }

  std::string_view bytes_;
  const RowRules& rules_;
  DataEnd end_;
  const char* begin_;
  const char* bound_;

  const char* at_ = begin_;
  bool inside_ = false;  // a quoted cell
  bool quoted_ = false;
  bool stray_quote_ = false;
  std::size_t opened_ = 0;  // where the last quoted cell begins
  std::size_t line_ends_ = 0;
  Passed outside_;
  Passed within_;
  Place first_;      // the first line end inside quotes
  Place other_row_;  // the first of them that is followed by the start of a row
  Extent result_;
};

Extent RowPass::Measure() {
  while (inside_ ? StepInside() : StepOutside()) {
  }
  return result_;
}

// The steps return whether to go on. They stop without a result if they need more bytes.

bool RowPass::StepOutside() {
  at_ = FindStop(at_, bound_, outside_);
  if (at_ >= bound_) {
    FinishWithoutLine();
    return false;
  }
  if (*at_ == '\n') {
    FinishLine();
    return false;
  }
  if (*at_ == '\0') return MeetNuls();
  inside_ = at_ == begin_ || at_[-1] == ',';
  quoted_ = quoted_ || inside_;
  if (inside_) opened_ = At();
  ++at_;
  return true;
}

bool RowPass::StepInside() {
  at_ = FindStop(at_, bound_, within_);
  if (at_ >= bound_) {
    FinishWithoutLine();
    return false;
  }
  if (*at_ == '\n') return NoteLineEnd();
  return *at_ == '\0' ? MeetNuls() : CloseQuote();
}

bool RowPass::CloseQuote() {
  const std::string_view rest = bytes_.substr(At() + 1);
  if (end_ != DataEnd::kFinal && (rest.empty() || CouldBeLineEnd(rest))) return false;
  if (rest.starts_with('"')) {
    at_ += 2;
    return true;
  }
  const NulRun nuls = JudgeNuls(bytes_, At() + 1, end_);
  if (nuls.kind == NulRun::Kind::kUnknown) return false;
  inside_ = false;
  const bool ends_cell = rest.empty() || rest[0] == ',' || MeasureLineEnd(rest) > 0 ||
                         nuls.kind == NulRun::Kind::kBlock;
  if (!ends_cell && first_.is_set) {
    ReturnTo(other_row_.is_set ? other_row_ : first_);
    return false;
  }
  stray_quote_ = stray_quote_ || !ends_cell;
  ++at_;
  return true;
}

bool RowPass::NoteLineEnd() {
  ++line_ends_;
  const Place here = {
      .line_feed = At(), .line_ends = line_ends_, .commas = outside_.commas, .is_set = true};
  if (stray_quote_ || opened_ < rules_.searched) {
    ReturnTo(here);
    return false;
  }
  ++at_;
  if (!first_.is_set) first_ = here;
  if (other_row_.is_set) return true;
  const Answer answer = IsRowStart(bytes_.substr(At()));
  if (answer == Answer::kYes) other_row_ = here;
  return answer != Answer::kUnknown;
}

bool RowPass::MeetNuls() {
  const NulRun run = JudgeNuls(bytes_, At(), end_);
  at_ += run.size;
  if (run.kind == NulRun::Kind::kBlock) FinishAtNuls();
  return run.kind == NulRun::Kind::kText;
}

RowPass::Answer RowPass::IsRowStart(std::string_view rest) const {
  constexpr std::string_view kTimedHeader = "Time,";
  const std::string_view header = rules_.header;
  const auto shows = [&](std::string_view wanted) { return rest.starts_with(wanted); };
  const auto may_show = [&](std::string_view wanted) { return wanted.starts_with(rest); };
  const std::string_view behind = shows(header) ? rest.substr(header.size()) : "";
  const bool has_stamp = rules_.timed && StampReader().Read(rest) != kNoLogTime;
  if (shows(kTimedHeader) || (has_stamp && rest.substr(kStampSize).starts_with(',')) ||
      (!header.empty() && MeasureLineEnd(behind) > 0)) {
    return Answer::kYes;
  }
  const bool may_be_row = (rules_.timed && BeginsStamp(rest)) || may_show(kTimedHeader) ||
                          may_show(header) || (!header.empty() && CouldBeLineEnd(behind));
  return may_be_row && end_ != DataEnd::kFinal ? Answer::kUnknown : Answer::kNo;
}

// Whether the row that ends here, and has line ends inside quotes, is really one row. A row with a
// time stamp is, unless another one seems to begin inside it. Otherwise the number of cells tells.
bool RowPass::IsComplete() const {
  if (inside_) return false;
  if (rules_.timed && !other_row_.is_set) return true;
  return outside_.commas + 1 >= rules_.columns;
}

void RowPass::FinishLine() {
  if (first_.is_set && !IsComplete()) return ReturnTo(other_row_.is_set ? other_row_ : first_);
  Finish(EndWithLine(bytes_, At()));
}

void RowPass::FinishAtNuls() {
  if (other_row_.is_set) return ReturnTo(other_row_);
  if (first_.is_set && !rules_.timed) return ReturnTo(first_);
  Finish(CutOffAt(At()));
}

void RowPass::FinishWithoutLine() {
  if (bytes_.size() > rules_.limit) {
    if (first_.is_set) return ReturnTo(other_row_.is_set ? other_row_ : first_);
    return Finish(CutAtLimit(bytes_, rules_.limit));
  }
  if (end_ == DataEnd::kFinal) {
    if (first_.is_set && !IsComplete() && (other_row_.is_set || !rules_.timed)) {
      return ReturnTo(other_row_.is_set ? other_row_ : first_);
    }
    return Finish(CutOffAt(bytes_.size()));
  }
  // The file may grow, and somebody waits for its rows. If another row begins and ends behind the
  // open quote, this one was most likely cut off. (The alternative is a cell that quotes a log and
  // is still being written.)
  if (end_ == DataEnd::kPaused && other_row_.is_set &&
      bytes_.find('\n', other_row_.line_feed + 1) != std::string_view::npos) {
    ReturnTo(other_row_);
  }
}

void RowPass::Finish(Extent extent) {
  extent.line_ends += line_ends_;
  extent.commas = outside_.commas;
  extent.quoted = quoted_;
  extent.beyond_ascii = outside_.beyond_ascii || within_.beyond_ascii;
  extent.open_quote = inside_;
  extent.stray_quote = stray_quote_;
  result_ = extent;
}

void RowPass::ReturnTo(const Place& place) {
  assert(place.is_set);
  Finish(EndWithLine(bytes_, place.line_feed));
  result_.line_ends = place.line_ends;
  result_.commas = place.commas;
  result_.cut_off = true;
  result_.open_quote = true;
  result_.searched = At();
}

}  // namespace

std::size_t MeasureLineEnd(std::string_view bytes) {
  const std::size_t returns = CountReturns(bytes);
  return returns < bytes.size() && bytes[returns] == '\n' ? returns + 1 : 0;
}

bool CouldBeLineEnd(std::string_view bytes) {
  return !bytes.empty() && CountReturns(bytes) == bytes.size();
}

NulRun JudgeNuls(std::string_view bytes, std::size_t at, DataEnd end) {
  std::size_t size = 0;
  while (size < kNulBlock && at + size < bytes.size() && bytes[at + size] == '\0') ++size;
  const bool reaches_end = at + size == bytes.size();
  if (size == kNulBlock || (reaches_end && end == DataEnd::kFinal)) {
    return {.kind = NulRun::Kind::kBlock};
  }
  if (reaches_end) return {.kind = NulRun::Kind::kUnknown};
  return {.kind = NulRun::Kind::kText, .size = size};
}

Extent MeasureLine(std::string_view bytes, std::size_t limit, DataEnd end) {
  assert(!bytes.empty() && bytes[0] != '\0');  // a size of 0 asks for more bytes
  const char* const begin = bytes.data();
  const char* const bound = begin + std::min(bytes.size(), limit);
  const char* at = begin;
  bool quoted = false;
  Passed passed;
  Extent extent;
  while (true) {
    at = FindStop(at, bound, passed);
    const auto place = static_cast<std::size_t>(at - begin);
    if (at >= bound) {
      if (bytes.size() > limit) {
        extent = CutAtLimit(bytes, limit);
      } else if (end == DataEnd::kFinal) {
        extent = CutOffAt(bytes.size());
      }
      break;
    }
    if (*at == '\n') {
      extent = EndWithLine(bytes, place);
      break;
    }
    if (*at == '\0') {
      const NulRun run = JudgeNuls(bytes, place, end);
      if (run.kind == NulRun::Kind::kBlock) extent = CutOffAt(place);
      if (run.kind != NulRun::Kind::kText) break;
      at += run.size;
    } else {
      quoted = true;
      ++at;
    }
  }
  extent.commas = passed.commas;
  extent.quoted = quoted;
  extent.beyond_ascii = passed.beyond_ascii;
  return extent;
}

Extent MeasureRow(std::string_view bytes, const RowRules& rules, DataEnd end) {
  assert(!bytes.empty() && bytes[0] != '\0');  // a size of 0 asks for more bytes
  return RowPass(bytes, rules, end).Measure();
}

}  // namespace vexor
