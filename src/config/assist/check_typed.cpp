#include <algorithm>

#include "config/assist/closed_text.h"
#include "config/assist/typed_document.h"
#include "config/check/findings.h"
#include "config/tables/finding_kinds.h"
#include "config/tables/sections.h"
#include "syntax/nearest.h"
#include "vexor/config/assist.h"

namespace vexor {
namespace {

// What is missing may be typed next.
constexpr FindingKind kMissing[] = {FindingKind::kNoVersion, FindingKind::kDefaultsOnly,
                                    FindingKind::kMissingOptions, FindingKind::kMissingTimes};

bool IsMissing(const Finding& finding) {
  return std::ranges::any_of(
      kMissing, [&finding](FindingKind kind) { return GetFindingRow(kind).code == finding.code; });
}

bool EndsReading(const Finding& finding) { return FindFindingRow(finding.code)->ends_reading; }

}  // namespace

bool MayBeConfiguration(std::string_view content) {
  constexpr std::size_t kMostSearched = 65536;
  const std::string_view begin = content.substr(0, kMostSearched);
  const std::vector<MarkupPiece> pieces = ScanMarkup(begin);
  const auto root = std::ranges::find_if(pieces, [](const MarkupPiece& piece) {
    return piece.IsTag() && piece.is_complete && piece.kind != MarkupPiece::Kind::kEndTag;
  });
  if (root == pieces.end()) return true;
  const SourceRange name = root->name;
  return CountEdits(begin.substr(name.begin, name.size()), NameOf(Section::kRoot)) <= 1;
}

std::vector<Finding> CheckTypedText(std::string_view content, const CheckLimits& limits) {
  std::vector<Finding> findings = CheckXMLConfigText(content, limits);
  const bool is_read = std::ranges::none_of(findings, EndsReading);
  if (is_read || content.size() > limits.most_bytes) return findings;
  const ClosedText closed{TypedDocument(content)};
  std::vector<Finding> behind = CheckXMLConfigText(closed.text(), limits);
  if (std::ranges::any_of(behind, EndsReading)) return findings;
  std::erase_if(findings, [](const Finding& finding) { return !EndsReading(finding); });
  for (Finding& finding : behind) {
    const auto begin = closed.ToOriginal(finding.at);
    const auto end = closed.ToOriginal(finding.at + finding.size);
    if (IsMissing(finding) || !begin || !end) continue;
    finding.at = *begin;
    finding.size = *end - *begin;
    findings.push_back(std::move(finding));
  }
  SetColumns(content, findings);
  std::ranges::stable_sort(findings, {}, &Finding::line);
  return findings;
}

}  // namespace vexor
