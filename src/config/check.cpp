#include "vexor/config/check.h"

#include <tinyxml2.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>
#include <span>
#include <sstream>
#include <stdexcept>

#include "config/document_model.h"
#include "config/element_walk.h"
#include "config/syntax_table.h"
#include "config/trace_entries.h"
#include "config/version_rules.h"
#include "syntax/nearest.h"
#include "util/text.h"
#include "vexor/util/version.h"
#include "vexor/vocabulary/pm_tests.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using tinyxml2::XMLElement;
using tinyxml2::XMLNode;

// The name that was probably meant, empty when none is near.
std::string NearestOf(std::string_view text, const std::vector<std::string_view>& names) {
  if (text.size() > kLongestCompared) return {};
  const std::string_view nearest = FindNearest(text, names, std::identity());
  const std::size_t most = std::max<std::size_t>(1, nearest.size() / 3);
  return CountEdits(text, nearest) <= most ? std::string(nearest) : std::string();
}

// Where elements of a name may stand, found over the whole tree: "GLOBALPM/SYSTEM".
std::string PlaceOf(std::string_view name, const ElementModel& parent, const std::string& path) {
  for (const ElementModel& child : parent.children) {
    const std::string below =
        path.empty() ? std::string(child.name) : path + "/" + std::string(child.name);
    if (child.name == name && !path.empty()) return path;
    const bool is_section = child.content == Content::kChildren && child.option == nullptr;
    const std::string place = is_section ? PlaceOf(name, child, below) : std::string();
    if (!place.empty()) return place;
  }
  return {};
}

class Checker {
 public:
  std::vector<Finding> Check(const tinyxml2::XMLDocument& document) {
    if (document.Error()) {
      AddXmlError(document);
      return std::move(findings_);
    }
    const XMLElement* const root = document.FirstChildElement("VEXOR");
    for (const XMLElement* other = document.FirstChildElement(); other != nullptr;
         other = other->NextSiblingElement()) {
      if (other != root) CheckOtherRoot(*other, root != nullptr);
    }
    if (root == nullptr) {
      if (findings_.empty()) Add(0, "", Severity::kError, "", "no element", "the root VEXOR");
      return std::move(findings_);
    }
    version_ = std::string(VersionText(*root));
    if (root->FirstChildElement("Version") == nullptr) {
      Add(root->GetLineNum(), "Version", Severity::kError, "", "no version",
          std::string("Version with ") + GetVersionText());
    }
    CheckChildren(*root, model_, "");
    std::ranges::stable_sort(findings_, {}, &Finding::line);
    return std::move(findings_);
  }

 private:
  void Add(int line, std::string path, Severity severity, std::string_view text,
           std::string_view what, std::string_view expected = {}, std::string suggestion = {}) {
    findings_.push_back({.line = line,
                         .path = std::move(path),
                         .severity = severity,
                         .text = std::string(text),
                         .what = std::string(what),
                         .expected = std::string(expected),
                         .suggestion = std::move(suggestion)});
  }

  void AddXmlError(const tinyxml2::XMLDocument& document) {
    Add(document.ErrorLineNum(), "", Severity::kError, "",
        std::string("not well-formed XML: ") + document.ErrorName(), "an XML document");
  }

  static std::string_view VersionText(const XMLElement& root) {
    const XMLElement* const version = root.FirstChildElement("Version");
    return version == nullptr ? "" : TrimmedText(*version).value_or("");
  }

  void CheckOtherRoot(const XMLElement& element, bool has_root) {
    const std::string name = element.Name();
    if (has_root) {
      Add(element.GetLineNum(), name, Severity::kWarning, name, "ignored beside the root",
          "one element VEXOR");
    } else {
      Add(element.GetLineNum(), name, Severity::kError, name, "wrong root", "VEXOR",
          EqualsIgnoreCase(name, "VEXOR") ? "VEXOR" : "");
    }
  }

