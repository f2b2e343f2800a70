#include <algorithm>
#include <cassert>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <tuple>
#include <utility>

#include "config/edit/repairer.h"
#include "config/model/element_path.h"
#include "config/tables/finding_kinds.h"
#include "config/tables/sections.h"
#include "util/text.h"
#include "vexor/config/check.h"
#include "vexor/config/edit.h"

namespace vexor {
namespace {

constexpr CheckLimits kNoLimits{.most_bytes = std::numeric_limits<std::size_t>::max()};

bool IsSure(const Finding& finding) {
  return finding.mend != Mend::kNone && finding.column > 0 && !IsOfOlderVersion(finding) &&
         finding.severity != Severity::kNote;
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
