#include "config/file/markup.h"

#include <algorithm>

#include "config/texts/xml_characters.h"
#include "util/text.h"

namespace vexor {
namespace {

using Kind = MarkupPiece::Kind;

constexpr auto kNowhere = std::string_view::npos;
constexpr std::string_view kBlanks = " \t\r\n";

constexpr bool EndsName(char c) {
  return IsXmlBlank(c) || c == '/' || c == '>' || c == '=' || c == '<' || c == '"' || c == '\'';
}

// Returns the end of the name that begins at the place.
std::size_t FindNameEnd(std::string_view content, std::size_t at) {
  while (at < content.size() && !EndsName(content[at])) ++at;
  return at;
}

// Markup that has no name and ends at a fixed text.
struct Delimiters {
  std::string_view begin;
  std::string_view end;
  Kind kind;
};
constexpr Delimiters kDelimiters[] = {
    {"<!--", "-->", Kind::kComment},
    {"<![CDATA[", "]]>", Kind::kOther},
    {"<?", "?>", Kind::kOther},
    {"<!", ">", Kind::kOther},
};

class Scanner {
 public:
  explicit Scanner(std::string_view content) : content_(content) {}

  std::vector<MarkupPiece> Scan() && {
    while (at_ < content_.size()) {
      MarkupPiece piece = Next();
      at_ = piece.range.end;
      pieces_.push_back(piece);
    }
    return std::move(pieces_);
  }

 private:
  [[nodiscard]] MarkupPiece Next() const {
    if (content_[at_] != '<') {
      return {.range = {at_, std::min(content_.find('<', at_), content_.size())}};
    }
    for (const Delimiters& delimiters : kDelimiters) {
      if (content_.substr(at_).starts_with(delimiters.begin)) return Delimited(delimiters);
    }
    return Tag();
  }

  // Without its end, it ends with its line: the rest of the document is more likely to be meant as
  // it stands.
  [[nodiscard]] MarkupPiece Delimited(const Delimiters& delimiters) const {
    MarkupPiece piece{.kind = delimiters.kind};
    const std::size_t end = content_.find(delimiters.end, at_ + delimiters.begin.size());
    piece.is_complete = end != kNowhere;
    piece.range = {at_, piece.is_complete ? end + delimiters.end.size() : LineEnd(at_)};
    return piece;
  }

  [[nodiscard]] MarkupPiece Tag() const {
    const bool is_end = content_.substr(at_).starts_with("</");
    MarkupPiece piece{.kind = is_end ? Kind::kEndTag : Kind::kStartTag};
    const std::size_t begin = at_ + (is_end ? 2 : 1);
    piece.name = {begin, FindNameEnd(content_, begin)};
    const std::size_t end = FindTagEnd(piece.name.end);
    piece.is_complete = content_.substr(end).starts_with('>') && !piece.name.IsEmpty();
    piece.range = {at_, piece.is_complete ? end + 1 : UnfinishedEnd(piece.name.end, end)};
    if (piece.is_complete && !is_end && content_[end - 1] == '/') piece.kind = Kind::kEmptyTag;
    return piece;
  }

  // Returns the first ">" or "<" that is not in quotes, or the end. Quotes that are not closed
  // before the next "<" count for nothing.
  [[nodiscard]] std::size_t FindTagEnd(std::size_t at) const {
    for (; at < content_.size(); ++at) {
      const char c = content_[at];
      if (c == '<' || c == '>') return at;
      if (c != '"' && c != '\'') continue;
      const std::size_t stop = content_.find_first_of(c == '"' ? "\"<" : "'<", at + 1);
      if (stop == kNowhere) return content_.size();
      if (content_[stop] == '<') return stop;
      at = stop;
    }
    return content_.size();
  }

  // An unfinished tag does not take the blanks between it and the next markup, nor the lines that
  // follow: they may be typed next.
  [[nodiscard]] std::size_t UnfinishedEnd(std::size_t name_end, std::size_t end) const {
    end = std::max(name_end, std::min(end, LineEnd(name_end)));
    while (end > name_end && IsXmlBlank(content_[end - 1])) --end;
    return std::max(end, at_ + 1);
  }

  [[nodiscard]] std::size_t LineEnd(std::size_t at) const {
    return std::min(content_.find_first_of("\r\n", at), content_.size());
  }

  std::string_view content_;
  std::size_t at_ = 0;
  std::vector<MarkupPiece> pieces_;
};

}  // namespace

std::vector<MarkupPiece> ScanMarkup(std::string_view content) { return Scanner(content).Scan(); }

std::vector<MarkupAttribute> ScanAttributes(std::string_view content, const MarkupPiece& tag) {
  std::vector<MarkupAttribute> attributes;
  content = content.substr(0, tag.range.end);
  std::size_t at = tag.name.end;
  while ((at = content.find_first_not_of(kBlanks, at)) != kNowhere) {
    const std::size_t end = FindNameEnd(content, at);
    if (end == at) {
      ++at;  // "/", ">" or a stray character
      continue;
    }
    MarkupAttribute attribute{.name = {at, end}};
    at = content.find_first_not_of(kBlanks, end);
    if (at != kNowhere && content[at] == '=') {
      const std::size_t quote = content.find_first_not_of(kBlanks, at + 1);
      at = std::min(quote, content.size());
      if (quote != kNowhere && (content[quote] == '"' || content[quote] == '\'')) {
        const std::size_t close = content.find(content[quote], quote + 1);
        attribute.has_value = true;
        attribute.is_complete = close != kNowhere;
        attribute.value = {quote + 1, std::min(close, content.size())};
        at = attribute.value.end + (attribute.is_complete ? 1 : 0);
      }
    }
    attributes.push_back(attribute);
    if (at == kNowhere) break;
  }
  return attributes;
}

}  // namespace vexor
