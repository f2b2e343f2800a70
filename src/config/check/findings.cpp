#include "config/check/findings.h"

#include <algorithm>
#include <utility>

#include "config/file/source_tree.h"
#include "config/tables/sections.h"
#include "util/text.h"

namespace vexor {
namespace {

SourceRange TrimRange(const SourceTree& tree, SourceRange range) {
  const std::string_view trimmed = TrimSpace(tree.TextOf(range));
  if (trimmed.empty()) return range;
  range.begin = static_cast<std::size_t>(trimmed.data() - tree.content().data());
  range.end = range.begin + trimmed.size();
  return range;
}

// Returns the part of an element that a finding is about.
SourceRange FindPartOfElement(const SourceTree& tree, std::size_t element, const Finding& finding) {
  const auto name = tree.FindAttribute(element, "name");
  const auto value = tree.FindAttribute(element, "val");
  const std::string_view tag = tree.TextOf(tree.NameOf(element));
  const bool is_argument = tag == kArgumentElement && name.has_value();
  if (finding.mend == Mend::kName || finding.mend == Mend::kMove) {
    return is_argument && finding.mend == Mend::kName ? name->value : tree.NameOf(element);
  }
  if (finding.code == GetFindingRow(FindingKind::kUnknownAttribute).code) {
    const auto attribute = tree.FindAttribute(element, finding.text);
    if (attribute) return TrimRange(tree, attribute->range);
  }
  if (is_argument && value && finding.mend == Mend::kText && !value->value.IsEmpty()) {
    return value->value;
  }
  const std::size_t text = tree.TextNodeOf(element);
  const bool is_about_text =
      finding.mend == Mend::kText ||
      (text != 0 && TrimSpace(tree.TextOf(tree[text].range)) == finding.text);
  if (text != 0 && is_about_text) return TrimRange(tree, tree[text].range);
  return tree.NameOf(element);
}

SourceRange FindFaultyPart(const SourceTree& tree, std::size_t node, const Finding& finding) {
  if (tree[node].kind != SourceNode::Kind::kElement) return TrimRange(tree, tree[node].range);
  return FindPartOfElement(tree, node, finding);
}

}  // namespace

Finding& Findings::Add(FindingKind kind, int line, std::string path, std::string_view text,
                       std::string what) {
  const FindingRow& row = GetFindingRow(kind);
  Finding& finding = findings_.emplace_back();
  nodes_.push_back(nullptr);
  finding.line = line;
  finding.path = std::move(path);
  finding.severity = row.severity;
  finding.text = text;
  finding.what = std::move(what);
  finding.code = row.code;
  finding.mend = row.mend;
  return finding;
}

Finding& Findings::Add(FindingKind kind, const tinyxml2::XMLNode& at, const std::string& path,
                       std::string_view text, std::string what) {
  Finding& finding = Add(kind, at.GetLineNum(), path, text, std::move(what));
  nodes_.back() = &at;
  return finding;
}

void Findings::Locate(std::string_view content, const tinyxml2::XMLDocument& document) {
  if (findings_.empty()) return;
  const SourceTree strict(content);
  // A strict parser ends at a "&" that is not escaped. With another character in its place, it goes
  // on, and all places are the same.
  std::string hidden;
  if (!strict.IsWhole()) {
    hidden = content;
    std::ranges::replace(hidden, '&', '_');
  }
  const SourceTree lenient(hidden);
  const SourceTree& tree = strict.IsWhole() || strict.size() >= lenient.size() ? strict : lenient;
  const SourceNodes numbers(document, tree);
  for (std::size_t i = 0; i < findings_.size(); ++i) {
    const std::size_t node = nodes_[i] == nullptr ? 0 : numbers.Find(nodes_[i]);
    if (node == 0) continue;
    const SourceRange range = FindFaultyPart(tree, node, findings_[i]);
    findings_[i].at = range.begin;
    findings_[i].size = range.size();
  }
  SetColumns(content, findings_);
}

// One pass over the content: a file may have many findings on one very long line.
void SetColumns(std::string_view content, std::vector<Finding>& findings) {
  std::vector<Finding*> located;
  for (Finding& finding : findings) {
    if (finding.size > 0) located.push_back(&finding);
  }
  std::ranges::sort(located, {}, &Finding::at);
  std::size_t at = 0;
  int line = 1;
  int column = 1;
  for (Finding* const finding : located) {
    for (; at < finding->at; ++at) {
      const auto byte = static_cast<unsigned char>(content[at]);
      const bool continues = (byte & 0xC0U) == 0x80;  // a character of UTF-8
      column = byte == '\n' ? 1 : column + (continues ? 0 : 1);
      line += byte == '\n' ? 1 : 0;
    }
    finding->column = column;
    finding->line = line;  // a text may begin below the tag of its element
  }
}

std::vector<Finding> Findings::Sorted() && {
  for (Finding& finding : findings_) {
    const bool is_sure = !finding.suggestion.empty() || !finding.belongs_in.empty();
    if (!is_sure) finding.mend = Mend::kNone;
  }
  std::ranges::stable_sort(findings_, {}, &Finding::line);
  return std::move(findings_);
}

std::vector<FindingCode> GetFindingCodes() {
  std::vector<FindingCode> codes;
  codes.reserve(kFindingKinds.size());
  for (const FindingRow& row : kFindingKinds) {
    codes.push_back({row.code, row.title, row.about, row.severity, !row.ends_reading});
  }
  return codes;
}

}  // namespace vexor
