// The text of an open document, with the positions that the protocol counts in lines and
// characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tools::vexorcfg::lsp {

// What a position counts in a line: bytes, or units of UTF-16, of which a character beyond U+FFFF
// has two. A byte that is not UTF-8 counts as one unit.
enum class PositionEncoding { kUtf8, kUtf16 };

struct Position {
  std::size_t line = 0;
  std::size_t character = 0;
};

// Lines end with "\n", "\r\n" or "\r".
class TextDocument {
 public:
  TextDocument(std::string text, PositionEncoding encoding);

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] std::size_t CountLines() const { return line_starts_.size(); }

  // Returns the offset of a position. Behind the end of a line it is that end, behind the last line
  // the end of the text, and inside a character the character's begin.
  [[nodiscard]] std::size_t OffsetOf(Position position) const;

  // Returns the position of an offset, in the same way.
  [[nodiscard]] Position PositionOf(std::size_t offset) const;

  // Returns where a line begins, and where it ends before its line end. A line behind the last one
  // is empty, at the end of the text.
  [[nodiscard]] std::size_t BeginOfLine(std::size_t line) const;
  [[nodiscard]] std::size_t EndOfLine(std::size_t line) const;

  // Replaces the bytes from `begin` to `end`, which are in the text and in this order.
  void Replace(std::size_t begin, std::size_t end, std::string_view replacement);

 private:
  // The units of UTF-16 in front of a byte that begins a character.
  struct Mark {
    std::size_t at = 0;
    std::size_t units = 0;
  };

  void UpdateLines(std::size_t begin, std::size_t end, std::size_t inserted);
  void SetMarksUpTo(std::size_t offset) const;
  // Returns the last begin of a character that neither byte nor units take beyond the limit.
  [[nodiscard]] Mark Advance(Mark mark, Mark limit) const;

  // Returns the begin of the character at the offset.
  [[nodiscard]] Mark Measure(std::size_t offset) const;

  std::string text_;
  PositionEncoding encoding_;
  std::vector<std::size_t> line_starts_;  // of at least one line
  // One mark every few hundred bytes, as far as one was needed since the text in front of it
  // changed. So a position is found quickly in lines of any length.
  mutable std::vector<Mark> marks_;
};

}  // namespace tools::vexorcfg::lsp
