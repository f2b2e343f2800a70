#include <algorithm>
#include <memory>
#include <utility>

#include "config/assist/closed_text.h"
#include "config/assist/typed_document.h"
#include "config/edit/repairer.h"
#include "config/tables/finding_kinds.h"
#include "config/texts/xml_characters.h"
#include "vexor/config/assist.h"
#include "vexor/config/edit.h"

namespace vexor {
namespace {

std::string TitleOf(const Finding& finding) {
  switch (finding.mend) {
    case Mend::kName:
      return "Rename to \"" + finding.suggestion + "\"";
    case Mend::kMove:
      return "Move into " + finding.belongs_in;
    case Mend::kXml:
      return "Write as \"" + finding.suggestion + "\"";
    case Mend::kText:
    case Mend::kNone:
      break;
  }
  return "Change to \"" + finding.suggestion + "\"";
}

std::vector<TextReplacement> ToReplacements(SourceEdits edits) {
  std::ranges::stable_sort(edits, {}, [](const SourceEdit& edit) { return edit.range.begin; });
  std::vector<TextReplacement> replacements;
  for (SourceEdit& edit : edits) {
    replacements.push_back({{edit.range.begin, edit.range.end}, std::move(edit.text)});
  }
  return replacements;
}

// Returns the edits of a repair in a document that a strict parser refuses: those in the document
// made well-formed, as far as they are in the document itself.
SourceEdits FindInTyped(std::string_view content, const Finding& finding) {
  if (finding.mend != Mend::kName && finding.mend != Mend::kText) return {};
  ClosedText closed{TypedDocument(content)};
  closed.HideReferences();
  Finding moved = finding;
  moved.at = closed.FromOriginal(finding.at);
  SourceEdits edits;
  for (SourceEdit& edit : Repairer(closed.text()).Find(moved).edits) {
    const auto begin = closed.ToOriginal(edit.range.begin);
    const auto end = closed.ToOriginal(edit.range.end);
    if (begin && end) edits.push_back({{*begin, *end}, std::move(edit.text)});
  }
  return edits;
}

// Adds what the checker suggests.
void AddSuggestion(std::string_view content, const Finding& finding, bool is_sure,
                   std::vector<TextRepair>& repairs) {
  SourceEdits edits = Repairer(content).Find(finding).edits;
  if (edits.empty()) edits = FindInTyped(content, finding);
  if (edits.empty()) return;
  repairs.push_back({TitleOf(finding), ToReplacements(std::move(edits)), is_sure});
}

// A misplaced element with a name like one that is known in its place may have the wrong place or
// the wrong name.
void AddDoubtful(std::string_view content, const Finding& finding,
                 std::vector<TextRepair>& repairs) {
  Finding guess = finding;
  guess.mend = Mend::kName;
  const bool is_name = content.substr(finding.at, finding.size) == finding.text;
  if (is_name && !finding.suggestion.empty()) AddSuggestion(content, guess, false, repairs);
  guess.mend = Mend::kMove;
  if (!finding.belongs_in.empty()) AddSuggestion(content, guess, false, repairs);
}

void AddMigration(std::string_view content, std::vector<TextRepair>& repairs) {
  const EditedText migrated = MigrateText(content);
  if (!migrated.error.empty() || migrated.content == content) return;
  repairs.push_back(
      {"Bring the file to the current form", FindReplacements(content, migrated.content), true});
}

// Returns the innermost element around the place; 0 for none.
std::size_t ElementAround(const TypedDocument& document, std::size_t at) {
  std::size_t around = 0;
  for (std::size_t i = 1; i < document.nodes().size(); ++i) {
    const TypedNode& node = document[i];
    if (node.range.begin > at) break;
    if (node.IsElement() && at < node.range.end) around = i;
  }
  return around;
}

// Returns the line end and the blanks in front of the element, if nothing else is on its line.
std::string LineBeginOf(std::string_view content, std::size_t element_begin) {
  std::size_t begin = element_begin;
  while (begin > 0 && (content[begin - 1] == ' ' || content[begin - 1] == '\t')) --begin;
  if (begin == 0 || content[begin - 1] != '\n') return {};
  const bool is_crlf = begin > 1 && content[begin - 2] == '\r';
  return std::string(is_crlf ? "\r\n" : "\n").append(content.substr(begin, element_begin - begin));
}

// A comment that is the first content of the root holds for the whole file.
void AddAllowance(std::string_view content, const Finding& finding,
                  std::vector<TextRepair>& repairs) {
  const FindingRow* const row = FindFindingRow(finding.code);
  if (row == nullptr || row->ends_reading) return;
  const TypedDocument document(content);
  const std::size_t element = ElementAround(document, finding.at);
  if (element == 0) return;
  const auto first = std::ranges::find_if(
      document.nodes(), [](const TypedNode& node) { return node.depth == 1 && node.IsElement(); });
  const bool is_whole_file =
      document[element].parent == 0 || &document[element] == std::to_address(first);
  const std::size_t begin = document[element].range.begin;
  std::string comment = "<!-- vexorcfg: allow " + std::string(finding.code) + " -->";
  comment += LineBeginOf(content, begin);
  repairs.push_back({"Allow " + std::string(finding.code) +
                         (is_whole_file ? " in the whole file" : " in this element"),
                     {{{begin, begin}, std::move(comment)}},
                     false});
}

}  // namespace

std::vector<TextRepair> FindRepairs(std::string_view content, const Finding& finding) {
  std::vector<TextRepair> repairs;
  if (finding.column == 0 || finding.at > content.size()) return repairs;
  if (IsOfOlderVersion(finding)) {
    AddMigration(content, repairs);
  } else if (finding.mend != Mend::kNone) {
    AddSuggestion(content, finding, true, repairs);
  } else {
    AddDoubtful(content, finding, repairs);
  }
  AddAllowance(content, finding, repairs);
  return repairs;
}

std::vector<TextReplacement> FindReplacements(std::string_view before, std::string_view after) {
  if (before == after) return {};
  const std::size_t shorter = std::min(before.size(), after.size());
  const auto differ = std::mismatch(
      before.begin(), before.begin() + static_cast<std::ptrdiff_t>(shorter), after.begin());
  auto begin = static_cast<std::size_t>(differ.first - before.begin());
  while (begin > 0 && before[begin - 1] != '\n') --begin;
  std::size_t same = 0;  // bytes at the end
  while (same < shorter - begin &&
         before[before.size() - 1 - same] == after[after.size() - 1 - same])
    ++same;
  // Only whole lines are the same.
  while (same > 0 && same < before.size() && before[before.size() - 1 - same] != '\n') --same;
  while (same > 0 && same < after.size() && after[after.size() - 1 - same] != '\n') --same;
  return {{{begin, before.size() - same},
           std::string(after.substr(begin, after.size() - same - begin))}};
}

}  // namespace vexor
