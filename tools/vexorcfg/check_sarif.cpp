#include <algorithm>
#include <filesystem>
#include <iostream>

#include "check_output.h"
#include "common/files.h"
#include "common/program.h"
#include "common/uri.h"
#include "findings.h"
#include "vexor/util/version.h"

namespace tools::vexorcfg {
namespace {

using vexor::Finding;
using vexor::FindingCode;

Json MakeRegion(const CheckedFile& file, const Finding& finding) {
  Json region = {{"startLine", finding.line}};
  if (finding.column > 0) {
    const End end = EndOf(finding, file.content);
    region["startColumn"] = finding.column;
    region["endLine"] = end.line;
    region["endColumn"] = end.column;
    region["byteOffset"] = finding.at;
    region["byteLength"] = finding.size;
  }
  return region;
}

Json MakeLocation(const CheckedFile& file) {
  return {{"physicalLocation", {{"artifactLocation", {{"uri", UriOfPath(file.path)}}}}}};
}

Json MakeResult(const CheckedFile& file, const Finding& finding, std::size_t rule) {
  Json location = MakeLocation(file);
  if (finding.line > 0) location["physicalLocation"]["region"] = MakeRegion(file, finding);
  if (!finding.path.empty()) {
    location["logicalLocations"] =
        Json::array({{{"fullyQualifiedName", finding.path}, {"kind", "element"}}});
  }
  Json result = {{"ruleId", finding.code},
                 {"ruleIndex", rule},
                 {"level", NameOf(finding.severity)},
                 {"message", {{"text", FormatFinding(finding)}}},
                 {"locations", Json::array({std::move(location)})}};
  if (finding.is_allowed) result["suppressions"] = Json::array({{{"kind", "inSource"}}});
  return result;
}

Json MakeRules() {
  Json rules = Json::array();
  for (const FindingCode& code : vexor::GetFindingCodes()) {
    rules.push_back({{"id", code.code},
                     {"shortDescription", {{"text", code.title}}},
                     {"fullDescription", {{"text", code.about}}},
                     {"defaultConfiguration", {{"level", NameOf(code.severity)}}}});
  }
  return rules;
}

}  // namespace

void SarifOutput::Add(const CheckedFile& file) {
  if (!file.failure.empty()) {
    notifications_.push_back({{"level", "error"},
                              {"message", {{"text", file.failure}}},
                              {"locations", Json::array({MakeLocation(file)})}});
  }
  const std::vector<FindingCode> codes = vexor::GetFindingCodes();
  for (const Finding& finding : file.findings) {
    if (!finding.is_allowed && !IsShown(finding, arguments_)) continue;
    const auto code = std::ranges::find(codes, finding.code, &FindingCode::code);
    results_.push_back(MakeResult(file, finding, static_cast<std::size_t>(code - codes.begin())));
  }
}

void SarifOutput::Finish(const CheckTotals& totals) {
  const Json driver = {
      {"name", kProgram.name}, {"version", vexor::GetVersionText()}, {"rules", MakeRules()}};
  const Json invocation = {{"executionSuccessful", totals.Unread() == 0},
                           {"exitCode", static_cast<int>(totals.GetStatus())},
                           {"toolExecutionNotifications", std::move(notifications_)}};
  const Json run = {{"tool", {{"driver", driver}}},
                    {"invocations", Json::array({invocation})},
                    {"columnKind", "unicodeCodePoints"},
                    {"results", std::move(results_)}};
  const Json log = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                    {"version", "2.1.0"},
                    {"runs", Json::array({run})}};
  std::cout << PrintJson(log, 2) << '\n';
}

}  // namespace tools::vexorcfg
