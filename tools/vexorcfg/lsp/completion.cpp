#include <string>
#include <string_view>

#include "features.h"
#include "markup.h"
#include "vexor/config/assist.h"

namespace tools::vexorcfg::lsp {
namespace {

using vexor::Completion;
using vexor::CompletionKind;

constexpr int kSnippet = 2;  // a format of the protocol

// Returns a kind of the protocol, which chooses the item's picture.
int NumberOf(CompletionKind kind) {
  switch (kind) {
    case CompletionKind::kSection:
      return 9;  // module
    case CompletionKind::kOption:
      return 10;  // property
    case CompletionKind::kEndTag:
      return 14;  // keyword
    case CompletionKind::kWord:
      return 20;  // member of an enumeration
    case CompletionKind::kExample:
      return 12;  // value
    case CompletionKind::kCode:
      break;
  }
  return 18;  // reference
}

std::string EscapeSnippet(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '$' || c == '}' || c == '\\') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// Texts that keep their order when they are sorted.
std::string MakeSortText(std::size_t index) {
  std::string digits = std::to_string(index);
  return digits.insert(0, digits.size() < 6 ? 6 - digits.size() : 0, '0');
}

// Returns what the menu shows, and what clients compare with the text in the range: a tag if that
// begins with "<". A filter text beside the label would have the same effect but in Neovim up to
// 0.10, which then looks for the begin of a word instead of taking the range.
std::string_view LabelOf(const Completion& completion, bool is_tag) {
  const std::string_view text = completion.text;
  return is_tag && text.starts_with('<') ? text.substr(0, text.find('>') + 1) : completion.label;
}

Json MakeItem(const Completion& completion, std::string_view label, const Json& range,
              const Client& client) {
  const std::string_view text = completion.text;
  const bool is_snippet = client.takes_snippets && completion.cursor < text.size();
  std::string new_text(text);
  if (is_snippet) {
    new_text = EscapeSnippet(text.substr(0, completion.cursor)) + "$0" +
               EscapeSnippet(text.substr(completion.cursor));
  }
  Json item = {{"label", label}, {"kind", NumberOf(completion.kind)}};
  if (!completion.detail.empty()) item["detail"] = completion.detail;
  Markup about(client.takes_markdown_completion);
  about.Add("", about.Plain(completion.about));
  if (!about.IsEmpty()) item["documentation"] = about.MakeContent();
  if (is_snippet) item["insertTextFormat"] = kSnippet;
  item["textEdit"] = {{"range", range}, {"newText", std::move(new_text)}};
  return item;
}

}  // namespace

Json MakeCompletion(OpenDocument& document, const Client& client, const Json& params) {
  const std::string_view content = document.text.text();
  const std::size_t at = document.text.OffsetOf(ReadPosition(params.at("position")));
  const vexor::Completions found = vexor::CompleteText(content, at);
  const Json range = MakeRange(document.text, found.range);
  const bool is_tag = content.substr(found.range.begin).starts_with('<');
  Json items = Json::array();
  for (const Completion& completion : found.items) {
    Json item = MakeItem(completion, LabelOf(completion, is_tag), range, client);
    item["sortText"] = MakeSortText(items.size());
    items.push_back(std::move(item));
  }
  return {{"isIncomplete", false}, {"items", std::move(items)}};
}

}  // namespace tools::vexorcfg::lsp
