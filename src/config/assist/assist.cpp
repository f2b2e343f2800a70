#include "vexor/config/assist.h"

#include <algorithm>
#include <utility>

#include "config/assist/typed_document.h"
#include "config/tables/sections.h"
#include "config/texts/word_list.h"
#include "config/texts/xml_characters.h"

namespace vexor {
namespace {

using Kind = MarkupPiece::Kind;

TextRange ToRange(SourceRange range) { return {range.begin, range.end}; }

bool Contains(SourceRange range, std::size_t at) { return range.begin <= at && at < range.end; }

// Returns the element at the place, and the range of the name or the text that the place is in.
struct Spot {
  std::size_t element = 0;  // 0 for none
  SourceRange range;
};

Spot FindSpot(const TypedDocument& document, std::size_t at) {
  // The piece that holds the byte behind the place.
  const std::size_t index = document.PieceBefore(at + 1);
  if (index == document.pieces().size()) return {};
  const TypedDocument::Piece& piece = document.pieces()[index];
  if (piece.node == 0 || !document[piece.node].IsElement()) return {};
  const SourceRange text = document.TextRangeOf(piece.node);
  if (Contains(text, at)) return {piece.node, text};
  if (!piece.markup.IsTag()) return {};
  const bool is_end = piece.markup.kind == Kind::kEndTag;
  return {piece.node, is_end ? piece.markup.name : document.NameOf(piece.node)};
}

const OptionInfo* FindOption(const std::vector<OptionInfo>& options, std::string_view path) {
  const auto option = std::ranges::find(options, path, &OptionInfo::path);
  return option == options.end() ? nullptr : &*option;
}

// Returns the text on one line, at most so many bytes of it.
std::string Shorten(std::string_view text) {
  std::size_t size = std::min<std::size_t>(text.size(), 60);
  const auto is_inner = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  while (size > 0 && size < text.size() && is_inner(text[size])) --size;
  std::string line(text.substr(0, size));
  std::ranges::replace_if(line, IsXmlBlank, ' ');
  return size < text.size() ? line + "..." : line;
}

}  // namespace

std::optional<ElementInfo> FindElementAt(std::string_view content, std::size_t at) {
  const TypedDocument document(content);
  const Spot spot = FindSpot(document, std::min(at, content.size()));
  if (spot.element == 0) return std::nullopt;
  const TypedNode& node = document[spot.element];
  ElementInfo info{.range = ToRange(spot.range),
                   .name = std::string(document.TextOf(document.NameOf(spot.element))),
                   .path = document.PathOf(spot.element)};
  if (node.model != nullptr) {
    info.about = node.model->about;
    info.stands_for = JoinWithCommas(node.model->currents);
  }
  const bool is_root = node.model != nullptr && node.parent == 0;
  if (is_root) info.path = NameOf(Section::kRoot);
  if (info.path.empty()) return std::nullopt;
  const std::vector<OptionInfo> options = GetOptions();
  const OptionInfo* const option = FindOption(options, info.path);
  if (option == nullptr || document.HoldsElements(spot.element)) return info;
  info.option = *option;
  info.about = option->about;
  info.text = document.ReadText(document.TextRangeOf(spot.element));
  info.fault = CheckOptionText(*option, info.text);
  info.meaning = DescribeText(option->syntax.name, info.text);
  return info;
}

std::vector<OutlineItem> OutlineText(std::string_view content) {
  const TypedDocument document(content);
  std::vector<OutlineItem> items;
  for (std::size_t i = 1; i < document.nodes().size(); ++i) {
    const TypedNode& node = document[i];
    OutlineItem& item = items.emplace_back();
    item.range = ToRange(node.range);
    item.name_range = item.range;
    item.depth = node.depth;
    item.is_comment = !node.IsElement();
    if (item.is_comment) continue;
    const SourceRange name = document.NameOf(i);
    item.name = document.TextOf(name.IsEmpty() ? node.piece.name : name);
    item.name_range = ToRange(name.IsEmpty() ? node.piece.name : name);
    item.holds_elements = document.HoldsElements(i);
    if (!item.holds_elements) item.text = Shorten(document.TextOf(document.TextRangeOf(i)));
  }
  return items;
}

}  // namespace vexor
