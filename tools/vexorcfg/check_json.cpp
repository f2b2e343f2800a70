#include <iostream>

#include "check_output.h"
#include "findings.h"

namespace tools::vexorcfg {
namespace {

using vexor::Mend;
using vexor::Severity;

std::string_view WordOf(Mend mend) {
  switch (mend) {
    case Mend::kNone:
      break;
    case Mend::kName:
      return "name";
    case Mend::kText:
      return "text";
    case Mend::kMove:
      return "move";
    case Mend::kXml:
      return "xml";
  }
  return "none";
}

Json MakeFinding(const vexor::Finding& finding) {
  return {{"line", finding.line},
          {"column", finding.column},
          {"at", finding.at},
          {"size", finding.size},
          {"severity", NameOf(finding.severity)},
          {"code", finding.code},
          {"path", finding.path},
          {"text", finding.text},
          {"what", finding.what},
          {"expected", finding.expected},
          {"suggestion", finding.suggestion},
          {"mend", WordOf(finding.mend)},
          {"belongs_in", finding.belongs_in}};
}

}  // namespace

void JsonOutput::Add(const CheckedFile& file) {
  Json json = {{"file", file.path}};
  if (!file.failure.empty()) json["failure"] = file.failure;
  json["findings"] = Json::array();
  for (const vexor::Finding& finding : file.findings) {
    if (IsShown(finding, arguments_)) json["findings"].push_back(MakeFinding(finding));
  }
  files_.push_back(std::move(json));
}

void JsonOutput::Finish(const CheckTotals& totals) {
  const Json document = {{"format", "vexorcfg check"},
                         {"version", 1},
                         {"status", static_cast<int>(totals.GetStatus())},
                         {"errors", totals.CountOf(Severity::kError)},
                         {"warnings", totals.CountOf(Severity::kWarning)},
                         {"notes", totals.CountOf(Severity::kNote)},
                         {"allowed", totals.Allowed()},
                         {"unread", totals.Unread()},
                         {"files", std::move(files_)}};
  std::cout << PrintJson(document, 2) << '\n';
}

}  // namespace tools::vexorcfg
