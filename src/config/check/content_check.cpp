#include "config/check/content_check.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "config/texts/fault_wording.h"
#include "util/text.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;
using tinyxml2::XMLNode;

// Returns the trimmed text of a text node; empty for other nodes.
std::string_view OwnText(const XMLNode& node) {
  return node.ToText() == nullptr ? std::string_view() : TrimSpace(node.Value());
}

}  // namespace

void CheckStrayText(const XMLNode& parent, const std::string& path, Findings& findings) {
  for (const XMLNode* node = parent.FirstChild(); node != nullptr; node = node->NextSibling()) {
    const std::string_view text = OwnText(*node);
    const bool is_outside = parent.ToDocument() != nullptr;
    if (!text.empty()) {
      findings.Add(FindingKind::kStrayText, *node, path, text,
                   is_outside ? "text outside the root element, not read"
                              : "text between elements, not read");
    }
  }
}

void CheckAttributes(const XMLElement& element, const std::string& path, Findings& findings,
                     std::span<const std::string_view> known) {
  for (const tinyxml2::XMLAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
    if (std::ranges::find(known, a->Name()) != known.end()) continue;
    findings.Add(FindingKind::kUnknownAttribute, element, path, a->Name(), "attribute, not read");
  }
}

bool CheckLeaf(const XMLElement& element, const std::string& path, Findings& findings) {
  const XMLNode* const first = element.FirstChild();
  bool is_text_alone = true;
  for (const XMLNode* node = first; node != nullptr; node = node->NextSibling()) {
    if (const XMLElement* const child = node->ToElement()) {
      findings
          .Add(FindingKind::kElementInOption, *child, path + "/" + child->Name(), child->Name(),
               "element in an option, not read")
          .expected = "text";
    } else if (node != first && !OwnText(*node).empty()) {
      findings.Add(FindingKind::kSplitText, *node, path, OwnText(*node),
                   is_text_alone ? "not read: a CDATA section and other text are not joined"
                                 : "not read: it follows a comment or an element");
    }
    is_text_alone = is_text_alone && node->ToText() != nullptr;
  }
  return first == nullptr || first->ToText() != nullptr;
}

Finding* CheckText(const XMLElement& at, const std::string& path, std::string_view text,
                   const OptionRow& option, Findings& findings) {
  const std::optional<TextFault> fault = JudgeText(option, text);
  if (!fault) return nullptr;
  FaultWording wording = WordFault(option, text, *fault);
  Finding& finding =
      findings.Add(FindFindingRow(fault->code)->kind, at, path, text, std::move(wording.what));
  finding.severity = fault->severity;
  finding.expected = std::move(wording.expected);
  finding.suggestion = std::move(wording.suggestion);
  return &finding;
}

// Uses the text without trimming, because the reader only accepts exactly "true".
void CheckSwitch(const XMLElement& element, const std::string& path, Findings& findings) {
  if (!CheckLeaf(element, path, findings)) return;
  const XMLNode* const child = element.FirstChild();
  const std::string_view text = child == nullptr ? "" : child->Value();
  OptionRow option;
  option.syntax = Syntax::kBoolean;
  if (TrimSpace(text).empty()) return;
  Finding* const finding = CheckText(element, path, text, option, findings);
  // A warning means that the text reads as false, so that writing "false" changes nothing.
  if (finding != nullptr) finding->is_older_form = finding->severity == Severity::kWarning;
}

}  // namespace vexor
