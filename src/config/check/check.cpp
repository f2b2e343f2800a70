#include "vexor/config/check.h"

#include <tinyxml2.h>

#include <algorithm>
#include <cassert>
#include <fstream>
#include <functional>
#include <memory>
#include <utility>

#include "config/check/allowances.h"
#include "config/check/content_check.h"
#include "config/check/findings.h"
#include "config/check/shared_model.h"
#include "config/check/system_check.h"
#include "config/check/test_times.h"
#include "config/check/trace_check.h"
#include "config/check/unknown_names.h"
#include "config/check/xml_check.h"
#include "config/file/element_walk.h"
#include "config/file/version_rules.h"
#include "config/model/document_model.h"
#include "config/model/element_path.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/sections.h"
#include "config/texts/word_list.h"
#include "util/read_stream.h"
#include "util/text.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using tinyxml2::XMLElement;

constexpr std::string_view kRoot = NameOf(Section::kRoot);

// Returns whether the reader uses an element with an older name: the element of one of its current
// names is absent, or does not count.
bool HasEffect(const ElementModel& older, const XMLElement& parent) {
  return std::ranges::any_of(older.currents, [&](std::string_view name) {
    const XMLElement* const current = FindElement(&parent, name);
    if (current == nullptr) return true;
    if (older.content == Content::kSwitch) return !IsTrue(*current);
    return older.content == Content::kOption && TextOf(*current).empty();
  });
}

bool IsGivenByOlder(const XMLElement& parent, const ElementModel& model, std::string_view name) {
  return std::ranges::any_of(model.children, [&](const ElementModel& child) {
    return child.StandsFor(name) && FindElement(&parent, child.name) != nullptr;
  });
}

// Returns whether an option has a default that is lost if the option is absent from its section.
bool HasDefault(const ElementModel& element) {
  const OptionRow* const option = element.option;
  return option != nullptr && option->text != nullptr && option->flow == Flow::kReadWrite &&
         option->overwrite == Overwrite::kAlways && option->fallback.empty() &&
         option->adjust.run == nullptr && !option->reset.empty();
}

// Walks the document and its model in parallel. Every element that is unknown, misplaced or of the
// wrong kind gives a finding.
class Checker {
 public:
  std::vector<Finding> Check(std::string_view content);

 private:
  void CheckDocument(const tinyxml2::XMLDocument& document);
  void CheckOtherRoot(const XMLElement& element);
  void CheckRoot();
  void CheckChildren(const XMLElement& element, const ElementModel& model, const std::string& path);
  void AddRepeated(const XMLElement& element, const XMLElement& first, const std::string& path);
  void CheckOlder(const XMLElement& element, const ElementModel& model, const std::string& path);
  void CheckElement(const XMLElement& element, const ElementModel& model, const std::string& path);
  void CheckOptionElement(const XMLElement& element, const ElementModel& model,
                          const std::string& path);
  void CheckTestSwitch(const XMLElement& element, const ElementModel& model,
                       const std::string& path);
  void CheckPairs(const XMLElement& element, const ElementModel& model, const std::string& path);
  void CheckVersion(const XMLElement& element, const std::string& path);
  void CheckCounter(const XMLElement& element, const std::string& path);
  void CheckArguments(const XMLElement& element, const ElementModel& model,
                      const std::string& path);
  void CheckContentOfArgument(const XMLElement& arg, const std::string& path);
  void CheckArgument(const XMLElement& arg, const ElementModel& model, const std::string& path);
  template <class Find>
  void AddMissing(const XMLElement& element, const ElementModel& model, const std::string& path,
                  const Find& find);
  template <class Find>
  Words AddMissingTimes(const XMLElement& element, const ElementModel& model,
                        const std::string& path, const Find& find);

  const SharedModel& model_ = GetSharedModel();
  const XMLElement* root_ = nullptr;
  std::string version_;
  Findings findings_;
  UnknownNames unknown_{model_.places, findings_};
  SystemCheck system_{findings_, unknown_};
};

std::vector<Finding> Checker::Check(std::string_view content) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  if (CheckXml(content, document, findings_)) {
    CheckDocument(document);
    Allowances(document, findings_).Apply(findings_);
  }
  findings_.Locate(content, document);
  return std::move(findings_).Sorted();
}

