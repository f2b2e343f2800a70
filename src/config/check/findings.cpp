#include "config/check/findings.h"

#include <algorithm>
#include <utility>

namespace vexor {

Finding& Findings::Add(FindingKind kind, int line, std::string path, std::string_view text,
                       std::string what) {
  const FindingRow& row = GetFindingRow(kind);
  Finding& finding = findings_.emplace_back();
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
  return Add(kind, at.GetLineNum(), path, text, std::move(what));
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
  for (const FindingRow& row : kFindingKinds) {
    codes.push_back({row.code, row.title, row.about, row.severity});
  }
  return codes;
}

}  // namespace vexor
