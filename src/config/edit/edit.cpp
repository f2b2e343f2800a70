#include "vexor/config/edit.h"

#include <tinyxml2.h>

#include <algorithm>
#include <cassert>
#include <iterator>
#include <memory>
#include <span>
#include <stdexcept>
#include <utility>

#include "config/check/shared_model.h"
#include "config/edit/option_paths.h"
#include "config/file/element_walk.h"
#include "config/file/reader.h"
#include "config/file/xml_document.h"
#include "config/model/document_model.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/system_setup.h"

namespace vexor {
namespace {

using Content = ElementModel::Content;

// The home of an option in a record; all null if the record has none.
struct Home {
  std::string* text = nullptr;
  bool* flag = nullptr;
  std::vector<std::string>* list = nullptr;  // the home of its entry `number`
  NamedValues* pairs = nullptr;              // the home of the value `name`
  VEXOR_PM_TEST_ID test = PM_TEST_MAX;       // the test that a switch belongs to
};

// The model points into `records`, which the caller owns.
ConfigRecord& WritableRecord(const ConfigRecord& record) {
  return const_cast<ConfigRecord&>(record);
}

// Returns the item of a register table that the number names; appends it if it is the next.
ConfigRecord* FindItem(const CustomTableRow& table, _CUSTOM_XMLCFG& custom, std::size_t number,
                       bool appends) {
  const std::size_t count = table.list.size(custom);
  if (number == 0 || number > count + (appends ? 1 : 0)) return nullptr;
  if (number > count) return &table.list.append(custom);
  return &WritableRecord(table.list.at(custom, number - 1));
}

Home FindListHome(const SystemListRow& list, _GLOBALCONFIG_XMLCFG& global) {
  Home home;
  if (list.items != nullptr) home.list = &(global.*list.items);
  if (list.pairs != nullptr) home.pairs = &(global.*list.pairs);
  return home;
}

Home FindOptionHome(const OptionRow& option, ConfigRecord& record) {
  Home home;
  if (option.text != nullptr) home.text = &(record.*option.text);
  if (option.flag != nullptr) home.flag = &(record.*option.flag);
  if (option.list != nullptr) home.list = &(record.*option.list);
  return home;
}

VEXOR_PM_TEST_ID FindSwitch(std::string_view name) {
  for (int id = kFirstAutoRunTest; id <= kLastAutoRunTest; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    if (GetPMTestName(test) == name) return test;
  }
  return PM_TEST_MAX;
}

// `steps` leads to a text. `appends` adds a register item that a number names as the next.
Home FindHome(std::span<const PathStep> steps, FullRecords& records, bool appends) {
  const PathStep& last = steps.back();
  const ElementModel* const parent = steps.size() > 1 ? steps[steps.size() - 2].model : nullptr;
  Home home;
  if (last.model == nullptr) {
    assert(parent != nullptr);  // no section is of any name
    if (parent->list != nullptr) return FindListHome(*parent->list, records.config.GlobalConfig);
    home.list = &records.config.TestControl.TestTraceCfg;
    return home;
  }
  if (last.model->content == Content::kVersion) {
    home.text = &records.config.GlobalConfig.Version;
  } else if (last.model->content == Content::kSwitch) {
    if (!last.model->IsOlder()) home.test = FindSwitch(last.name);
  } else if (last.model->list != nullptr) {
    if (last.model->content == Content::kItem) {
      return FindListHome(*last.model->list, records.config.GlobalConfig);
    }
  } else if (last.model->option != nullptr && parent != nullptr && !last.model->IsOlder()) {
    const PathStep& owner = steps[steps.size() - (last.model->content == Content::kItem ? 3 : 2)];
    const ElementModel* const table = steps.size() > 2 ? steps[steps.size() - 3].model : nullptr;
    if (owner.model->record != nullptr) {
      return FindOptionHome(*last.model->option, WritableRecord(*owner.model->record));
    }
    if (table == nullptr || table->table == nullptr) return home;
    ConfigRecord* const item = FindItem(
        *table->table, records.config.GlobalConfig.CustomConfiguration, owner.number, appends);
    if (item != nullptr) return FindOptionHome(*last.model->option, *item);
  }
  return home;
}

bool IsWorkload(const std::vector<PathStep>& steps) {
  return steps.front().name == NameOf(Section::kWorkloads);
}

std::optional<std::string> ReadHome(const Home& home, const PathStep& step,
                                    const _WL_CUSTOMERS_XMLCFG& control) {
  if (home.text != nullptr) return *home.text;
  if (home.flag != nullptr) return *home.flag ? "true" : "false";
  if (home.test != PM_TEST_MAX) return IsAutoRun(control, home.test) ? "true" : "false";
  if (home.list != nullptr) {
    if (step.number == 0 || step.number > home.list->size()) return std::nullopt;
    return (*home.list)[step.number - 1];
  }
  if (home.pairs == nullptr) return std::nullopt;
  const auto pair = std::ranges::find(*home.pairs, step.name, &NamedValues::value_type::first);
  return pair == home.pairs->end() ? std::nullopt : std::optional(pair->second);
}

bool WriteHome(const Home& home, const PathStep& step, std::string_view text,
               _WL_CUSTOMERS_XMLCFG& control) {
  if (home.text != nullptr) {
    *home.text = text;
  } else if (home.flag != nullptr) {
    *home.flag = text == "true";
  } else if (home.test != PM_TEST_MAX) {
    SetAutoRun(control, home.test, text == "true");
  } else if (home.list != nullptr) {
    if (step.number == 0 || step.number > home.list->size() + 1) return false;
    if (step.number > home.list->size()) home.list->emplace_back();
    (*home.list)[step.number - 1] = text;
  } else if (home.pairs != nullptr) {
    const auto pair = std::ranges::find(*home.pairs, step.name, &NamedValues::value_type::first);
    if (pair == home.pairs->end()) {
      home.pairs->emplace_back(step.name, text);
    } else {
      pair->second = text;
    }
  } else {
    return false;
  }
  return true;
}

}  // namespace

std::optional<std::string> GetOption(const _XML_FULL_CFG& cfg, std::string_view path) {
  const auto records = std::make_unique<FullRecords>();
  records->config = cfg;
  const ElementModel model = MakeDocumentModel(*records);
  const ResolvedPath resolved = ResolvePath(path, model);
  if (resolved.steps.empty() || IsWorkload(resolved.steps)) return std::nullopt;
  const Home home = FindHome(resolved.steps, *records, false);
  return ReadHome(home, resolved.steps.back(), cfg.TestControl);
}

bool SetOption(_XML_FULL_CFG& cfg, std::string_view path, std::string_view text) {
  const auto records = std::make_unique<FullRecords>();
  records->config = cfg;
  const ElementModel model = MakeDocumentModel(*records);
  const ResolvedPath resolved = ResolvePath(path, model);
  if (resolved.steps.empty() || IsWorkload(resolved.steps)) return false;
  const Home home = FindHome(resolved.steps, *records, true);
  if (!WriteHome(home, resolved.steps.back(), text, records->config.TestControl)) return false;
  cfg = std::move(records->config);
  return true;
}

FoundSettings FindSettings(const Description& description, std::string_view path) {
  const ResolvedPath resolved = ResolvePath(path, GetSharedModel().root);
  FoundSettings found;
  found.error = resolved.steps.empty() ? resolved.fault : RefuseOlderName(resolved);
  if (!found.error.empty()) return found;
  found.path = resolved.Join();
  std::ranges::copy_if(description.settings, std::back_inserter(found.settings),
                       [&found](const Setting& setting) {
                         return setting.path == found.path || ListOf(setting.path) == found.path ||
                                setting.path.starts_with(found.path + "/");
                       });
  return found;
}

std::string ReadXMLConfigText(std::string_view content, _XML_FULL_CFG& cfg) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  if (const std::optional<XmlRefusal> refusal = ParseXmlOrExplain(content, document)) {
    const std::string line =
        refusal->line > 0 ? "line " + std::to_string(refusal->line) + ": " : "";
    return line + refusal->what;
  }
  const tinyxml2::XMLElement* const root = FindRoot(document);
  if (root == nullptr) return "no root element VEXOR";
  GetGlobalCfgXML(cfg.GlobalConfig, root, false);
  try {
    ReadSections(*root, cfg);
  } catch (const std::out_of_range&) {
    return "a malformed trace entry, or trace entries without a version of four parts";
  }
  return {};
}

}  // namespace vexor
