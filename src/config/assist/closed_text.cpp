#include "config/assist/closed_text.h"

#include <algorithm>

#include "config/texts/xml_characters.h"

namespace vexor {
namespace {

using Kind = MarkupPiece::Kind;

bool IsLost(const TypedDocument::Piece& piece) {
  const bool ends_nothing = piece.markup.kind == Kind::kEndTag && piece.node == 0;
  return !piece.markup.is_complete || ends_nothing;
}

}  // namespace

ClosedText::ClosedText(const TypedDocument& document) {
  // The elements without an end tag, the one that ends first at the back; of those that end at one
  // place, the inner one, which has the larger number.
  std::vector<std::size_t> unclosed;
  for (std::size_t i = 1; i < document.nodes().size(); ++i) {
    if (!document[i].is_closed) unclosed.push_back(i);
  }
  std::ranges::sort(unclosed, [&document](std::size_t a, std::size_t b) {
    return std::pair(document[a].range.end, b) > std::pair(document[b].range.end, a);
  });
  for (const TypedDocument::Piece& piece : document.pieces()) {
    const SourceRange range = piece.markup.range;
    AddEndTags(document, range.begin, unclosed);
    const std::size_t begin = text_.size();
    text_ += document.TextOf(range);
    if (!IsLost(piece)) continue;
    const auto lost = text_.begin() + static_cast<std::ptrdiff_t>(begin);
    std::replace_if(
        lost, text_.end(), [](char c) { return !IsXmlBlank(c); }, ' ');
  }
  AddEndTags(document, document.content().size(), unclosed);
}

void ClosedText::AddEndTags(const TypedDocument& document, std::size_t at,
                            std::vector<std::size_t>& unclosed) {
  while (!unclosed.empty() && document[unclosed.back()].range.end <= at) {
    const std::size_t begin = text_.size();
    text_.append("</").append(document.TextOf(document[unclosed.back()].piece.name)).append(">");
    insertions_.push_back({at, begin, text_.size() - begin});
    unclosed.pop_back();
  }
}

void ClosedText::HideReferences() { std::ranges::replace(text_, '&', '_'); }

std::size_t ClosedText::FromOriginal(std::size_t at) const {
  std::size_t added = 0;
  for (const Insertion& insertion : insertions_) {
    if (insertion.original <= at) added += insertion.size;
  }
  return at + added;
}

std::optional<std::size_t> ClosedText::ToOriginal(std::size_t at) const {
  std::size_t added = 0;
  for (const Insertion& insertion : insertions_) {
    if (at <= insertion.begin) break;
    if (at < insertion.begin + insertion.size) return std::nullopt;
    added += insertion.size;
  }
  return at - added;
}

}  // namespace vexor
