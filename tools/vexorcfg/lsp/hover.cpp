#include <algorithm>
#include <string>
#include <string_view>

#include "features.h"
#include "markup.h"
#include "vexor/config/assist.h"

namespace tools::vexorcfg::lsp {
namespace {

using vexor::ElementInfo;
using vexor::Finding;
using vexor::FindingCode;
using vexor::OptionInfo;
using vexor::TextRange;

constexpr std::size_t kMostShown = 400;  // bytes of a text of the document

void AddOption(const OptionInfo& option, Markup& out) {
  std::string texts = out.Plain(option.syntax.grammar);
  const std::string_view example = option.syntax.example;
  if (!example.empty()) texts += ", for example " + out.Code(example);
  out.Add("Texts", texts);
  out.Add("Words", out.Code(option.words));
  out.Add("Known values", option.words.empty() ? out.Code(option.hint) : std::string());
  out.Add("Default", out.Code(option.preset));
}

void AddText(const ElementInfo& element, Markup& out) {
  if (element.text.empty() || element.text.size() > kMostShown) return;
  if (element.fault) {
    std::string wrong = element.fault->what;
    if (!element.fault->expected.empty()) wrong += ", expected " + element.fault->expected;
    out.Add("", out.Code(element.text) + ": " + out.Plain(wrong));
  } else if (!element.meaning.empty()) {
    out.Add("", out.Code(element.text) + " means " + out.Plain(element.meaning));
  }
}

void AddElement(const ElementInfo& element, Markup& out) {
  out.Add("", out.Bold(element.name));
  out.Add("", out.Code(element.path));
  out.Add("", out.Plain(element.about));
  out.Add("Current name", out.Code(element.stands_for));
  AddText(element, out);
  if (element.option) AddOption(*element.option, out);
}

// Explains the codes of the findings at the place.
void AddFindings(OpenDocument& document, const Client& client, std::size_t at, Markup& out) {
  std::vector<std::string_view> codes;
  for (const Finding& finding : FindingsOf(document)) {
    const TextRange range = RangeOf(finding, document.text);
    if (at < range.begin || at > range.end || !IsPublished(finding, client)) continue;
    if (std::ranges::count(codes, finding.code) == 0) codes.push_back(finding.code);
  }
  for (const FindingCode& known : vexor::GetFindingCodes()) {
    if (std::ranges::count(codes, known.code) == 0) continue;
    const std::string title = std::string(known.code).append(", ").append(known.title);
    out.Add(title, out.Plain(known.about));
  }
}

}  // namespace

Json MakeHover(OpenDocument& document, const Client& client, const Json& params) {
  const std::size_t at = document.text.OffsetOf(ReadPosition(params.at("position")));
  const auto element = vexor::FindElementAt(document.text.text(), at);
  Markup out(client.takes_markdown_hover);
  if (element) AddElement(*element, out);
  AddFindings(document, client, at, out);
  if (out.IsEmpty()) return nullptr;
  Json hover = {{"contents", out.MakeContent()}};
  if (element) hover["range"] = MakeRange(document.text, element->range);
  return hover;
}

}  // namespace tools::vexorcfg::lsp