void Checker::CheckDocument(const tinyxml2::XMLDocument& document) {
  CheckStrayText(document, "", findings_);
  root_ = FindRoot(document);
  for (const XMLElement* other = document.FirstChildElement(); other != nullptr;
       other = other->NextSiblingElement()) {
    if (other != root_) CheckOtherRoot(*other);
  }
  if (root_ != nullptr) return CheckRoot();
  if (document.FirstChildElement() == nullptr) {
    findings_.Add(FindingKind::kNoRoot, 0, "", "", "no element").expected =
        "the root " + std::string(kRoot);
  }
}

void Checker::CheckOtherRoot(const XMLElement& element) {
  const std::string name = element.Name();
  if (root_ != nullptr) {
    findings_.Add(FindingKind::kBesideRoot, element, name, name, "not read beside the root")
        .expected = "one element " + std::string(kRoot);
    return;
  }
  Finding& finding = findings_.Add(FindingKind::kWrongRoot, element, name, name,
                                   "wrong root element, nothing is read");
  finding.expected = kRoot;
  finding.suggestion = EqualsIgnoreCase(name, kRoot) ? kRoot : "";
}

void Checker::CheckRoot() {
  const XMLElement* const version = FindSection(root_, Section::kVersion);
  if (version != nullptr) {
    version_ = TextOf(*version);
  } else {
    findings_.Add(FindingKind::kNoVersion, *root_, "Version", "", "no version").expected =
        std::string("an element Version with ") + GetVersionText();
  }
  CheckChildren(*root_, model_.root, "");
}

void Checker::CheckChildren(const XMLElement& element, const ElementModel& model,
                            const std::string& path) {
  struct Seen {
    const XMLElement* first = nullptr;
    std::size_t count = 0;
  };
  CheckStrayText(element, path, findings_);
  std::vector<Seen> seen(model.children.size());
  for (const XMLElement& child : ChildElements(element)) {
    std::string child_path = JoinPath(path, ShortenName(child.Name()));
    const ElementModel* const known = FindChild(model, child.Name());
    if (known == nullptr) {
      unknown_.AddElement(child, model, child_path);
      continue;
    }
    // `known` points into the children, so its offset is the index.
    auto& [first, count] = seen[static_cast<std::size_t>(known - model.children.data())];
    if (++count == 1) first = &child;
    if (known->repeats) child_path = EntryPath(child_path, count);
    CheckAttributes(child, child_path, findings_);
    if (count > 1 && !known->repeats) {
      AddRepeated(child, *first, child_path);
    } else if (known->IsOlder()) {
      CheckOlder(child, *known, child_path);
    } else {
      CheckElement(child, *known, child_path);
    }
  }
  AddMissing(element, model, path, [&](std::size_t i) { return seen[i].first; });
}

void Checker::AddRepeated(const XMLElement& element, const XMLElement& first,
                          const std::string& path) {
  const std::string_view text = TextOf(element).empty() ? element.Name() : TextOf(element);
  findings_.Add(FindingKind::kRepeatedElement, element, path, text,
                "not read: the first element of this name, on line " +
                    std::to_string(first.GetLineNum()) + ", counts");
}

void Checker::CheckOlder(const XMLElement& element, const ElementModel& model,
                         const std::string& path) {
  const bool is_read = HasEffect(model, *element.Parent()->ToElement());
  Finding& finding =
      is_read ? findings_.Add(FindingKind::kOlderName, element, path, element.Name(), "older name")
              : findings_.Add(FindingKind::kIdleOlderName, element, path, element.Name(),
                              "older name, not read beside the current one");
  finding.expected = JoinWithAnd(model.currents);
  if (is_read && model.currents.size() == 1) finding.suggestion = model.currents.front();
  finding.is_older_form = is_read;
  if (is_read) CheckElement(element, model, path);
}

void Checker::CheckElement(const XMLElement& element, const ElementModel& model,
                           const std::string& path) {
  switch (model.content) {
    case Content::kChildren:
      return CheckChildren(element, model, path);
    case Content::kArguments:
      return CheckArguments(element, model, path);
    case Content::kOption:
    case Content::kItem:
      return CheckOptionElement(element, model, path);
    case Content::kVersion:
      return CheckVersion(element, path);
    case Content::kSwitch:
      return CheckTestSwitch(element, model, path);
    case Content::kCounter:
      return CheckCounter(element, path);
    case Content::kPairs:
      return CheckPairs(element, model, path);
    case Content::kTraces:
      return CheckTraces(element, path, version_, findings_, unknown_);
  }
}