  void CheckChildren(const XMLElement& element, const ElementModel& model,
                     const std::string& path) {
    CheckStrayText(element, path);
    std::set<const ElementModel*> seen;
    for (const XMLElement& child : ChildElements(element)) {
      const std::string_view name = child.Name();
      const std::string child_path = PathOf(path, name);
      CheckAttributes(child, child_path);
      const ElementModel* const known = FindChild(model, name);
      if (known == nullptr) {
        AddUnknown(child, model, child_path);
        continue;
      }
      if (!seen.insert(known).second && !known->repeats) {
        Add(child.GetLineNum(), child_path, Severity::kWarning, name,
            "ignored: an element of this name stands above");
        continue;
      }
      if (known->IsOlder()) AddOlder(child, *known, element, child_path);
      CheckElement(child, *known, child_path);
    }
    AddMissing(element, model, path, seen);
  }

  // Paths begin below the sections of the root, which add nothing.
  static std::string PathOf(const std::string& parent, std::string_view name) {
    const bool is_section = parent.empty() || parent == "GLOBALPM" ||
                            parent == "GLOBALCONFIGURATION" || parent == "TEST_CONTROL_CFG" ||
                            parent == "WORKLOADS";
    return is_section ? std::string(name) : parent + "/" + std::string(name);
  }

  void AddUnknown(const XMLElement& element, const ElementModel& model, const std::string& path) {
    const std::string_view name = element.Name();
    const std::string place = PlaceOf(name, model_, "");
    if (!place.empty() && model.children.size() > 1 && PlaceOf(name, model, "-").empty()) {
      const bool is_common = model.record != nullptr;
      if (!is_common) {
        Add(element.GetLineNum(), path, Severity::kError, name, "misplaced, and not read here",
            "to stand in " + place);
        return;
      }
    }
    std::vector<std::string_view> names;
    for (const ElementModel& child : model.children) names.push_back(child.name);
    Add(element.GetLineNum(), path, Severity::kError, name, "unknown element, and not read", {},
        NearestOf(name, names));
  }

  void AddOlder(const XMLElement& element, const ElementModel& model, const XMLElement& parent,
                const std::string& path) {
    const bool has_effect = std::ranges::any_of(model.currents, [&](std::string_view current) {
      return parent.FirstChildElement(std::string(current).c_str()) == nullptr;
    });
    const bool is_alone = model.content == Content::kSwitch || has_effect;
    std::string current(model.currents.front());
    for (const std::string_view other : std::span(model.currents).subspan(1)) {
      current.append(" and ").append(other);
    }
    Add(element.GetLineNum(), path, Severity::kWarning, element.Name(),
        is_alone ? "older name" : "older name, ignored beside the current one", current, current);
  }

  void CheckAttributes(const XMLElement& element, const std::string& path) {
    if (std::string_view(element.Name()) == "arg") return;
    for (const tinyxml2::XMLAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next()) {
      Add(element.GetLineNum(), path, Severity::kWarning, a->Name(), "ignored attribute");
    }
  }

  void CheckStrayText(const XMLElement& element, const std::string& path) {
    for (const XMLNode* node = element.FirstChild(); node != nullptr; node = node->NextSibling()) {
      if (node->ToText() == nullptr) continue;
      const std::string_view text = TrimSpace(node->Value());
      if (text.empty()) continue;
      Add(node->GetLineNum(), path, Severity::kError, text, "text between elements, and not read");
    }
  }

  void CheckElement(const XMLElement& element, const ElementModel& model, const std::string& path) {
    switch (model.content) {
      case Content::kChildren:
        return CheckChildren(element, model, path);
      case Content::kArguments:
        return CheckArguments(element, model, path);
      case Content::kOption:
        return CheckOptionElement(element, model, path);
      case Content::kVersion:
        return CheckVersion(element, path);
      case Content::kSwitch:
        return CheckSwitch(element, path);
      case Content::kCounter:
        return;
      case Content::kItem:
        return CheckItem(element, model, path);
      case Content::kPairs:
        return CheckPairs(element, path);
      case Content::kTraces:
        return CheckTraces(element, path);
    }
  }

  // What the reader does not see: text behind a comment or an element.
  bool CheckLeaf(const XMLElement& element, const std::string& path) {
    const XMLNode* const first = element.FirstChild();
    if (first == nullptr) return true;
    for (const XMLElement& child : ChildElements(element)) {
      Add(child.GetLineNum(), path + "/" + child.Name(), Severity::kError, child.Name(),
          "element inside an option, and not read", "text");
    }
    if (first->ToText() != nullptr) return true;
    for (const XMLNode* node = first; node != nullptr; node = node->NextSibling()) {
      if (node->ToText() == nullptr || TrimSpace(node->Value()).empty()) continue;
      Add(node->GetLineNum(), path, Severity::kError, TrimSpace(node->Value()),
          "reads as empty: a comment or an element stands before the text", "the text first");
    }
    return false;
  }

