#include <algorithm>
#include <cassert>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <tuple>
#include <utility>

#include "config/edit/open_document.h"
#include "config/model/element_path.h"
#include "config/tables/finding_kinds.h"
#include "config/tables/sections.h"
#include "util/text.h"
#include "vexor/config/check.h"
#include "vexor/config/edit.h"

namespace vexor {
namespace {

using Kind = SourceNode::Kind;

constexpr CheckLimits kNoLimits{.most_bytes = std::numeric_limits<std::size_t>::max()};

// What an older version wrote is for MigrateText.
constexpr FindingKind kMigrated[] = {FindingKind::kOtherVersion, FindingKind::kOlderName,
                                     FindingKind::kIdleOlderName, FindingKind::kOlderTrace,
                                     FindingKind::kOlderSetting};

bool IsSure(const Finding& finding) {
  const bool is_migrated = std::ranges::any_of(
      kMigrated, [&finding](FindingKind kind) { return GetFindingRow(kind).code == finding.code; });
  return finding.mend != Mend::kNone && finding.column > 0 && !is_migrated &&
         finding.severity != Severity::kNote;
}

// A repair of one finding.
struct Repair {
  const Finding* finding = nullptr;
  SourceEdits edits;
  std::string what;
};

// Finds the repairs of a document.
class Repairer {
 public:
  explicit Repairer(std::string_view content) : tree_(content) {
    if (!tree_.IsWhole()) return;
    editor_.emplace(tree_);
    for (std::size_t node = 1; node < tree_.size(); ++node) {
      if (tree_[node].kind == Kind::kElement) names_.emplace(tree_.NameOf(node).begin, node);
    }
    document_ = std::make_unique<OpenDocument>(content);
  }

  // Returns a repair without edits if there is none.
  [[nodiscard]] Repair Find(const Finding& finding) const;

 private:
  [[nodiscard]] std::size_t ElementAt(std::size_t at) const;
  [[nodiscard]] SourceEdits Rename(const Finding& finding, std::size_t element) const;
  [[nodiscard]] SourceEdits Replace(const Finding& finding, std::size_t element) const;
  [[nodiscard]] SourceEdits Move(const Finding& finding, std::size_t element) const;

  SourceTree tree_;
  std::optional<SourceEditor> editor_;  // none if the XML has to be mended first
  std::unique_ptr<OpenDocument> document_;
  std::map<std::size_t, std::size_t> names_;  // the elements by the begin of their names
};

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

// Returns a path without the numbers of entries, which change with the entries before them.
std::string WithoutNumbers(std::string_view path) {
  std::string plain;
  for (std::size_t open = path.find('['); open != std::string_view::npos; open = path.find('[')) {
    plain.append(path.substr(0, open));
    path.remove_prefix(std::min(path.find(']', open), path.size() - 1) + 1);
  }
  return plain.append(path);
}

// The faults of a document, by code, path and text: what a repair must not add to.
using Faults = std::multiset<std::tuple<std::string_view, std::string, std::string>>;

Faults ListFaults(const std::vector<Finding>& findings) {
  Faults faults;
  for (const Finding& finding : findings) {
    if (finding.severity == Severity::kNote) continue;
    faults.emplace(finding.code, WithoutNumbers(finding.path), finding.text);
  }
  return faults;
}

// Returns the path of the element after its repair.
std::string NewPath(const Finding& finding) {
  std::string path = WithoutNumbers(finding.path);
  const std::size_t slash = path.rfind('/');
  if (finding.mend == Mend::kMove) {
    const std::string name = path.substr(slash == std::string::npos ? 0 : slash + 1);
    const bool is_root = finding.belongs_in == NameOf(Section::kRoot);
    return JoinPath(is_root ? "" : finding.belongs_in, name);
  }
  if (finding.mend != Mend::kName) return path;
  return JoinPath(slash == std::string::npos ? "" : path.substr(0, slash), finding.suggestion);
}

// Returns whether the repairs removed their findings and added none, except in elements that were
// not read before and now are.
bool AreBetter(std::span<const Repair> repairs, const Faults& before, const Faults& after) {
  for (const Repair& repair : repairs) {
    const Finding& finding = *repair.finding;
    const Faults::key_type key{finding.code, WithoutNumbers(finding.path), finding.text};
    if (after.count(key) >= before.count(key)) return false;
  }
  // Of one line, the checker reports only the first unescaped character.
  const bool escapes = std::ranges::any_of(
      repairs, [](const Repair& repair) { return repair.finding->mend == Mend::kXml; });
  return std::ranges::all_of(after, [&](const Faults::key_type& fault) {
    if (after.count(fault) <= before.count(fault)) return true;
    const bool is_next = std::get<0>(fault) == GetFindingRow(FindingKind::kUnescaped).code;
    if (escapes && is_next) return true;
    // The name is taken.
    if (std::get<0>(fault) == GetFindingRow(FindingKind::kRepeatedElement).code) return false;
    return std::ranges::any_of(repairs, [&fault](const Repair& repair) {
      const bool is_element =
          repair.finding->mend == Mend::kName || repair.finding->mend == Mend::kMove;
      const std::string& path = std::get<1>(fault);
      return is_element && (path + "/").starts_with(NewPath(*repair.finding) + "/");
    });
  });
}

// Returns the text that a repair replaces.
std::string ShownText(const Finding& finding) {
  return finding.mend == Mend::kXml ? finding.text.substr(0, finding.size) : finding.text;
}

// Mends a text in rounds, because one repair may make another possible.
class Fixer {
 public:
  explicit Fixer(std::string_view content) {
    result_.content = content;
    findings_ = CheckXMLConfigText(content, kNoLimits);
  }

