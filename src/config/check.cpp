#include "vexor/config/check.h"

#include <tinyxml2.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>

#include "config/document_model.h"
#include "config/element_places.h"
#include "config/element_walk.h"
#include "config/fault_wording.h"
#include "config/pm_test_table.h"
#include "config/syntax_table.h"
#include "config/tables/system_setup.h"
#include "config/trace_entries.h"
#include "config/version_rules.h"
#include "config/word_list.h"
#include "config/xml_error.h"
#include "util/read_stream.h"
#include "util/text.h"
#include "vexor/util/version.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using tinyxml2::XMLElement;
using tinyxml2::XMLNode;

// For so many unknown names it is searched what they may have been meant to be. It takes longer
// than all the rest, and nobody reads more.
constexpr int kMostSearches = 1000;

Words NamesOf(const ElementModel& parent) {
  Words names;
  for (const ElementModel& child : parent.children) names.push_back(child.name);
  return names;
}

std::string_view TextOf(const XMLElement& element) { return TrimmedText(element).value_or(""); }

// The text of a node, without white space; empty for a node that is no text.
std::string_view OwnText(const XMLNode& node) {
  return node.ToText() == nullptr ? std::string_view() : TrimSpace(node.Value());
}

// Where an element stands: "GLOBALPM/CORE" for a test of that group.
std::string PlaceOf(const XMLElement& element) {
  std::string path;
  const XMLElement* parent = element.Parent()->ToElement();
  for (; parent != nullptr; parent = parent->Parent()->ToElement()) {
    if (parent->Parent()->ToDocument() != nullptr) break;  // the root
    path.insert(0, std::string(parent->Name()) + (path.empty() ? "" : "/"));
  }
  return path;
}

// Whether an element of an older name is what the reader takes for one of the current names.
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

// Whether an option that a file may hold has a default that its absence does not give.
bool HasDefault(const ElementModel& element) {
  const OptionRow* const option = element.option;
  return option != nullptr && option->text != nullptr && option->flow == Flow::kReadWrite &&
         option->take == Take::kAlways && option->fallback.empty() && option->settle == nullptr &&
         !option->reset.empty();
}

// By a long name, an older or a short one; a display name that no parser takes is a name, too.
bool IsKnownTest(std::string_view name) {
  return GetPMTestID(name, true) != PM_TEST_MAX || ParsePMTestID(name, true) != PM_TEST_MAX ||
         std::ranges::any_of(PmTests(), [name](const PmTestRow& test) {
           return EqualsIgnoreCase(test.name, name);
         });
}

class Checker {
 public:
  std::vector<Finding> Check(const tinyxml2::XMLDocument& document) {
    CheckDocument(document);
    std::ranges::stable_sort(findings_, {}, &Finding::line);
    return std::move(findings_);
  }

 private:
  Finding& Add(Severity severity, int line, std::string path, std::string_view text,
               std::string what) {
    Finding& finding = findings_.emplace_back();
    finding.line = line;
    finding.path = std::move(path);
    finding.severity = severity;
    finding.text = text;
    finding.what = std::move(what);
    return finding;
  }
  Finding& Error(const XMLNode& at, const std::string& path, std::string_view text,
                 std::string what) {
    return Add(Severity::kError, at.GetLineNum(), path, text, std::move(what));
  }
  Finding& Warning(const XMLNode& at, const std::string& path, std::string_view text,
                   std::string what) {
    return Add(Severity::kWarning, at.GetLineNum(), path, text, std::move(what));
  }
  Finding& Note(const XMLNode& at, const std::string& path, std::string_view text,
                std::string what) {
    return Add(Severity::kNote, at.GetLineNum(), path, text, std::move(what));
  }

  void CheckDocument(const tinyxml2::XMLDocument& document) {
    if (document.Error()) {
      const std::string reason(ExplainXmlError(document.ErrorID()));
      Add(Severity::kError, document.ErrorLineNum(), "", "", "not well-formed XML: " + reason);
      return;
    }
    CheckStrayText(document, "");
    root_ = document.FirstChildElement("VEXOR");
    for (const XMLElement* other = document.FirstChildElement(); other != nullptr;
         other = other->NextSiblingElement()) {
      if (other != root_) CheckOtherRoot(*other);
    }
    if (root_ != nullptr) return CheckRoot();
    if (document.FirstChildElement() == nullptr) {
      Add(Severity::kError, 0, "", "", "no element").expected = "the root VEXOR";
    }
  }