  void AddFault(int line, const std::string& path, std::string_view text, const OptionRow& option,
                const Fault& fault) {
    std::string what(fault.what);
    if (fault.at > 0) what += " at " + std::to_string(fault.at);
    std::string expected(fault.expected);
    const std::string_view example = GetSyntax(option.syntax).example;
    if (!example.empty() && expected.find("for example") == std::string::npos) {
      expected += " (for example " + std::string(example) + ")";
    }
    std::vector<std::string_view> words;
    std::string_view rest = option.words;
    for (std::string_view word; TakeItem(rest, ';', word);) words.push_back(word);
    std::string_view wrong = text.substr(std::min(fault.at, text.size()));
    wrong = wrong.substr(0, wrong.find(';'));
    Add(line, path, Severity::kError, text, what, expected,
        words.empty() ? std::string() : NearestOf(TrimSpace(wrong), words));
  }

  void CheckText(int line, const std::string& path, std::string_view text,
                 const OptionRow& option) {
    if (const std::optional<Fault> fault = CheckOption(option, text)) {
      AddFault(line, path, text, option, *fault);
    }
  }

  void CheckOptionElement(const XMLElement& element, const ElementModel& model,
                          const std::string& path) {
    if (!CheckLeaf(element, path)) return;
    const std::string_view text = TrimmedText(element).value_or("");
    if (model.option->flag != nullptr) return CheckSwitch(element, path);
    if (!model.is_read && !text.empty()) {
      Add(element.GetLineNum(), path, Severity::kWarning, text, "written by the tool, never read");
    }
    CheckText(element.GetLineNum(), path, text, *model.option);
  }

  // Only the exact text switches on.
  void CheckSwitch(const XMLElement& element, const std::string& path) {
    const XMLNode* const child = element.FirstChild();
    const std::string_view text = child == nullptr ? "false" : child->Value();
    if (text == "true" || text == "false") return;
    Add(element.GetLineNum(), path, Severity::kError, text, "reads as false", "true or false",
        EqualsIgnoreCase(TrimSpace(text), "true") ? "true" : "");
  }

  void CheckItem(const XMLElement& element, const ElementModel& model, const std::string& path) {
    if (!CheckLeaf(element, path)) return;
    const std::string_view text = TrimmedText(element).value_or("");
    if (model.option != nullptr) CheckText(element.GetLineNum(), path, text, *model.option);
  }

  void CheckPairs(const XMLElement& element, const std::string& path) {
    CheckStrayText(element, path);
    for (const XMLElement& child : ChildElements(element)) {
      const std::string child_path = PathOf(path, child.Name());
      CheckAttributes(child, child_path);
      CheckLeaf(child, child_path);
    }
  }

  void CheckVersion(const XMLElement& element, const std::string& path) {
    const int line = element.GetLineNum();
    if (!CheckLeaf(element, path) || version_ == GetVersionText()) return;
    const std::string expected = GetVersionText();
    if (IsCompatibleVersion(version_)) {
      Add(line, path, Severity::kWarning, version_, "another version, read all the same", expected);
    } else {
      Add(line, path, Severity::kError, version_, "incompatible version", expected);
    }
  }

  void CheckArguments(const XMLElement& element, const ElementModel& model,
                      const std::string& path) {
    CheckStrayText(element, path);
    std::vector<std::string_view> names;
    for (const ElementModel& child : model.children) names.push_back(child.name);
    std::set<std::string_view> seen;
    for (const XMLElement& child : ChildElements(element)) {
      const int line = child.GetLineNum();
      if (std::string_view(child.Name()) != "arg") {
        Add(line, PathOf(path, child.Name()), Severity::kError, child.Name(),
            "unknown element, and not read", "arg with the attributes name and val");
        continue;
      }
      const char* const name = child.Attribute("name");
      if (name == nullptr) {
        Add(line, path, Severity::kError, "arg", "no name, and not read", "the attribute name");
        continue;
      }
      const std::string arg_path = path + "/" + name;
      const ElementModel* const known = FindChild(model, name);
      if (known == nullptr) {
        Add(line, arg_path, Severity::kError, name, "unknown argument, and not read", {},
            NearestOf(name, names));
      } else if (!seen.insert(known->name).second) {
        Add(line, arg_path, Severity::kWarning, name,
            "ignored: an argument of this name stands above");
      } else {
        CheckArgument(child, *known, arg_path);
      }
    }
  }

