#include "config/check/unknown_names.h"

#include <algorithm>

#include "config/tables/pm_test_table.h"
#include "config/texts/word_list.h"
#include "util/text.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

Words NamesOf(const ElementModel& parent) {
  Words names;
  for (const ElementModel& child : parent.children) names.push_back(child.name);
  return names;
}

// Includes the names in the table: the parsers do not accept some of them.
bool IsKnownTest(std::string_view name) {
  return GetPMTestID(name, true) != PM_TEST_MAX || ParsePMTestID(name, true) != PM_TEST_MAX ||
         std::ranges::any_of(PmTests(), [name](const PmTestRow& test) {
           return EqualsIgnoreCase(test.name, name);
         });
}

}  // namespace

void UnknownNames::AddElement(const XMLElement& element, const ElementModel& parent,
                              const std::string& path) {
  const std::string_view name = element.Name();
  if (!MaySearch()) {
    // Without a search it is not known which of the two it is.
    findings_.Add(FindingKind::kUnknownElement, element, path, name,
                  "unknown or misplaced element, not read");
    return;
  }
  using Kind = ElementPlaces::Kind;
  Kind kind = Kind::kText;
  if (element.FirstChildElement() != nullptr) kind = Kind::kElements;
  if (element.FirstChild() == nullptr) kind = Kind::kEither;
  const ElementPlaces::Found found = places_.Find(name, kind, path.substr(0, path.rfind('/')));
  Finding& finding = found.nearest.empty()
                         ? findings_.Add(FindingKind::kUnknownElement, element, path, name,
                                         "unknown element, not read")
                         : findings_.Add(FindingKind::kMisplacedElement, element, path, name,
                                         "misplaced element, not read");
  finding.suggestion = SuggestWord(name, NamesOf(parent));
  if (found.nearest.empty()) return;
  finding.expected = "in " + found.nearest;
  if (found.others > 0) {
    finding.expected +=
        " or " + std::to_string(found.others) + " other element" + (found.others == 1 ? "" : "s");
  }
  if (found.is_only) finding.belongs_in = found.nearest;
  // It may have the wrong place or the wrong name.
  if (!finding.suggestion.empty()) finding.mend = Mend::kNone;
}

void UnknownNames::AddArgument(const XMLElement& argument, std::string_view name,
                               const ElementModel& parent, const std::string& path) {
  Finding& finding = findings_.Add(FindingKind::kUnknownArgument, argument, path, name,
                                   "unknown argument, not read");
  finding.suggestion = Suggest(name, NamesOf(parent));
}

std::string_view UnknownNames::Suggest(std::string_view name,
                                       std::span<const std::string_view> known) {
  return MaySearch() ? SuggestWord(name, known) : std::string_view();
}

void UnknownNames::CheckTestOfTrace(const XMLElement& element, const std::string& entry,
                                    const std::string& path) {
  const std::string_view test = TrimBlanks(std::string_view(entry).substr(0, entry.find('_')));
  if (IsKnownTest(test)) return;
  Finding& finding = findings_.Add(FindingKind::kUnknownTraceTest, element, path, entry,
                                   "trace entry of an unknown test");
  finding.expected = "the name of a test";
  if (!MaySearch()) return;
  Words names;
  for (const PmTestRow& known : PmTests()) names.push_back(known.name);
  const std::string_view meant = SuggestWord(test, names);
  if (!meant.empty()) finding.suggestion = std::string(meant) + entry.substr(entry.find('_'));
}

}  // namespace vexor