  void CheckOtherRoot(const XMLElement& element) {
    const std::string name = element.Name();
    if (root_ != nullptr) {
      Warning(element, name, name, "not read beside the root").expected = "one element VEXOR";
      return;
    }
    Finding& finding = Error(element, name, name, "wrong root, and nothing is read");
    finding.expected = "VEXOR";
    finding.suggestion = EqualsIgnoreCase(name, "VEXOR") ? "VEXOR" : "";
  }

  void CheckRoot() {
    const XMLElement* const version = root_->FirstChildElement("Version");
    if (version != nullptr) {
      version_ = TextOf(*version);
    } else {
      Error(*root_, "Version", "", "no version").expected =
          std::string("an element Version with ") + GetVersionText();
    }
    CheckChildren(*root_, model_, "");
  }

  void CheckChildren(const XMLElement& element, const ElementModel& model,
                     const std::string& path) {
    struct Seen {
      const XMLElement* first = nullptr;
      int count = 0;
    };
    CheckStrayText(element, path);
    std::vector<Seen> seen(model.children.size());
    for (const XMLElement& child : ChildElements(element)) {
      std::string child_path = PathOf(path, child.Name());
      const ElementModel* const known = FindChild(model, child.Name());
      if (known == nullptr) {
        AddUnknown(child, model, child_path);
        continue;
      }
      auto& [first, count] = seen[static_cast<std::size_t>(known - model.children.data())];
      if (++count == 1) first = &child;
      if (known->repeats) child_path += "[" + std::to_string(count) + "]";
      CheckAttributes(child, child_path);
      if (count > 1 && !known->repeats) {
        AddRepeated(child, *first, child_path);
      } else if (known->IsOlder()) {
        CheckOlder(child, *known, child_path);
      } else {
        CheckElement(child, *known, child_path);
      }
    }
    AddMissing(element, model, path, [&](std::size_t i) { return seen[i].count > 0; });
  }

  bool MaySearch() { return searches_left_ > 0 && searches_left_-- > 0; }

  // Paths begin below the sections of the root, which add nothing.
  static std::string PathOf(const std::string& parent, std::string_view name) {
    const bool is_section = parent.empty() || parent == "GLOBALPM" ||
                            parent == "GLOBALCONFIGURATION" || parent == "TEST_CONTROL_CFG" ||
                            parent == "WORKLOADS";
    return is_section ? std::string(name) : parent + "/" + std::string(name);
  }

  void AddUnknown(const XMLElement& element, const ElementModel& model, const std::string& path) {
    const std::string_view name = element.Name();
    Finding& finding = Error(element, path, name, "unknown element, not read");
    if (!MaySearch()) {
      finding.what = "unknown or misplaced element, not read";
      return;
    }
    finding.suggestion = SuggestWord(name, NamesOf(model));
    using Kind = ElementPlaces::Kind;
    Kind kind = Kind::kText;
    if (element.FirstChildElement() != nullptr) kind = Kind::kSection;
    if (element.FirstChild() == nullptr) kind = Kind::kEither;
    const std::string place = places_.Find(name, kind, PlaceOf(element));
    if (place.empty()) return;
    finding.what = "misplaced element, not read";
    finding.expected = "to stand in " + place;
  }

  void AddRepeated(const XMLElement& element, const XMLElement& first, const std::string& path) {
    const std::string_view text = TextOf(element).empty() ? element.Name() : TextOf(element);
    Error(element, path, text,
          "not read: the first element of this name, on line " +
              std::to_string(first.GetLineNum()) + ", counts");
  }

  void CheckOlder(const XMLElement& element, const ElementModel& model, const std::string& path) {
    const bool is_read = HasEffect(model, *element.Parent()->ToElement());
    Finding& finding =
        Warning(element, path, element.Name(),
                is_read ? "older name" : "older name, not read beside the current one");
    finding.expected = JoinWithAnd(model.currents);
    if (is_read) CheckElement(element, model, path);
  }

  void CheckAttributes(const XMLElement& element, const std::string& path,
                       std::span<const std::string_view> known = {}) {
    for (const tinyxml2::XMLAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
      if (std::ranges::find(known, a->Name()) != known.end()) continue;
      Warning(element, path, a->Name(), "attribute, not read");
    }
  }

  void CheckStrayText(const XMLNode& parent, const std::string& path) {
    for (const XMLNode* node = parent.FirstChild(); node != nullptr; node = node->NextSibling()) {
      const std::string_view text = OwnText(*node);
      if (!text.empty()) Error(*node, path, text, "text between elements, not read");
    }
  }

