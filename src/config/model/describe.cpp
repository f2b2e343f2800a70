#include "config/model/describe.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <unordered_set>

#include "config/file/element_walk.h"
#include "config/file/reader.h"
#include "config/file/trace_entries.h"
#include "config/file/version_rules.h"
#include "config/file/xml_document.h"
#include "config/file/xml_lint.h"
#include "config/model/document_model.h"
#include "config/model/element_path.h"
#include "config/model/unread_content.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/system_setup.h"
#include "util/text.h"
#include "vexor/config/overrides.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;
using tinyxml2::XMLElement;

// Returns the child element of an option: by its name, or by the name of an argument.
const XMLElement* FindOption(const XMLElement& element, const ElementModel& model,
                             std::string_view name) {
  const bool is_argument = model.content == Content::kArguments;
  for (const XMLElement& child : ChildElements(element)) {
    if (!is_argument && name == child.Name()) return &child;
    const char* const argument = is_argument ? child.Attribute("name") : nullptr;
    if (argument != nullptr && name == argument) return &child;
  }
  return nullptr;
}

bool HasText(const XMLElement* element) { return element != nullptr && !TextOf(*element).empty(); }

// Values come from the records that the reader filled, so that a description cannot differ from
// what was read; the document supplies lines and origins. Only trace entries are converted again,
// because the records do not show which element gave one entry or two.
class Describer {
 public:
  Describer(const FullRecords& records, DescribedDocument& described)
      : records_(records), described_(described), description_(described.description) {}

  void Describe(const tinyxml2::XMLDocument& document, const XMLElement& root);

 private:
  void Add(const std::string& path, std::string_view value, Origin origin,
           const XMLElement* element);
  std::string_view ReadText(const XMLElement& element);
  void DescribeChildren(const ElementModel& model, const XMLElement* element,
                        const std::string& path, Origin origin);
  void DescribeElement(const ElementModel& model, const ElementModel& parent,
                       const XMLElement* element, const std::string& path, Origin origin);
  void DescribeOption(const ElementModel& child, const ElementModel& parent,
                      const XMLElement* element, const std::string& path, Origin origin);

  // The element that an option's text was read from; null if the fallback was used.
  struct Source {
    const XMLElement* element;
    bool is_older = false;  // whether the element has an older name
  };

  static Source FindSource(const OptionRow& option, const ElementModel& parent,
                           const XMLElement& element);
  static Origin OriginOf(const OptionRow& option, std::string_view value, const Source& source,
                         Origin origin);
  void DescribeSwitch(const ElementModel& child, const ElementModel& parent,
                      const XMLElement* element, const std::string& path);
  static VEXOR_PM_TEST_ID GetSwitchTest(std::string_view name);
  void DescribeTexts(const std::vector<std::string>& texts, const XMLElement* list,
                     const std::string& path, std::string_view item, Origin origin);
  void DescribeTraces(const XMLElement* list, const std::string& path);
  void DescribeSystemList(const SystemListRow& row, const XMLElement* list,
                          const std::string& path);
  void DescribePairs(const NamedValues& pairs, const XMLElement* list, const std::string& path);
  void DescribeRegisters(const CustomTableRow& table, const XMLElement* list,
                         const std::string& path);

  const FullRecords& records_;
  DescribedDocument& described_;
  Description& description_;
  ReadMarks read_;
  std::unordered_set<const XMLElement*> arguments_;  // the elements whose children are arguments
};

void Describer::Describe(const tinyxml2::XMLDocument& document, const XMLElement& root) {
  const ElementModel model = MakeDocumentModel(records_);
  const XMLElement* const counter = FindSection(&root, Section::kLoopTracker);
  if (counter != nullptr && ParseUnsigned(TextOf(*counter))) read_.MarkText(*counter);
  if (const XMLElement* const version = FindSection(&root, Section::kVersion)) {
    read_.MarkText(*version);
    description_.version_line = version->GetLineNum();
  }
  for (const ElementModel& section : model.children) {
    if (section.content == Content::kVersion || section.content == Content::kCounter) continue;
    DescribeChildren(section, FindElement(&root, section.name), std::string(section.name),
                     Origin::kFile);
  }
  description_.unread = ListUnread(document, model, read_);
}

