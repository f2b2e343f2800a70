#include "config/check/xml_check.h"

#include <optional>
#include <utility>

#include "config/file/xml_document.h"
#include "config/file/xml_lint.h"

namespace vexor {

bool CheckXml(std::string_view content, tinyxml2::XMLDocument& document, Findings& findings) {
  const auto add = [&findings](FindingKind kind, int line, std::string what,
                               std::string expected) -> Finding& {
    Finding& finding = findings.Add(kind, line, "", "", std::move(what));
    finding.expected = std::move(expected);
    return finding;
  };
  const auto add_fault = [&add](const XmlFault& fault, std::string_view what) {
    Finding& finding = add(fault.kind, fault.line, fault.what + std::string(what), fault.expected);
    finding.text = fault.text;
    finding.at = fault.at;
    finding.size = fault.size;
    if (finding.mend == Mend::kXml) finding.suggestion = fault.expected;
  };
  if (std::optional<XmlRefusal> refusal = ParseXmlOrExplain(content, document)) {
    Finding& finding =
        add(refusal->kind, refusal->line, std::move(refusal->what), std::move(refusal->expected));
    finding.at = refusal->at;
    finding.size = refusal->size;
    return false;
  }
  const XmlLint lint = LintXml(content);
  for (const XmlFault& fault : lint.faults) {
    const bool is_dropped = fault.kind == FindingKind::kDroppedXml;
    add_fault(fault, is_dropped ? ", not read" : ", refused by other XML programs");
  }
  if (lint.stop) add_fault(*lint.stop, "");
  return true;
}

}  // namespace vexor
