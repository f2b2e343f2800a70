#include "config/check/xml_check.h"

#include <optional>
#include <utility>

#include "config/file/xml_document.h"
#include "config/file/xml_lint.h"

namespace vexor {

bool CheckXml(std::string_view content, tinyxml2::XMLDocument& document, Findings& findings) {
  const auto add = [&findings](FindingKind kind, int line, std::string_view text, std::string what,
                               std::string expected) {
    Finding& finding = findings.Add(kind, line, "", text, std::move(what));
    finding.expected = std::move(expected);
    if (finding.mend == Mend::kXml) finding.suggestion = finding.expected;
  };
  if (std::optional<XmlRefusal> refusal = ParseXmlOrExplain(content, document)) {
    add(refusal->kind, refusal->line, "", std::move(refusal->what), std::move(refusal->expected));
    return false;
  }
  XmlLint lint = LintXml(content);
  for (XmlFault& fault : lint.faults) {
    const bool is_dropped = fault.kind == FindingKind::kDroppedXml;
    add(fault.kind, fault.line, fault.text,
        std::move(fault.what) + (is_dropped ? ", not read" : ", refused by other XML programs"),
        std::move(fault.expected));
  }
  if (lint.stop) {
    add(lint.stop->kind, lint.stop->line, "", std::move(lint.stop->what),
        std::move(lint.stop->expected));
  }
  return true;
}

}  // namespace vexor
