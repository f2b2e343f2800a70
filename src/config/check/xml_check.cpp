#include "config/check/xml_check.h"

#include <optional>
#include <utility>

#include "config/file/xml_document.h"
#include "config/file/xml_lint.h"

namespace vexor {

bool CheckXml(std::string_view content, tinyxml2::XMLDocument& document, Findings& findings) {
  const auto add = [&findings](Severity severity, int line, std::string_view text, std::string what,
                               std::string expected) {
    findings.Add(severity, line, "", text, std::move(what)).expected = std::move(expected);
  };
  if (std::optional<XmlRefusal> refusal = ParseXmlOrExplain(content, document)) {
    add(Severity::kError, refusal->line, "", std::move(refusal->what),
        std::move(refusal->expected));
    return false;
  }
  XmlLint lint = LintXml(content);
  for (XmlFault& fault : lint.faults) {
    add(fault.is_dropped ? Severity::kError : Severity::kWarning, fault.line, fault.text,
        std::move(fault.what) +
            (fault.is_dropped ? ", not read" : ", refused by other XML programs"),
        std::move(fault.expected));
  }
  if (lint.stop) {
    add(Severity::kError, lint.stop->line, "", std::move(lint.stop->what),
        std::move(lint.stop->expected));
  }
  return true;
}

}  // namespace vexor
