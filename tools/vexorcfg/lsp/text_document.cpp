#include "text_document.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "common/utf8.h"

namespace tools::vexorcfg::lsp {
namespace {

constexpr std::size_t kBetweenMarks = 256;  // bytes
constexpr std::size_t kLongest = 4;         // bytes of a character
constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

struct Character {
  std::size_t bytes;
  std::size_t units;
};

Character CharacterAt(std::string_view text, std::size_t at) {
  if (static_cast<unsigned char>(text[at]) < 0x80) return {.bytes = 1, .units = 1};
  const std::size_t length = LengthOfUtf8(text.substr(at, kLongest));
  return {.bytes = std::max<std::size_t>(1, length), .units = length == kLongest ? 2U : 1U};
}

// Appends the begin of each line behind the first one in the range of the text.
void AppendLineStarts(std::string_view text, std::size_t begin, std::size_t end,
                      std::vector<std::size_t>& starts) {
  for (std::size_t at = begin; at < end;) {
    const char c = text[at];
    at += c == '\r' && text.substr(at + 1, 1) == "\n" ? 2 : 1;
    if (c == '\r' || c == '\n') starts.push_back(at);
  }
}

}  // namespace

TextDocument::TextDocument(std::string text, PositionEncoding encoding)
    : text_(std::move(text)), encoding_(encoding), line_starts_(1), marks_(1) {
  AppendLineStarts(text_, 0, text_.size(), line_starts_);
}

std::size_t TextDocument::BeginOfLine(std::size_t line) const {
  return line < line_starts_.size() ? line_starts_[line] : text_.size();
}

std::size_t TextDocument::EndOfLine(std::size_t line) const {
  if (line + 1 >= line_starts_.size()) return text_.size();
  const std::size_t end = line_starts_[line + 1] - 1;
  return text_[end] == '\n' && end > line_starts_[line] && text_[end - 1] == '\r' ? end - 1 : end;
}

TextDocument::Mark TextDocument::Advance(Mark mark, Mark limit) const {
  while (mark.at < limit.at) {
    const Character next = CharacterAt(text_, mark.at);
    if (mark.at + next.bytes > limit.at || mark.units + next.units > limit.units) break;
    mark = {.at = mark.at + next.bytes, .units = mark.units + next.units};
  }
  return mark;
}

void TextDocument::SetMarksUpTo(std::size_t offset) const {
  while (marks_.back().at + kBetweenMarks + kLongest <= offset) {
    const std::size_t next = marks_.back().at + kBetweenMarks;
    marks_.push_back(Advance(marks_.back(), {.at = next, .units = kNoLimit}));
  }
}

TextDocument::Mark TextDocument::Measure(std::size_t offset) const {
  SetMarksUpTo(offset);
  const auto behind = std::ranges::upper_bound(marks_, offset, {}, &Mark::at);
  return Advance(*std::prev(behind), {.at = offset, .units = kNoLimit});
}

std::size_t TextDocument::OffsetOf(Position position) const {
  if (position.line >= line_starts_.size()) return text_.size();
  const std::size_t begin = line_starts_[position.line];
  const std::size_t end = EndOfLine(position.line);
  const std::size_t character = std::min(position.character, end - begin);
  if (encoding_ == PositionEncoding::kUtf8) return Measure(begin + character).at;
  const std::size_t units = std::min(Measure(begin).units + character, Measure(end).units);
  const auto behind = std::ranges::upper_bound(marks_, units, {}, &Mark::units);
  return Advance(*std::prev(behind), {.at = end, .units = units}).at;
}

Position TextDocument::PositionOf(std::size_t offset) const {
  offset = std::min(offset, text_.size());
  const auto behind = std::ranges::upper_bound(line_starts_, offset);
  const auto line = static_cast<std::size_t>(behind - line_starts_.begin()) - 1;
  const Mark begin = Measure(line_starts_[line]);
  const Mark found = Measure(std::min(offset, EndOfLine(line)));
  return {.line = line,
          .character = encoding_ == PositionEncoding::kUtf8 ? found.at - begin.at
                                                            : found.units - begin.units};
}

void TextDocument::Replace(std::size_t begin, std::size_t end, std::string_view replacement) {
  text_.replace(begin, end - begin, replacement);
  UpdateLines(begin, end, replacement.size());
  // Whether a byte is a character of its own depends on the bytes behind it, too.
  const auto is_kept = [begin](const Mark& mark) { return mark.at + kLongest <= begin; };
  const auto changed = std::ranges::partition_point(marks_, is_kept);
  marks_.erase(std::max(changed, marks_.begin() + 1), marks_.end());
}

// Searches the changed lines for their new begins, from the line of the byte in front of the
// change, which may be a "\r", to the first begin that the change leaves as it is.
void TextDocument::UpdateLines(std::size_t begin, std::size_t end, std::size_t inserted) {
  const auto first =
      std::prev(std::ranges::upper_bound(line_starts_, begin - std::min<std::size_t>(begin, 1)));
  auto kept = std::upper_bound(first, line_starts_.end(), end);
  for (auto start = kept; start != line_starts_.end(); ++start) *start += begin + inserted - end;
  std::vector<std::size_t> starts;
  const bool has_kept = kept != line_starts_.end();
  AppendLineStarts(text_, *first, has_kept ? *kept : text_.size(), starts);
  if (has_kept) ++kept;  // it was found again
  line_starts_.insert(line_starts_.erase(first + 1, kept), starts.begin(), starts.end());
}

}  // namespace tools::vexorcfg::lsp