void Checker::CheckOptionElement(const XMLElement& element, const ElementModel& model,
                                 const std::string& path) {
  if (model.list != nullptr) {
    if (CheckLeaf(element, path, findings_)) system_.CheckItem(element, *model.list, path);
    return;
  }
  assert(model.option != nullptr);  // only items of system lists have none
  const OptionRow& option = *model.option;
  if (option.flag != nullptr) return CheckSwitch(element, path, findings_);
  if (!CheckLeaf(element, path, findings_)) return;
  const std::string_view text = TextOf(element);
  if (!model.is_read && !text.empty()) {
    findings_.Add(FindingKind::kUnreadOption, element, path, text,
                  "written by the library and never read");
  }
  CheckText(element, path, text, option, findings_);
}

// Also notes a test that is switched on but has no options in the file.
void Checker::CheckTestSwitch(const XMLElement& element, const ElementModel& model,
                              const std::string& path) {
  CheckSwitch(element, path, findings_);
  if (!IsTrue(element)) return;
  const XMLElement* const tests = FindSection(root_, Section::kTests);
  for (const PmTestRow& test : PmTests()) {
    if (test.name != model.name && !model.StandsFor(test.name)) continue;
    const XMLElement* const group = FindElement(tests, test.group);
    if (FindElement(group, test.name) != nullptr || FindElement(group, test.older) != nullptr) {
      continue;
    }
    findings_
        .Add(FindingKind::kDefaultsOnly, element, path, "true",
             "the test runs with default options only")
        .expected =
        "its options in " + JoinPath(JoinPath(NameOf(Section::kTests), test.group), test.name);
  }
}

void Checker::CheckPairs(const XMLElement& element, const ElementModel& model,
                         const std::string& path) {
  assert(model.list != nullptr);  // only system lists hold pairs
  CheckStrayText(element, path, findings_);
  for (const XMLElement& child : ChildElements(element)) {
    const std::string child_path = JoinPath(path, ShortenName(child.Name()));
    CheckAttributes(child, child_path, findings_);
    if (CheckLeaf(child, child_path, findings_)) {
      system_.CheckValue(child, *model.list, child_path);
    }
  }
}

void Checker::CheckVersion(const XMLElement& element, const std::string& path) {
  CheckLeaf(element, path, findings_);
  if (version_ == GetVersionText()) return;
  const bool is_compatible = IsCompatibleVersion(version_);
  Finding& finding =
      is_compatible ? findings_.Add(FindingKind::kOtherVersion, element, path, version_,
                                    "another version, but compatible")
                    : findings_.Add(FindingKind::kIncompatibleVersion, element, path, version_,
                                    "incompatible version, refused where versions are verified");
  finding.expected = GetVersionText();
  if (is_compatible) finding.suggestion = GetVersionText();
  finding.is_older_form = is_compatible;
}

// The counter is written but never read: the reader sets it to 1.
void Checker::CheckCounter(const XMLElement& element, const std::string& path) {
  if (!CheckLeaf(element, path, findings_)) return;
  OptionRow counter;
  counter.syntax = Syntax::kCount;
  CheckText(element, path, TextOf(element), counter, findings_);
}

void Checker::CheckArguments(const XMLElement& element, const ElementModel& model,
                             const std::string& path) {
  CheckStrayText(element, path, findings_);
  std::vector<const XMLElement*> seen(model.children.size());
  for (const XMLElement& child : ChildElements(element)) {
    const char* const name = child.Attribute("name");
    if (kArgumentElement != child.Name()) {
      findings_
          .Add(FindingKind::kNoArgument, child, JoinPath(path, ShortenName(child.Name())),
               child.Name(), "unknown element, not read")
          .expected = "arg with the attributes name and val";
      continue;
    }
    if (name == nullptr) {
      findings_
          .Add(FindingKind::kNamelessArgument, child, JoinPath(path, kArgumentElement),
               kArgumentElement, "argument without a name, not read")
          .expected = "the attribute name";
      continue;
    }
    const std::string arg_path = JoinPath(path, ShortenName(name));
    const ElementModel* const known = FindChild(model, name);
    if (known == nullptr) {
      unknown_.AddArgument(child, name, model, arg_path);
      continue;
    }
    const XMLElement*& first = seen[static_cast<std::size_t>(known - model.children.data())];
    if (first != nullptr) {
      AddRepeated(child, *first, arg_path);
    } else {
      first = &child;
      CheckArgument(child, *known, arg_path);
    }
  }
  AddMissing(element, model, path, [&](std::size_t i) { return seen[i]; });
}