void Describer::Add(const std::string& path, std::string_view value, Origin origin,
                    const XMLElement* element) {
  Setting& setting = description_.settings.emplace_back();
  setting.path = path;
  setting.value = value;
  setting.origin = origin;
  described_.sources.push_back(element);
  if (element == nullptr) return;
  setting.line = element->GetLineNum();
  const std::string_view text = ReadText(*element);
  const bool is_false = value == "false" && EqualsIgnoreCase(text, value);
  if (text == value || is_false) return;
  setting.text = text;
  if (text == "true")
    setting.text = element->FirstChild()->Value();  // with the white space that makes it false
}

// Returns the element's text or the argument's value, and marks it as read.
std::string_view Describer::ReadText(const XMLElement& element) {
  const XMLElement* const parent = element.Parent()->ToElement();
  if (!arguments_.contains(parent)) {
    read_.MarkText(element);
    return TextOf(element);
  }
  read_.MarkArgument(element);
  const char* const value = element.Attribute("val");
  return value == nullptr ? "" : value;
}

void Describer::DescribeChildren(const ElementModel& model, const XMLElement* element,
                                 const std::string& path, Origin origin) {
  if (model.content == Content::kArguments) arguments_.insert(element);
  for (const ElementModel& child : model.children) {
    if (child.IsOlder()) continue;
    const std::string child_path = JoinPath(path, child.name);
    if (child.option != nullptr) {
      DescribeOption(child, model, element, child_path, origin);
    } else if (child.content == Content::kSwitch) {
      DescribeSwitch(child, model, element, child_path);
    } else if (child.content == Content::kTraces) {
      DescribeTraces(FindElement(element, child.name), child_path);
    } else if (child.list != nullptr) {
      DescribeSystemList(*child.list, FindElement(element, child.name), child_path);
    } else if (child.table != nullptr) {
      DescribeRegisters(*child.table, FindElement(element, child.name), child_path);
    } else {
      DescribeElement(child, model, element, child_path, origin);
    }
  }
}

// An element with an older name is described under its current name.
void Describer::DescribeElement(const ElementModel& model, const ElementModel& parent,
                                const XMLElement* element, const std::string& path, Origin origin) {
  const XMLElement* found = FindElement(element, model.name);
  for (const ElementModel& older : parent.children) {
    if (found != nullptr) break;
    if (!older.StandsFor(model.name)) continue;
    found = FindElement(element, older.name);
    if (found != nullptr) origin = Origin::kOlderName;
  }
  DescribeChildren(model, found, path, origin);
}

void Describer::DescribeOption(const ElementModel& child, const ElementModel& parent,
                               const XMLElement* element, const std::string& path, Origin origin) {
  const OptionRow& option = *child.option;
  if (option.list != nullptr) {
    const XMLElement* list = element;
    if (!option.item.empty()) list = FindElement(element, option.name);
    DescribeTexts(parent.record->*option.list, child.is_read ? list : nullptr,
                  option.item.empty() ? path : JoinPath(path, option.item),
                  option.item.empty() ? option.name : option.item, origin);
    return;
  }
  if (!child.is_read || option.overwrite != Overwrite::kAlways) return;
  const std::string value = option.flag != nullptr
                                ? std::string(parent.record->*option.flag ? "true" : "false")
                                : parent.record->*option.text;
  if (element == nullptr) return Add(path, value, Origin::kDefault, nullptr);
  const Source source = FindSource(option, parent, *element);
  Add(path, value, OriginOf(option, value, source, origin), source.element);
}

Describer::Source Describer::FindSource(const OptionRow& option, const ElementModel& parent,
                                        const XMLElement& element) {
  Source source{FindOption(element, parent, option.name)};
  for (const ElementModel& other : parent.children) {
    if (other.option == nullptr || other.option == &option || option.text == nullptr ||
        other.option->text != option.text) {
      continue;
    }
    const XMLElement* const second = FindOption(element, parent, other.option->name);
    const bool wins = other.option->overwrite == Overwrite::kIfGiven
                          ? HasText(second)
                          : second != nullptr && !HasText(source.element);
    if (wins) source = {second, other.option->overwrite == Overwrite::kIfEmpty};
  }
  // An element without text reads as the fallback.
  const bool falls_back = !option.fallback.empty() && source.element != nullptr &&
                          !TrimmedText(*source.element).has_value();
  return falls_back ? Source{nullptr} : source;
}