  void CheckArgument(const XMLElement& arg, const ElementModel& model, const std::string& path) {
    const char* const value = arg.Attribute("val");
    if (value != nullptr) return CheckText(arg.GetLineNum(), path, value, *model.option);
    const char* const range = arg.Attribute("randVal");
    Add(arg.GetLineNum(), path, Severity::kWarning, range == nullptr ? "" : range,
        "reads as empty: only val is read", "the attribute val");
  }

  void CheckTraces(const XMLElement& element, const std::string& path) {
    CheckStrayText(element, path);
    std::optional<TraceMigration> migration;
    try {
      migration.emplace(version_);
    } catch (const std::out_of_range&) {
      Add(element.GetLineNum(), path, Severity::kError, version_,
          "the file cannot be read: trace entries need a version of four pieces", GetVersionText());
    }
    for (const XMLElement& child : ChildElements(element)) {
      const std::string child_path = PathOf(path, child.Name());
      CheckAttributes(child, child_path);
      if (!CheckLeaf(child, child_path)) continue;
      const std::string entry(TrimmedText(child).value_or(""));
      if (!entry.empty() && migration) CheckTrace(child, entry, *migration, child_path);
    }
  }

  void CheckTrace(const XMLElement& element, const std::string& entry,
                  const TraceMigration& migration, const std::string& path) {
    const int line = element.GetLineNum();
    std::vector<std::string> current;
    try {
      migration.Append(entry, current);
    } catch (const std::out_of_range&) {
      Add(line, path, Severity::kError, entry, "the file cannot be read: malformed trace entry",
          "test_target_code, such as CSTATES_Core_Con:10");
      return;
    }
    if (current != std::vector<std::string>{entry}) {
      std::string joined = current.front();
      for (std::size_t i = 1; i < current.size(); ++i) joined += " and " + current[i];
      Add(line, path, Severity::kWarning, entry, "older form of a trace entry", joined, joined);
      return;
    }
    const std::string_view test = TrimBlanks(std::string_view(entry).substr(0, entry.find('_')));
    if (GetPMTestID(test, true) != PM_TEST_MAX || ParsePMTestID(test, true) != PM_TEST_MAX) return;
    std::vector<std::string_view> names;
    for (const ElementModel& known :
         FindChild(*FindChild(model_, "TEST_CONTROL_CFG"), "AutoRunCfg")->children) {
      names.push_back(known.name);
    }
    Add(line, path, Severity::kWarning, entry, "trace entry of an unknown test",
        "the name of a test", NearestOf(test, names));
  }

  // Options that a present element lacks read as empty, not as their defaults.
  void AddMissing(const XMLElement& element, const ElementModel& model, const std::string& path,
                  const std::set<const ElementModel*>& seen) {
    std::string missing;
    for (const ElementModel& child : model.children) {
      const OptionRow* const option = child.option;
      const bool reads_empty = option != nullptr && option->text != nullptr &&
                               option->flow == Flow::kReadWrite && option->take == Take::kAlways &&
                               option->fallback.empty() && option->settle == nullptr &&
                               !option->reset.empty();
      if (!reads_empty || seen.contains(&child)) continue;
      missing += (missing.empty() ? "" : ", ") + std::string(child.name);
    }
    if (!missing.empty()) {
      Add(element.GetLineNum(), path, Severity::kNote, missing,
          "absent, and read as empty, not as the default");
    }
  }

  FullRecords records_;
  ElementModel model_ = MakeDocumentModel(records_);
  std::string version_;
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
  std::ostringstream content;
  if (file) content << file.rdbuf();
  if (!file || !content) {
    return {{.line = 0,
             .path = {},
             .severity = Severity::kError,
             .text = path,
             .what = "cannot be read",
             .expected = "a configuration file",
             .suggestion = {}}};
  }
  return CheckXMLConfigText(content.view());
}

}  // namespace vexor
