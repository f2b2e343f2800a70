#include "config/edit/source_edits.h"

#include <algorithm>
#include <cassert>

#include "config/tables/sections.h"
#include "config/texts/xml_characters.h"
#include "util/text.h"

namespace vexor {
namespace {

using Kind = SourceNode::Kind;

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

}  // namespace

std::string ApplyEdits(std::string_view content, SourceEdits edits) {
  std::ranges::stable_sort(edits, {}, [](const SourceEdit& edit) { return edit.range.begin; });
  std::string result;
  std::size_t at = 0;
  for (const SourceEdit& edit : edits) {
    assert(edit.range.begin >= at);
    result.append(content.substr(at, edit.range.begin - at)).append(edit.text);
    at = edit.range.end;
  }
  return result.append(content.substr(at));
}

SourceEditor::SourceEditor(const SourceTree& tree) : tree_(tree), is_utf8_(tree.IsUtf8()) {
  assert(tree.IsWhole());
  const std::string_view content = tree.content();
  const std::size_t end = content.find('\n');
  if (end != std::string_view::npos && end > 0 && content[end - 1] == '\r') line_end_ = "\r\n";
  // The first indented element tells the unit, if it is one level deeper than its parent.
  for (std::size_t node = 1; node < tree.size(); ++node) {
    if (tree[node].kind != Kind::kElement || tree[node].parent == 0) continue;
    const std::string indent = IndentOf(node);
    const std::string outer = IndentOf(tree[node].parent);
    if (indent.size() <= outer.size() || !indent.starts_with(outer)) continue;
    unit_ = indent.substr(outer.size());
    break;
  }
}

// Characters that the file's encoding may lack are written as references.
std::string SourceEditor::Escape(std::string_view text, bool is_attribute) const {
  std::string escaped;
  while (!text.empty()) {
    const char c = text.front();
    Utf8Character character{.value = static_cast<unsigned char>(c), .size = 1};
    if (character.value > 127) character = DecodeUtf8(text);
    const std::string_view bytes = text.substr(0, std::max<std::size_t>(character.size, 1));
    text.remove_prefix(bytes.size());
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == '>') {
      escaped += "&gt;";
    } else if (is_attribute && (c == '"' || c == '\'')) {
      escaped += c == '"' ? "&quot;" : "&apos;";
    } else if (c == '\r' || (is_attribute && (c == '\n' || c == '\t'))) {
      escaped += c == '\r' ? "&#13;" : c == '\n' ? "&#10;" : "&#9;";
    } else if (c == '\n') {
      escaped += line_end_;
    } else if (character.value > 127 && character.size > 0 && !is_utf8_) {
      escaped += FormatHex("&#x", 2, character.value) + ";";
    } else {
      escaped += bytes;
    }
  }
  return escaped;
}

std::string SourceEditor::Print(const NewElement& element, const std::string& indent) const {
  if (element.is_argument) {
    return std::string("<").append(kArgumentElement) + " name=\"" + Escape(element.name, true) +
           "\" val=\"" + Escape(element.text, true) + "\"/>";
  }
  std::string printed = "<" + element.name;
  if (element.text.empty() && element.children.empty()) return printed + "/>";
  printed += ">" + Escape(element.text, false);
  for (const NewElement& child : element.children) {
    printed += line_end_ + indent + unit_ + Print(child, indent + unit_);
  }
  if (!element.children.empty()) printed += line_end_ + indent;
  return printed + "</" + element.name + ">";
}

std::size_t SourceEditor::LineBegin(std::size_t at) const {
  while (at > 0 && !IsLineEnd(tree_.content()[at - 1])) --at;
  return at;
}

// Returns the blanks at the begin of the node's line.
std::string SourceEditor::IndentOf(std::size_t node) const {
  const std::size_t begin = LineBegin(tree_[node].range.begin);
  std::size_t end = begin;
  while (IsBlank(tree_.content()[end])) ++end;
  return std::string(tree_.content().substr(begin, end - begin));
}

// Returns whether only blanks are before the place on its line.
bool SourceEditor::BeginsLine(std::size_t at) const {
  while (at > 0 && IsBlank(tree_.content()[at - 1])) --at;
  return at == 0 || IsLineEnd(tree_.content()[at - 1]);
}

// Returns the end of the comments that follow on the line of `at`, beginning with `node`: they
// belong to what stands before them.
std::size_t SourceEditor::SkipComments(std::size_t node, std::size_t at) const {
  for (; node != 0 && tree_[node].kind == Kind::kComment; node = tree_.NextSibling(node)) {
    const std::string_view comment = tree_.TextOf(tree_[node].range);
    const std::string_view between = tree_.TextOf({at, tree_[node].range.begin});
    if (std::ranges::any_of(between, IsLineEnd) || std::ranges::any_of(comment, IsLineEnd)) break;
    at = tree_[node].range.end;
  }
  return at;
}

// Replaces the whole content of an element.
SourceEdits SourceEditor::Fill(std::size_t element, std::string_view content) const {
  if (tree_.HasEndTag(element)) return {{tree_[element].content, std::string(content)}};
  const std::size_t end = tree_[element].range.end;
  std::size_t begin = end - 2;  // of "/>"
  while (IsBlank(tree_.content()[begin - 1])) --begin;
  const std::string name(tree_.TextOf(tree_.NameOf(element)));
  return {{{begin, end}, std::string(">").append(content).append("</" + name + ">")}};
}

