#include "config/assist/typed_document.h"

#include <tinyxml2.h>

#include <algorithm>

#include "config/check/shared_model.h"
#include "config/model/element_path.h"
#include "config/tables/sections.h"
#include "util/text.h"

namespace vexor {

using Content = ElementModel::Content;
using Kind = MarkupPiece::Kind;

namespace {

constexpr std::string_view kArgument = "arg";

bool HoldsText(const ElementModel* model) { return model != nullptr && !model->HoldsElements(); }

}  // namespace

TypedDocument::TypedDocument(std::string_view content) : content_(content) {
  nodes_.push_back({.range = {0, content.size()}, .content = {0, content.size()}});
  has_elements_.push_back(false);
  open_ = {0};
  const std::vector<MarkupPiece> scanned = ScanMarkup(content);
  pieces_.reserve(scanned.size());
  nodes_.reserve(scanned.size() / 2);
  for (const MarkupPiece& markup : scanned) {
    std::size_t node = open_.back();
    if (markup.kind == Kind::kComment) {
      node = nodes_.size();
      nodes_.push_back({.piece = markup,
                        .range = markup.range,
                        .parent = open_.back(),
                        .depth = nodes_[open_.back()].depth + 1});
      has_elements_.push_back(false);
    } else if (markup.IsTag()) {
      node = 0;
      const std::size_t count = nodes_.size();
      if (markup.is_complete && markup.kind != Kind::kEndTag) {
        Open(markup);
        node = count;
      } else if (markup.is_complete) {
        node = Close(markup);
      }
    }
    pieces_.push_back({markup, node, open_.back()});
  }
  while (open_.size() > 1) End(open_.back(), content_.size());
}

// A text that is followed by an element has lost its end tag: a text holds no elements.
void TypedDocument::Open(const MarkupPiece& tag) {
  while (HoldsText(nodes_[open_.back()].model)) End(open_.back(), tag.range.begin);
  const std::size_t parent = open_.back();
  has_elements_[parent] = true;
  nodes_.push_back({.piece = tag,
                    .range = tag.range,
                    .content = {tag.range.end, tag.range.end},
                    .parent = parent,
                    .depth = nodes_[parent].depth + 1,
                    .model = FindModel(parent, tag)});
  has_elements_.push_back(false);
  if (tag.kind == Kind::kEmptyTag) return;
  nodes_.back().is_closed = false;
  open_.push_back(nodes_.size() - 1);
}

// Ends the innermost open element of the name, and those in it, and returns it. If there is none,
// the tag counts for nothing.
std::size_t TypedDocument::Close(const MarkupPiece& tag) {
  constexpr std::size_t kMostLevels = 1000;  // keeps the time linear in hostile documents
  std::size_t level = open_.size() - 1;
  const std::size_t last = level - std::min(level, kMostLevels);
  const std::string_view name = TextOf(tag.name);
  while (level > last && TextOf(nodes_[open_[level]].piece.name) != name) --level;
  if (level == last) return 0;
  while (open_.size() > level + 1) End(open_.back(), tag.range.begin);
  const std::size_t node = open_.back();
  End(node, tag.range.begin);
  nodes_[node].is_closed = true;
  nodes_[node].range.end = tag.range.end;
  return node;
}

// Ends an element without an end tag.
void TypedDocument::End(std::size_t node, std::size_t at) {
  nodes_[node].content.end = nodes_[node].range.end = at;
  open_.pop_back();
}

const ElementModel* TypedDocument::FindModel(std::size_t parent, const MarkupPiece& tag) const {
  const std::string_view name = TextOf(tag.name);
  if (parent == 0) return name == vexor::NameOf(Section::kRoot) ? &GetSharedModel().root : nullptr;
  const ElementModel* const model = nodes_[parent].model;
  if (model == nullptr) return nullptr;
  if (model->content != Content::kArguments) return FindChild(*model, name);
  return name == kArgument ? FindChild(*model, TextOf(AttributeOf(tag, "name"))) : nullptr;
}

SourceRange TypedDocument::AttributeOf(const MarkupPiece& tag, std::string_view name) const {
  for (const MarkupAttribute& attribute : ScanAttributes(content_, tag)) {
    if (TextOf(attribute.name) == name) return attribute.value;
  }
  return {tag.name.end, tag.name.end};
}

std::size_t TypedDocument::PieceBefore(std::size_t at) const {
  const auto after = std::ranges::lower_bound(
      pieces_, at, {}, [](const Piece& piece) { return piece.markup.range.begin; });
  if (after == pieces_.begin()) return pieces_.size();
  return static_cast<std::size_t>(after - pieces_.begin()) - 1;
}

const ElementModel* TypedDocument::ParentModel(std::size_t element) const {
  return nodes_[nodes_[element].parent].model;
}

bool TypedDocument::IsArgument(std::size_t element) const {
  const ElementModel* const parent = ParentModel(element);
  return parent != nullptr && parent->content == Content::kArguments;
}

SourceRange TypedDocument::NameOf(std::size_t element) const {
  const MarkupPiece& tag = nodes_[element].piece;
  return IsArgument(element) ? AttributeOf(tag, "name") : tag.name;
}

SourceRange TypedDocument::TextRangeOf(std::size_t element) const {
  const TypedNode& node = nodes_[element];
  if (IsArgument(element)) return AttributeOf(node.piece, "val");
  const std::string_view content = TextOf(node.content);
  const std::string_view text = TrimSpace(content.substr(0, content.find('<')));
  if (text.empty()) return {node.content.begin, node.content.begin};
  const auto begin = static_cast<std::size_t>(text.data() - content_.data());
  return {begin, begin + text.size()};
}

std::string TypedDocument::ReadText(SourceRange range) const {
  std::string text(TextOf(range));
  if (text.find_first_of("&\r") == std::string::npos) return text;
  tinyxml2::XMLDocument document;
  const std::string element = "<A>" + text + "</A>";
  if (document.Parse(element.data(), element.size()) != tinyxml2::XML_SUCCESS) return text;
  const char* const read = document.RootElement()->GetText();
  return read == nullptr ? std::string() : read;
}

bool TypedDocument::HoldsElements(std::size_t element) const {
  const ElementModel* const model = nodes_[element].model;
  return has_elements_[element] || (model != nullptr && model->HoldsElements());
}

std::string TypedDocument::PathOf(std::size_t element) const {
  std::vector<std::string_view> names;
  for (; nodes_[element].parent != 0; element = nodes_[element].parent) {
    const ElementModel* const model = nodes_[element].model;
    const ElementModel* const parent = ParentModel(element);
    if (model != nullptr) {
      names.push_back(model->IsOlder() ? model->currents.front() : model->name);
    } else if (parent != nullptr && parent->content == Content::kTraces) {
      names.push_back(kTraceEntry);
    } else if (parent != nullptr && parent->content == Content::kPairs) {
      names.push_back(TextOf(nodes_[element].piece.name));
    } else {
      return {};
    }
  }
  if (nodes_[element].model == nullptr) return {};
  std::ranges::reverse(names);
  std::string path;
  for (const std::string_view name : names) path = JoinPath(path, name);
  return path;
}

}  // namespace vexor
