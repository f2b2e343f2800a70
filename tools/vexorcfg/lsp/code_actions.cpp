#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "features.h"
#include "vexor/config/assist.h"
#include "vexor/config/edit.h"

namespace tools::vexorcfg::lsp {
namespace {

using vexor::EditedText;
using vexor::Finding;
using vexor::TextRange;
using vexor::TextRepair;
using vexor::TextReplacement;

constexpr std::string_view kQuickFix = "quickfix";
constexpr std::size_t kMostMended = 16;  // findings at one place
constexpr int kAutomatic = 2;            // the client asks because the cursor moved

// An action on the whole document.
struct SourceAction {
  std::string_view kind;
  std::string_view title;
  EditedText (*edit)(std::string_view content);
};

// Not constexpr: the address of a function of a DLL is known only when the program is loaded.
const SourceAction kSourceActions[] = {
    {"source.fixAll", "Mend all mistakes that leave no doubt", vexor::FixText},
    {"source.migrate", "Bring the file to the current form", vexor::MigrateText},
};

// What the client asks for.
struct Request {
  Json only;  // kinds; null for all
  bool is_automatic = false;
};

// Whether the client wants actions of the kind: it names the kind or the first words of it.
bool Wants(const Request& request, std::string_view kind) {
  if (!request.only.is_array()) return kind == kQuickFix || !request.is_automatic;
  return std::ranges::any_of(request.only, [kind](const Json& wanted) {
    if (!wanted.is_string()) return false;
    const auto& word = wanted.get_ref<const std::string&>();
    return word.empty() || kind == word || kind.starts_with(word + ".");
  });
}

Json MakeEdit(const OpenDocument& document, const Client& client,
              const std::vector<TextReplacement>& replacements) {
  Json edits = Json::array();
  for (const auto& [range, text] : replacements) {
    edits.push_back({{"range", MakeRange(document.text, range)}, {"newText", text}});
  }
  if (!client.takes_versions) return {{"changes", {{document.uri, std::move(edits)}}}};
  Json change = {{"textDocument", {{"uri", document.uri}, {"version", document.version}}},
                 {"edits", std::move(edits)}};
  return {{"documentChanges", Json::array({std::move(change)})}};
}

// Whether the request is about the finding: its range touches it, or its context names it, as
// clients do that ask for a whole line.
bool IsAskedFor(const Finding& finding, const TextRange& wanted, const Json& context,
                const TextDocument& text) {
  const TextRange span = RangeOf(finding, text);
  if (span.begin <= wanted.end && wanted.begin <= span.end) return true;
  const Json& known = MemberAt(context, "/diagnostics");
  return known.is_array() && std::ranges::any_of(known, [&](const Json& diagnostic) {
           const TextRange place = ReadRange(diagnostic.at("range"), text);
           return place.begin == span.begin && place.end == span.end &&
                  MemberAt(diagnostic, "/code") == finding.code;
         });
}

void AddQuickFixes(OpenDocument& document, const Client& client, const Json& params,
                   Json& actions) {
  const TextRange wanted = ReadRange(params.at("range"), document.text);
  const Json& context = MemberAt(params, "/context");
  std::size_t mended = 0;
  for (const Finding& finding : FindingsOf(document)) {
    if (!IsPublished(finding, client) || !IsAskedFor(finding, wanted, context, document.text))
      continue;
    if (++mended > kMostMended) break;
    bool has_preferred = false;
    for (const TextRepair& repair : vexor::FindRepairs(document.text.text(), finding)) {
      Json action = {{"title", repair.title},
                     {"kind", kQuickFix},
                     {"diagnostics", Json::array({MakeDiagnostic(finding, document.text)})},
                     {"edit", MakeEdit(document, client, repair.replacements)}};
      if (repair.is_sure && !has_preferred) action["isPreferred"] = has_preferred = true;
      actions.push_back(std::move(action));
    }
  }
}

void AddSourceAction(const SourceAction& source, const OpenDocument& document, const Client& client,
                     Json& actions) {
  const EditedText edited = source.edit(document.text.text());
  if (!edited.error.empty()) return;
  const auto replacements = vexor::FindReplacements(document.text.text(), edited.content);
  if (replacements.empty()) return;
  Json edit = MakeEdit(document, client, replacements);
  const bool is_offered = std::ranges::any_of(
      actions, [&edit](const Json& action) { return action.at("edit") == edit; });
  if (is_offered) return;  // as the quick fix of a finding
  actions.push_back({{"title", source.title}, {"kind", source.kind}, {"edit", std::move(edit)}});
}

}  // namespace

std::vector<std::string_view> ListCodeActionKinds() {
  std::vector<std::string_view> kinds = {kQuickFix};
  for (const SourceAction& source : kSourceActions) kinds.push_back(source.kind);
  return kinds;
}

Json MakeCodeActions(OpenDocument& document, const Client& client, const Json& params) {
  const Request request = {.only = MemberAt(params, "/context/only"),
                           .is_automatic = MemberAt(params, "/context/triggerKind") == kAutomatic};
  Json actions = Json::array();
  if (Wants(request, kQuickFix)) AddQuickFixes(document, client, params, actions);
  for (const SourceAction& source : kSourceActions) {
    if (Wants(request, source.kind)) AddSourceAction(source, document, client, actions);
  }
  return actions;
}

}  // namespace tools::vexorcfg::lsp
