#include <algorithm>

#include "features.h"

namespace tools::vexorcfg::lsp {
namespace {

using vexor::Finding;
using vexor::Severity;
using vexor::TextRange;

constexpr std::size_t kMostDiagnostics = 1000;  // editors do not show more
constexpr int kInformation = 3;                 // a severity of the protocol
constexpr int kDeprecated = 2;                  // a tag of the protocol

int NumberOf(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return 1;
    case Severity::kWarning:
      return 2;
    case Severity::kNote:
      break;
  }
  return kInformation;
}

std::string MakeMessage(const Finding& finding) {
  std::string message = finding.what;
  if (!finding.expected.empty()) message += ", expected " + finding.expected;
  const bool has_suggestion = !finding.suggestion.empty() && finding.suggestion != finding.expected;
  if (has_suggestion) message += "; did you mean \"" + finding.suggestion + "\"?";
  return message;
}

}  // namespace

bool IsPublished(const Finding& finding, const Client& client) {
  return client.wants_notes || finding.severity != Severity::kNote;
}

TextRange RangeOf(const Finding& finding, const TextDocument& text) {
  if (finding.column > 0) return {.begin = finding.at, .end = finding.at + finding.size};
  const auto line = static_cast<std::size_t>(std::max(finding.line, 1)) - 1;
  return {.begin = text.BeginOfLine(line), .end = text.EndOfLine(line)};
}

Json MakeDiagnostic(const Finding& finding, const TextDocument& text) {
  Json diagnostic = {{"range", MakeRange(text, RangeOf(finding, text))},
                     {"severity", NumberOf(finding.severity)},
                     {"code", finding.code},
                     {"source", "vexorcfg"},
                     {"message", MakeMessage(finding)}};
  if (finding.is_older_form) diagnostic["tags"] = {kDeprecated};
  return diagnostic;
}

Json MakeDiagnostics(OpenDocument& document, const Client& client) {
  Json diagnostics = Json::array();
  std::size_t left_out = 0;
  for (const Finding& finding : FindingsOf(document)) {
    if (!IsPublished(finding, client)) continue;
    if (diagnostics.size() < kMostDiagnostics) {
      diagnostics.push_back(MakeDiagnostic(finding, document.text));
    } else {
      ++left_out;
    }
  }
  if (left_out > 0) {
    const std::size_t end = document.text.EndOfLine(0);
    diagnostics.push_back({{"range", MakeRange(document.text, {.begin = 0, .end = end})},
                           {"severity", kInformation},
                           {"source", "vexorcfg"},
                           {"message", std::to_string(left_out) + " more findings; "
                                                                  "vexorcfg check lists them"}});
  }
  Json params = {{"uri", document.uri}, {"diagnostics", std::move(diagnostics)}};
  if (document.version.is_number_integer()) params["version"] = document.version;
  return params;
}

}  // namespace tools::vexorcfg::lsp