  EditedText Fix() && {
    constexpr int kMostRounds = 1000;  // each removes a finding
    for (int round = 0; round < kMostRounds && FixOnce(); ++round) continue;
    return std::move(result_);
  }

 private:
  bool FixOnce();
  bool Apply(std::span<const Repair> repairs);

  EditedText result_;
  std::vector<Finding> findings_;  // of the text so far
};

// Applies the repairs if they make the text better.
bool Fixer::Apply(std::span<const Repair> repairs) {
  SourceEdits edits;
  for (const Repair& repair : repairs) {
    edits.insert(edits.end(), repair.edits.begin(), repair.edits.end());
  }
  std::string content = ApplyEdits(result_.content, edits);
  std::vector<Finding> findings = CheckXMLConfigText(content, kNoLimits);
  if (!AreBetter(repairs, ListFaults(findings_), ListFaults(findings))) return false;
  for (const Repair& repair : repairs) {
    const Finding& finding = *repair.finding;
    const bool is_moved = finding.mend == Mend::kMove;
    result_.changes.push_back({.line = finding.line,
                               .path = finding.path,
                               .what = repair.what,
                               .before = is_moved ? std::string() : ShownText(finding),
                               .after = finding.suggestion});
  }
  result_.content = std::move(content);
  findings_ = std::move(findings);
  return true;
}

// The ranges that the edits of a round change.
class TakenRanges {
 public:
  // Takes the ranges of the edits and returns true, or returns false if one of them touches a range
  // that is taken.
  bool Take(const SourceEdits& edits) {
    if (std::ranges::any_of(edits,
                            [this](const SourceEdit& edit) { return Touches(edit.range); })) {
      return false;
    }
    for (const SourceEdit& edit : edits) ends_[edit.range.begin] = edit.range.end;
    return true;
  }

 private:
  [[nodiscard]] bool Touches(const SourceRange& range) const {
    const auto after = ends_.upper_bound(range.end);
    return after != ends_.begin() && std::prev(after)->second >= range.begin;
  }

  std::map<std::size_t, std::size_t> ends_;  // by begin
};

// Returns whether anything was mended.
bool Fixer::FixOnce() {
  const std::string content = result_.content;
  const std::vector<Finding> findings = findings_;
  const Repairer repairer(content);
  std::vector<Repair> repairs;
  TakenRanges taken;
  for (const Finding& finding : findings) {
    if (!IsSure(finding)) continue;
    Repair repair = repairer.Find(finding);
    if (repair.edits.empty() || !taken.Take(repair.edits)) continue;
    repairs.push_back(std::move(repair));
  }
  if (repairs.empty()) return false;
  if (Apply(repairs)) return true;
  // One of them makes something else worse: the first that does not is applied, and the next round
  // finds the others again.
  constexpr std::size_t kMostTries = 100;
  for (std::size_t i = 0; i < repairs.size() && i < kMostTries; ++i) {
    if (Apply(std::span(repairs).subspan(i, 1))) return true;
  }
  return false;
}

}  // namespace

EditedText FixText(std::string_view content) { return Fixer(content).Fix(); }

}  // namespace vexor