// Reports content of an argument: its value is an attribute.
void Checker::CheckContentOfArgument(const XMLElement& arg, const std::string& path) {
  for (const tinyxml2::XMLNode* node = arg.FirstChild(); node != nullptr;
       node = node->NextSibling()) {
    const bool is_text = node->ToText() != nullptr;
    const std::string_view text =
        is_text || node->ToElement() != nullptr ? TrimSpace(node->Value()) : "";
    if (text.empty()) continue;
    findings_
        .Add(is_text ? FindingKind::kStrayText : FindingKind::kElementInOption, *node, path, text,
             is_text ? "text in an argument, not read" : "element in an argument, not read")
        .expected = "the value in the attribute val";
  }
}

void Checker::CheckArgument(const XMLElement& arg, const ElementModel& model,
                            const std::string& path) {
  constexpr std::string_view kKnown[] = {"name", "val", "randVal"};
  CheckAttributes(arg, path, findings_, kKnown);
  CheckContentOfArgument(arg, path);
  const char* const value = arg.Attribute("val");
  if (value != nullptr) {
    assert(model.option != nullptr);
    CheckText(arg, path, value, *model.option, findings_);
    return;
  }
  const char* const range = arg.Attribute("randVal");
  Finding& finding =
      range == nullptr
          ? findings_.Add(FindingKind::kValuelessArgument, arg, path, "", "reads as empty")
          : findings_.Add(FindingKind::kValuelessArgument, arg, path, range,
                          "reads as empty: randVal is never read");
  finding.expected = "the attribute val";
}

// Notes the options that are absent from a present element: they read as empty, not as their
// defaults. `find` returns the element for the model's child of that index, or null.
template <class Find>
void Checker::AddMissing(const XMLElement& element, const ElementModel& model,
                         const std::string& path, const Find& find) {
  const Words times = AddMissingTimes(element, model, path, find);
  Words missing;
  for (std::size_t i = 0; i < model.children.size(); ++i) {
    const ElementModel& child = model.children[i];
    const bool is_given = find(i) != nullptr || IsGivenByOlder(element, model, child.name) ||
                          std::ranges::find(times, child.name) != times.end();
    if (!is_given && HasDefault(child)) missing.push_back(child.name);
  }
  if (!missing.empty()) {
    findings_.Add(FindingKind::kMissingOptions, element, path, JoinWithCommas(missing),
                  "absent, reads as empty and not as the default");
  }
}

// Warns of a test that is switched on without its times, and returns their names, so that they are
// not reported twice.
template <class Find>
Words Checker::AddMissingTimes(const XMLElement& element, const ElementModel& model,
                               const std::string& path, const Find& find) {
  if (!IsSwitchedOn(*root_, model)) return {};
  Words texts(model.children.size());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const XMLElement* const child = find(i);
    if (child == nullptr) continue;
    const char* const value = child->Attribute("val");
    texts[i] = model.content != Content::kArguments ? TextOf(*child)
               : value != nullptr                   ? value
                                                    : "";
  }
  Words times = FindMissingTimes(model, texts);
  if (!times.empty()) {
    findings_
        .Add(FindingKind::kMissingTimes, element, path, JoinWithCommas(times),
             std::ranges::find(texts, "Invalid") == texts.end()
                 ? "absent or empty, but the test is switched on"
                 : "absent, empty or Invalid, but the test is switched on")
        .expected = times.size() == 1 ? "a time such as msec:80" : "a time each, such as msec:80";
  }
  return times;
}

// Returns the only finding for a file that is not checked.
std::vector<Finding> OneFinding(FindingKind kind, const std::string& text, std::string what,
                                std::string expected) {
  Findings findings;
  findings.Add(kind, 0, "", text, std::move(what)).expected = std::move(expected);
  return std::move(findings).Sorted();
}

}  // namespace

std::vector<Finding> CheckXMLConfigText(std::string_view content, const CheckLimits& limits) {
  if (content.size() > limits.most_bytes) {
    const std::string most = std::to_string(limits.most_bytes);
    return OneFinding(FindingKind::kLargeFile, "", "not checked: larger than " + most + " bytes",
                      "");
  }
  std::vector<Finding> findings = std::make_unique<Checker>()->Check(content);
  if (!limits.with_allowed) std::erase_if(findings, std::mem_fn(&Finding::is_allowed));
  return findings;
}

std::vector<Finding> CheckXMLConfig(const std::string& path, const CheckLimits& limits) {
  std::ifstream file(path, std::ios::binary);
  file.peek();  // a folder can be opened but not read
  if (!file.is_open() || file.bad()) {
    return OneFinding(FindingKind::kUnreadableFile, path, "cannot be read", "a configuration file");
  }
  return CheckXMLConfigText(ReadRest(file, limits.most_bytes), limits);
}

}  // namespace vexor
