#include <iostream>

#include "check_output.h"
#include "findings.h"

namespace tools::vexorcfg {
namespace {

using vexor::Severity;

std::string_view CommandOf(Severity severity) {
  switch (severity) {
    case Severity::kNote:
      return "notice";
    case Severity::kWarning:
      return "warning";
    case Severity::kError:
      break;
  }
  return "error";
}

// Escapes what ends a message or, in `special`, the value of a property.
std::string Escape(std::string_view text, std::string_view special = "") {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string escaped;
  for (const char c : text) {
    const bool is_plain =
        c != '%' && c != '\r' && c != '\n' && special.find(c) == std::string_view::npos;
    if (is_plain) {
      escaped += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      escaped.append("%").append(1, kDigits[byte / 16U]).append(1, kDigits[byte % 16U]);
    }
  }
  return escaped;
}

std::string EscapeProperty(std::string_view text) { return Escape(text, ":,"); }

}  // namespace

void GithubOutput::Add(const CheckedFile& file) {
  const std::string place = "file=" + EscapeProperty(file.path);
  if (!file.failure.empty()) {
    std::cout << "::error " << place << "::" << Escape(file.failure) << '\n';
  }
  for (const vexor::Finding& finding : file.findings) {
    if (!IsShown(finding, arguments_)) continue;
    std::cout << "::" << CommandOf(finding.severity) << ' ' << place;
    if (finding.line > 0) std::cout << ",line=" << finding.line;
    if (finding.column > 0) {
      std::cout << ",col=" << finding.column;
      const End end = EndOf(finding, file.content);
      if (end.line == finding.line) std::cout << ",endColumn=" << end.column;
    }
    std::cout << ",title=" << finding.code << "::" << Escape(FormatFinding(finding)) << '\n';
  }
}

void GithubOutput::Finish(const CheckTotals& totals) { std::cout << totals.MakeVerdict() << '\n'; }

}  // namespace tools::vexorcfg
