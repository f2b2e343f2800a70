#include "config/check/findings.h"

#include <algorithm>
#include <utility>

namespace vexor {

Finding& Findings::Add(Severity severity, int line, std::string path, std::string_view text,
                       std::string what) {
  Finding& finding = findings_.emplace_back();
  finding.line = line;
  finding.path = std::move(path);
  finding.severity = severity;
  finding.text = text;
  finding.what = std::move(what);
  return finding;
}

Finding& Findings::AddError(const tinyxml2::XMLNode& at, const std::string& path,
                            std::string_view text, std::string what) {
  return Add(Severity::kError, at.GetLineNum(), path, text, std::move(what));
}

Finding& Findings::AddWarning(const tinyxml2::XMLNode& at, const std::string& path,
                              std::string_view text, std::string what) {
  return Add(Severity::kWarning, at.GetLineNum(), path, text, std::move(what));
}

Finding& Findings::AddNote(const tinyxml2::XMLNode& at, const std::string& path,
                           std::string_view text, std::string what) {
  return Add(Severity::kNote, at.GetLineNum(), path, text, std::move(what));
}

std::vector<Finding> Findings::Sorted() && {
  std::ranges::stable_sort(findings_, {}, &Finding::line);
  return std::move(findings_);
}

}  // namespace vexor
