#include "findings.h"

#include "common/text_output.h"

namespace tools::vexorcfg {

std::string_view NameOf(vexor::Severity severity) {
  switch (severity) {
    case vexor::Severity::kNote:
      return "note";
    case vexor::Severity::kWarning:
      return "warning";
    case vexor::Severity::kError:
      break;
  }
  return "error";
}

std::string FormatFinding(const vexor::Finding& finding) {
  std::string line = OneLine(finding.path);
  const auto add = [&line](const std::string& part) {
    line.append(line.empty() ? "" : ": ").append(part);
  };
  const bool ends_in_text = ("/" + finding.path).ends_with("/" + finding.text);
  if (!finding.text.empty() && !ends_in_text) add(Quote(finding.text));
  add(finding.what);
  if (!finding.expected.empty()) line += ", expected " + finding.expected;
  const bool has_suggestion = !finding.suggestion.empty() && finding.suggestion != finding.expected;
  if (has_suggestion) line += "; did you mean " + Quote(finding.suggestion) + "?";
  return line;
}

}  // namespace tools::vexorcfg