  void CheckElement(const XMLElement& element, const ElementModel& model, const std::string& path) {
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
        return;
      case Content::kPairs:
        return CheckPairs(element, model, path);
      case Content::kTraces:
        return CheckTraces(element, path);
    }
  }

  // An option's text is what stands before any comment or element in it. Tells whether there is
  // such a text to look at.
  bool CheckLeaf(const XMLElement& element, const std::string& path) {
    const XMLNode* const first = element.FirstChild();
    for (const XMLNode* node = first; node != nullptr; node = node->NextSibling()) {
      if (const XMLElement* const child = node->ToElement()) {
        Error(*child, path + "/" + child->Name(), child->Name(), "element in an option, not read")
            .expected = "text";
      } else if (node != first && !OwnText(*node).empty()) {
        Error(*node, path, OwnText(*node), "not read: it follows a comment or an element");
      }
    }
    return first == nullptr || first->ToText() != nullptr;
  }

  void CheckText(const XMLElement& at, const std::string& path, std::string_view text,
                 const OptionRow& option) {
    const std::optional<Fault> fault = CheckOption(option, text);
    if (!fault) return;
    FaultWording wording = WordFault(option, text, *fault);
    Finding& finding = Error(at, path, text, std::move(wording.what));
    finding.expected = std::move(wording.expected);
    finding.suggestion = std::move(wording.suggestion);
  }

  void CheckOptionElement(const XMLElement& element, const ElementModel& model,
                          const std::string& path) {
    const OptionRow* const option = model.option;
    if (option != nullptr && option->flag != nullptr) return CheckSwitch(element, path);
    if (!CheckLeaf(element, path) || option == nullptr) return;
    const std::string_view text = TextOf(element);
    if (!model.is_read && !text.empty()) {
      Warning(element, path, text, "written by the library and never read");
    }
    CheckText(element, path, text, *option);
  }

  // Only the exact text switches on.
  void CheckSwitch(const XMLElement& element, const std::string& path) {
    const XMLNode* const child = element.FirstChild();
    const std::string_view text = child == nullptr ? "" : child->Value();
    const std::string_view word = TrimSpace(text);
    if (word.empty() || text == "true" || text == "false") return;
    const bool means_false = EqualsIgnoreCase(word, "false");
    Finding& finding = means_false
                           ? Warning(element, path, text, "reads as false, like any text but true")
                           : Error(element, path, text, "reads as false");
    finding.expected = "true or false";
    if (means_false) finding.suggestion = "false";
    if (EqualsIgnoreCase(word, "true")) finding.suggestion = "true";
  }

  // Tells of a test that runs without any options in the file.
  void CheckTestSwitch(const XMLElement& element, const ElementModel& model,
                       const std::string& path) {
    CheckSwitch(element, path);
    if (!IsTrue(element)) return;
    const XMLElement* const tests = root_->FirstChildElement("GLOBALPM");
    for (const PmTestRow& test : PmTests()) {
      if (test.name != model.name && !model.StandsFor(test.name)) continue;
      const XMLElement* const group = FindElement(tests, test.group);
      if (FindElement(group, test.name) != nullptr || FindElement(group, test.older) != nullptr) {
        continue;
      }
      Note(element, path, "true", "the test runs with the defaults alone").expected =
          "its options in GLOBALPM/" + std::string(test.group) + "/" + std::string(test.name);
    }
  }

  void CheckPairs(const XMLElement& element, const ElementModel& model, const std::string& path) {
    CheckStrayText(element, path);
    for (const XMLElement& child : ChildElements(element)) {
      const std::string child_path = PathOf(path, child.Name());
      CheckAttributes(child, child_path);
      if (!CheckLeaf(child, child_path)) continue;
      for (const OptionRow& option : model.list->always) {
        if (option.name == child.Name()) CheckText(child, child_path, TextOf(child), option);
      }
    }
  }

  void CheckVersion(const XMLElement& element, const std::string& path) {
    if (!CheckLeaf(element, path) || version_ == GetVersionText()) return;
    Finding& finding = IsCompatibleVersion(version_)
                           ? Warning(element, path, version_, "another version, but compatible")
                           : Error(element, path, version_,
                                   "incompatible version, refused where versions are verified");
    finding.expected = GetVersionText();
  }

  void CheckArguments(const XMLElement& element, const ElementModel& model,
                      const std::string& path) {
    CheckStrayText(element, path);
    std::vector<const XMLElement*> seen(model.children.size());
    for (const XMLElement& child : ChildElements(element)) {
      const char* const name = child.Attribute("name");
      if (std::string_view(child.Name()) != "arg") {
        Error(child, PathOf(path, child.Name()), child.Name(), "unknown element, not read")
            .expected = "arg with the attributes name and val";
        continue;
      }
      if (name == nullptr) {
        Error(child, PathOf(path, "arg"), "arg", "argument without a name, not read").expected =
            "the attribute name";
        continue;
      }
      const std::string arg_path = PathOf(path, name);
      const ElementModel* const known = FindChild(model, name);
      if (known == nullptr) {
        AddUnknownArgument(child, name, model, arg_path);
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
    AddMissing(element, model, path, [&](std::size_t i) { return seen[i] != nullptr; });
  }

  void AddUnknownArgument(const XMLElement& arg, std::string_view name, const ElementModel& model,
                          const std::string& path) {
    Finding& finding = Error(arg, path, name, "unknown argument, not read");
    if (MaySearch()) finding.suggestion = SuggestWord(name, NamesOf(model));
  }

  void CheckArgument(const XMLElement& arg, const ElementModel& model, const std::string& path) {
    constexpr std::string_view kKnown[] = {"name", "val", "randVal"};
    CheckAttributes(arg, path, kKnown);
    const char* const value = arg.Attribute("val");
    if (value != nullptr) return CheckText(arg, path, value, *model.option);
    const char* const range = arg.Attribute("randVal");
    Finding& finding = range == nullptr
                           ? Warning(arg, path, "", "reads as empty")
                           : Warning(arg, path, range, "reads as empty: randVal is never read");
    finding.expected = "the attribute val";
  }

  void CheckTraces(const XMLElement& element, const std::string& path) {
    CheckStrayText(element, path);
    std::optional<TraceMigration> migration;
    try {
      migration.emplace(version_);
    } catch (const std::out_of_range&) {
      Error(element, path, version_,
            "the file cannot be read: trace entries need a version of four pieces")
          .expected = GetVersionText();
    }
    int count = 0;
    for (const XMLElement& child : ChildElements(element)) {
      const std::string child_path =
          PathOf(path, child.Name()) + "[" + std::to_string(++count) + "]";
      CheckAttributes(child, child_path);
      if (!CheckLeaf(child, child_path)) continue;
      const std::string entry(TextOf(child));
      if (!entry.empty() && migration) CheckTrace(child, entry, *migration, child_path);
    }
  }

  void CheckTrace(const XMLElement& element, const std::string& entry,
                  const TraceMigration& migration, const std::string& path) {
    std::vector<std::string> current;
    try {
      migration.Append(entry, current);
    } catch (const std::out_of_range&) {
      Error(element, path, entry, "the file cannot be read: malformed trace entry").expected =
          "test_target_code, such as CSTATES_Core_Con:10";
      return;
    }
    if (current.front() != entry) {
      Warning(element, path, entry, "older form of a trace entry").expected =
          JoinWithAnd(Words(current.begin(), current.end()));
      return;
    }
    const std::string_view test = TrimBlanks(std::string_view(entry).substr(0, entry.find('_')));
    if (IsKnownTest(test)) return;
    Finding& finding = Warning(element, path, entry, "trace entry of an unknown test");
    finding.expected = "the name of a test";
    if (!MaySearch()) return;
    Words names;
    for (const PmTestRow& known : PmTests()) names.push_back(known.name);
    const std::string_view meant = SuggestWord(test, names);
    if (!meant.empty()) finding.suggestion = std::string(meant) + entry.substr(entry.find('_'));
  }

  // Options that a present element lacks read as empty, not as their defaults.
  template <class IsThere>
  void AddMissing(const XMLElement& element, const ElementModel& model, const std::string& path,
                  const IsThere& is_there) {
    std::string missing;
    for (std::size_t i = 0; i < model.children.size(); ++i) {
      const ElementModel& child = model.children[i];
      const bool is_given = is_there(i) || IsGivenByOlder(element, model, child.name);
      if (is_given || !HasDefault(child)) continue;
      missing += (missing.empty() ? "" : ", ") + std::string(child.name);
    }
    if (!missing.empty()) {
      Note(element, path, missing, "absent, and read as empty, not as the default");
    }
  }

  FullRecords records_;
  ElementModel model_ = MakeDocumentModel(records_);
  ElementPlaces places_{model_};
  const XMLElement* root_ = nullptr;
  std::string version_;
  int searches_left_ = kMostSearches;
  std::vector<Finding> findings_;
};

}  // namespace

std::vector<Finding> CheckXMLConfigText(std::string_view content) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  document.Parse(content.data(), content.size());
  return std::make_unique<Checker>()->Check(document);
}

std::vector<Finding> CheckXMLConfig(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  file.peek();  // a folder can be opened and not read
  if (!file.is_open() || file.bad()) {
    Finding finding;
    finding.text = path;
    finding.what = "cannot be read";
    finding.expected = "a configuration file";
    return {finding};
  }
  return CheckXMLConfigText(ReadRest(file));
}

}  // namespace vexor
