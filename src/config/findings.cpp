#include "config/findings.h"

#include <algorithm>
#include <utility>

namespace vexor {

namespace {

// Every finding below an element holds its name.
constexpr std::size_t kLongestName = 100;

}  // namespace

std::string ShortenName(std::string_view name) {
  return std::string(name.substr(0, kLongestName)).append(name.size() > kLongestName ? "..." : "");
}

std::string JoinPath(const std::string& parent, std::string_view name) {
  const bool is_section = parent.empty() || parent == "GLOBALPM" ||
                          parent == "GLOBALCONFIGURATION" || parent == "TEST_CONTROL_CFG" ||
                          parent == "WORKLOADS";
  return is_section ? ShortenName(name) : parent + "/" + ShortenName(name);
}

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

std::vector<Finding> Findings::TakeSorted() && {
  std::ranges::stable_sort(findings_, {}, &Finding::line);
  return std::move(findings_);
}

}  // namespace vexor
