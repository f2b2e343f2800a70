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
  Finding& finding = findings_.AddError(element, path, name, "unknown element, not read");
  if (!MaySearch()) {
    // Without a search it is not known which of the two it is.
    finding.what = "unknown or misplaced element, not read";
    return;
  }
  finding.suggestion = SuggestWord(name, NamesOf(parent));
  using Kind = ElementPlaces::Kind;
  Kind kind = Kind::kText;
  if (element.FirstChildElement() != nullptr) kind = Kind::kElements;
  if (element.FirstChild() == nullptr) kind = Kind::kEither;
  const std::string place = places_.Find(name, kind, path.substr(0, path.rfind('/')));
  if (place.empty()) return;
  finding.what = "misplaced element, not read";
  finding.expected = "in " + place;
}

void UnknownNames::AddArgument(const XMLElement& argument, std::string_view name,
                               const ElementModel& parent, const std::string& path) {
  Finding& finding = findings_.AddError(argument, path, name, "unknown argument, not read");
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
  Finding& finding = findings_.AddWarning(element, path, entry, "trace entry of an unknown test");
  finding.expected = "the name of a test";
  if (!MaySearch()) return;
  Words names;
  for (const PmTestRow& known : PmTests()) names.push_back(known.name);
  const std::string_view meant = SuggestWord(test, names);
  if (!meant.empty()) finding.suggestion = std::string(meant) + entry.substr(entry.find('_'));
}

}  // namespace vexor