SourceEdits SourceEditor::SetText(std::size_t element, std::string_view text, bool is_exact) const {
  const std::string escaped = Escape(text, false);
  if (tree_.FirstChild(element) == 0) {
    const bool is_unchanged = text.empty() && !tree_.HasEndTag(element);
    return is_unchanged ? SourceEdits{} : Fill(element, escaped);
  }
  const std::size_t node = tree_.TextNodeOf(element);
  if (node == 0) {
    const std::size_t begin = tree_[element].content.begin;
    return {{{begin, begin}, escaped}};
  }
  SourceRange range = tree_[node].range;
  if (tree_[node].kind == Kind::kText && !is_exact) {
    const std::string_view trimmed = TrimSpace(tree_.TextOf(range));
    range.begin = static_cast<std::size_t>(trimmed.data() - tree_.content().data());
    range.end = range.begin + trimmed.size();
  }
  return {{range, escaped}};
}

SourceEdits SourceEditor::SetAttribute(std::size_t element, std::string_view name,
                                       std::string_view value) const {
  const std::string escaped = Escape(value, true);
  if (const auto known = tree_.FindAttribute(element, name)) return {{known->value, escaped}};
  const std::vector<SourceAttribute> attributes = tree_.AttributesOf(element);
  const std::size_t at =
      attributes.empty() ? tree_.NameOf(element).end : attributes.back().range.end;
  return {{{at, at}, std::string(" ").append(name) + "=\"" + escaped + "\""}};
}

SourceEdits SourceEditor::Rename(std::size_t element, std::string_view name) const {
  SourceEdits edits = {{tree_.NameOf(element), std::string(name)}};
  if (tree_.HasEndTag(element)) edits.push_back({tree_.EndNameOf(element), std::string(name)});
  return edits;
}

SourceEdits SourceEditor::Remove(std::size_t node) const {
  const std::string_view content = tree_.content();
  SourceRange range = tree_[node].range;
  std::size_t end = range.end;
  while (end < content.size() && IsBlank(content[end])) ++end;
  if (BeginsLine(range.begin) && end < content.size() && IsLineEnd(content[end])) {
    range.begin = LineBegin(range.begin);
    range.end = end + (content.substr(end).starts_with("\r\n") ? 2 : 1);
  }
  return {{range, {}}};
}

template <class PrintAt>
SourceEdits SourceEditor::InsertPrinted(std::size_t parent, std::size_t sibling,
                                        const PrintAt& print) const {
  const std::size_t first = tree_.FirstChild(parent);
  const std::string outer = IndentOf(parent);
  if (sibling == 0 && first == 0) {
    const std::string inner = outer + unit_;
    return Fill(parent, line_end_ + inner + print(inner) + line_end_ + outer);
  }
  std::size_t neighbour = sibling;  // whose line and indentation the new element follows
  for (std::size_t node = first; neighbour == 0 && node != 0; node = tree_.NextSibling(node)) {
    if (tree_[node].kind == Kind::kElement || tree_.NextSibling(node) == 0) neighbour = node;
  }
  const std::size_t at = sibling != 0
                             ? SkipComments(tree_.NextSibling(sibling), tree_[sibling].range.end)
                             : SkipComments(first, tree_[parent].content.begin);
  if (!BeginsLine(tree_[neighbour].range.begin)) return {{{at, at}, print(outer)}};
  const std::string indent = IndentOf(neighbour);
  return {{{at, at}, line_end_ + indent + print(indent)}};
}

SourceEdits SourceEditor::Insert(std::size_t parent, std::size_t sibling,
                                 const NewElement& element) const {
  return InsertPrinted(parent, sibling,
                       [&](const std::string& indent) { return Print(element, indent); });
}

// Lines inside the element keep their indentation: they may be part of a text.
SourceEdits SourceEditor::InsertCopy(std::size_t sibling, std::size_t element,
                                     std::string_view name) const {
  SourceEdits renames = Rename(element, name);
  const SourceRange range = tree_[element].range;
  for (SourceEdit& edit : renames) {
    edit.range.begin -= range.begin;
    edit.range.end -= range.begin;
  }
  const std::string copy = ApplyEdits(tree_.TextOf(range), renames);
  return InsertPrinted(
      tree_[sibling].parent, sibling,
      [&copy](const std::string& /*indent*/) -> const std::string& { return copy; });
}

SourceEdits SourceEditor::Replace(SourceRange range, std::string_view text) const {
  return {{range, Escape(text, true)}};
}

SourceEdits SourceEditor::Move(std::size_t element, std::size_t parent, std::size_t sibling) const {
  const std::string copy(tree_.TextOf(tree_[element].range));
  SourceEdits edits =
      InsertPrinted(parent, sibling,
                    [&copy](const std::string& /*indent*/) -> const std::string& { return copy; });
  const SourceEdits removal = Remove(element);
  edits.insert(edits.end(), removal.begin(), removal.end());
  return edits;
}

}  // namespace vexor