// `origin` is the origin of texts that were read from the element.
Origin Describer::OriginOf(const OptionRow& option, std::string_view value, const Source& source,
                           Origin origin) {
  if (source.element == nullptr && value.empty()) return Origin::kMissing;
  const std::string_view text =
      source.element == nullptr ? option.fallback : TextOf(*source.element);
  if (option.adjust.run != nullptr && value != text) return Origin::kDerived;
  if (source.element == nullptr) return Origin::kDefault;
  return source.is_older ? Origin::kOlderName : origin;
}

void Describer::DescribeSwitch(const ElementModel& child, const ElementModel& parent,
                               const XMLElement* element, const std::string& path) {
  const VEXOR_PM_TEST_ID test = GetSwitchTest(child.name);
  const bool runs = IsAutoRun(records_.config.TestControl, test);
  const XMLElement* source = FindElement(element, child.name);
  Origin origin = Origin::kFile;
  bool is_on = source != nullptr && IsTrue(*source);
  for (const ElementModel& older : parent.children) {
    const XMLElement* const second =
        older.StandsFor(child.name) ? FindElement(element, older.name) : nullptr;
    if (is_on || second == nullptr || (source != nullptr && !IsTrue(*second))) continue;
    source = second;
    origin = Origin::kOlderName;
    is_on = IsTrue(*second);
  }
  // CheckLegacyLxDx may have switched the test off.
  if (is_on != runs) origin = Origin::kCorrected;
  Add(path, runs ? "true" : "false", source == nullptr ? Origin::kDefault : origin, source);
}

VEXOR_PM_TEST_ID Describer::GetSwitchTest(std::string_view name) {
  int id = kFirstAutoRunTest;
  while (id < kLastAutoRunTest && GetPMTestName(static_cast<VEXOR_PM_TEST_ID>(id)) != name) ++id;
  return static_cast<VEXOR_PM_TEST_ID>(id);
}

// Describes the texts of a list. Texts and non-empty elements correspond in order.
void Describer::DescribeTexts(const std::vector<std::string>& texts, const XMLElement* list,
                              const std::string& path, std::string_view item, Origin origin) {
  const XMLElement* element = list == nullptr ? nullptr : list->FirstChildElement();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    while (element != nullptr && (item != element->Name() || !HasText(element))) {
      element = element->NextSiblingElement();
    }
    Add(EntryPath(path, i + 1), texts[i], element == nullptr ? Origin::kDefault : origin, element);
    if (element != nullptr) element = element->NextSiblingElement();
  }
}

// An entry of an older file may become two entries.
void Describer::DescribeTraces(const XMLElement* list, const std::string& path) {
  if (list == nullptr) return;
  const TraceMigration migration(records_.config.GlobalConfig.Version);
  std::size_t count = 0;
  for (const XMLElement& child : ChildElements(*list)) {
    const std::string entry(TextOf(child));
    std::vector<std::string> currents;
    if (!entry.empty()) migration.Append(entry, currents);
    for (const std::string& current : currents) {
      Add(EntryPath(JoinPath(path, kTraceEntry), ++count), current,
          current == entry ? Origin::kFile : Origin::kCorrected, &child);
    }
  }
}

void Describer::DescribeSystemList(const SystemListRow& row, const XMLElement* list,
                                   const std::string& path) {
  const _GLOBALCONFIG_XMLCFG& global = records_.config.GlobalConfig;
  if (row.items != nullptr) {
    DescribeTexts(global.*row.items, list, JoinPath(path, kListItem), kListItem, Origin::kFile);
  } else {
    DescribePairs(global.*row.pairs, list, path);
  }
}

void Describer::DescribePairs(const NamedValues& pairs, const XMLElement* list,
                              const std::string& path) {
  const XMLElement* element = list == nullptr ? nullptr : list->FirstChildElement();
  for (const auto& [name, value] : pairs) {
    while (element != nullptr && !HasText(element)) element = element->NextSiblingElement();
    Add(JoinPath(path, name), value, element == nullptr ? Origin::kDefault : Origin::kFile,
        element);
    if (element != nullptr) element = element->NextSiblingElement();
  }
}

