#include "config/edit/repairer.h"

#include <algorithm>
#include <iterator>

#include "config/tables/finding_kinds.h"
#include "config/tables/sections.h"
#include "util/text.h"

namespace vexor {
namespace {

using Kind = SourceNode::Kind;

// What an older version wrote is for MigrateText.
constexpr FindingKind kMigrated[] = {FindingKind::kOtherVersion, FindingKind::kOlderName,
                                     FindingKind::kIdleOlderName, FindingKind::kOlderTrace,
                                     FindingKind::kOlderSetting};

}  // namespace

bool IsOfOlderVersion(const Finding& finding) {
  return std::ranges::any_of(
      kMigrated, [&finding](FindingKind kind) { return GetFindingRow(kind).code == finding.code; });
}

Repairer::Repairer(std::string_view content) : tree_(content) {
  if (!tree_.IsWhole()) return;
  editor_.emplace(tree_);
  for (std::size_t node = 1; node < tree_.size(); ++node) {
    if (tree_[node].kind == Kind::kElement) names_.emplace(tree_.NameOf(node).begin, node);
  }
  document_ = std::make_unique<OpenDocument>(content);
}

Repair Repairer::Find(const Finding& finding) const {
  const SourceRange range{finding.at, finding.at + finding.size};
  if (finding.mend == Mend::kXml) {
    return {&finding, {{range, finding.suggestion}}, "escaped"};
  }
  if (!editor_) return {};
  const std::size_t element = ElementAt(finding.at);
  if (element == 0) return {};
  switch (finding.mend) {
    case Mend::kName:
      return {&finding, Rename(finding, element), "renamed"};
    case Mend::kText:
      return {&finding, Replace(finding, element), "corrected"};
    case Mend::kMove:
      return {&finding, Move(finding, element), "moved into " + finding.belongs_in};
    case Mend::kNone:
    case Mend::kXml:
      break;
  }
  return {};
}

// Returns the last element that begins before the place.
std::size_t Repairer::ElementAt(std::size_t at) const {
  auto after = names_.upper_bound(at);
  return after == names_.begin() ? 0 : std::prev(after)->second;
}

SourceEdits Repairer::Rename(const Finding& finding, std::size_t element) const {
  if (tree_.NameOf(element).begin == finding.at) {
    return editor_->Rename(element, finding.suggestion);
  }
  return editor_->Replace({finding.at, finding.at + finding.size}, finding.suggestion);
}

SourceEdits Repairer::Replace(const Finding& finding, std::size_t element) const {
  const std::size_t text = tree_.TextNodeOf(element);
  const bool is_text =
      text != 0 && tree_[text].range.begin <= finding.at && finding.at < tree_[text].range.end;
  if (!is_text) {
    return editor_->Replace({finding.at, finding.at + finding.size}, finding.suggestion);
  }
  // A switch is on only for "true" without white space.
  const bool is_exact = TrimSpace(tree_.TextOf(tree_[text].range)) == finding.suggestion ||
                        finding.suggestion == "true";
  return editor_->SetText(element, finding.suggestion, is_exact);
}

// An element is moved only into one that exists: a new section would change the defaults of its
// other options.
SourceEdits Repairer::Move(const Finding& finding, std::size_t element) const {
  if (!document_->error().empty()) return {};
  const ElementModel* model = &document_->model();
  std::size_t parent = document_->Root();
  if (finding.belongs_in != NameOf(Section::kRoot)) {
    const ResolvedPath path = ResolvePath(finding.belongs_in, document_->model());
    if (path.steps.empty() || path.steps.back().model == nullptr) return {};
    parent = document_->FindElement(path);
    model = path.steps.back().model;
  }
  const std::string_view name = tree_.TextOf(tree_.NameOf(element));
  const ElementModel* const child = FindChild(*model, name);
  const bool is_inside = element < parent && parent < tree_[element].next;
  if (parent == 0 || is_inside || child == nullptr) return {};
  const PathStep step{.model = child, .name = std::string(name)};
  if (!child->repeats && document_->FindStep(parent, *model, step) != 0) return {};
  return editor_->Move(element, parent, document_->FindSibling(parent, *model, name));
}

}  // namespace vexor