void Describer::DescribeRegisters(const CustomTableRow& table, const XMLElement* list,
                                  const std::string& path) {
  const _CUSTOM_XMLCFG& custom = records_.config.GlobalConfig.CustomConfiguration;
  const std::string item(table.item);
  const XMLElement* element = list == nullptr ? nullptr : list->FirstChildElement(item.c_str());
  for (std::size_t i = 0; i < table.list.size(custom); ++i) {
    const ConfigRecord& record = table.list.at(custom, i);
    const std::string item_path = EntryPath(JoinPath(path, item), i + 1);
    for (const OptionRow& option : table.options) {
      const XMLElement* const source = FindElement(element, option.name);
      Add(JoinPath(item_path, option.name), record.*option.text,
          source == nullptr ? Origin::kMissing : Origin::kFile, source);
    }
    if (element != nullptr) element = element->NextSiblingElement(item.c_str());
  }
}

// Sets the error to the malformed trace entry or version. The reader's exception does not name it,
// so the entries are converted once more.
void ExplainTraces(const XMLElement& root, Description& description) {
  const XMLElement* at = FindSection(&root, Section::kTestTraces);
  if (at == nullptr) return;
  description.error =
      std::string("trace entries need a version of four pieces, expected ") + GetVersionText();
  try {
    const TraceMigration migration(description.version);
    std::vector<std::string> currents;
    for (const XMLElement& child : ChildElements(*at)) {
      const std::string entry(TextOf(child));
      at = &child;
      description.error = "malformed trace entry \"" + ShortenName(entry) +
                          "\", expected test_target_code, such as CSTATES_Core_Con:10";
      if (!entry.empty()) migration.Append(entry, currents);
    }
  } catch (const std::out_of_range&) {
    description.error_line = at->GetLineNum();
  }
}

// Adds what the XML library drops while parsing. It leaves no trace in the document, so the text
// has to be scanned once more.
void AddWhatIsNotParsed(std::string_view content, std::vector<Unread>& unread) {
  const XmlLint lint = LintXml(content);
  for (const XmlFault& fault : lint.faults) {
    if (fault.kind != FindingKind::kDroppedXml) continue;
    unread.push_back(
        {.kind = UnreadKind::kMarkup, .line = fault.line, .path = {}, .text = fault.text});
  }
  std::ranges::stable_sort(unread, {}, &Unread::line);
  if (!lint.stop) return;
  unread.push_back(
      {.kind = UnreadKind::kRest, .line = lint.stop->line, .path = {}, .text = lint.stop->what});
}

}  // namespace

void DescribeDocument(std::string_view content, const std::vector<_PM_TEST_CONFIG_NODE>& overrides,
                      DescribedDocument& described) {
  Description& description = described.description;
  if (const std::optional<XmlRefusal> refusal = ParseXmlOrExplain(content, described.document)) {
    description.error = refusal->what;
    if (!refusal->expected.empty()) description.error += ", expected " + refusal->expected;
    description.error_line = refusal->line;
    return;
  }
  const XMLElement* const root = FindRoot(described.document);
  if (root == nullptr) {
    const XMLElement* const other = described.document.FirstChildElement();
    description.error = "no root element VEXOR";
    if (other == nullptr) return;
    description.error = "wrong root " + ShortenName(other->Name()) + ", expected VEXOR";
    description.error_line = other->GetLineNum();
    return;
  }
  const auto records = std::make_unique<FullRecords>();
  ResetVexorXmlConfiguration(records->config);
  // The steps of ReadXMLPar on the document that was parsed above, without version checks.
  GetGlobalCfgXML(records->config.GlobalConfig, root, false);
  description.version = records->config.GlobalConfig.Version;
  description.is_compatible = IsCompatibleVersion(description.version);
  try {
    ReadSections(*root, records->config);
  } catch (const std::out_of_range&) {
    ExplainTraces(*root, description);
    return;
  }
  for (const _PM_TEST_CONFIG_NODE& node : overrides) ApplyTestOptions(records->config, node);
  GetWorkLoadsXML(records->workloads, root);
  Describer(*records, described).Describe(described.document, *root);
  AddWhatIsNotParsed(content, description.unread);
}

Description DescribeXMLConfigText(std::string_view content) {
  return DescribeXMLConfigText(content, {});
}

Description DescribeXMLConfigText(std::string_view content,
                                  const std::vector<_PM_TEST_CONFIG_NODE>& overrides) {
  DescribedDocument described;
  DescribeDocument(content, overrides, described);
  return std::move(described.description);
}

}  // namespace vexor
