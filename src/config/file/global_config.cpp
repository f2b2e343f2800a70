#include "vexor/config/global_config.h"

#include <tinyxml2.h>

#include <cstdlib>
#include <fstream>

#include "config/file/element_walk.h"
#include "config/file/option_reader.h"
#include "config/file/version_rules.h"
#include "config/tables/custom_register_tables.h"
#include "config/tables/system_setup.h"
#include "platform/paths.h"
#include "util/read_stream.h"
#include "util/standard_output.h"
#include "vexor/config/element_access.h"
#include "vexor/util/ipv4.h"
#include "vexor/util/strings.h"
#include "vexor/util/version.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

void ReadPairs(const XMLElement& element, NamedValues& pairs) {
  for (const XMLElement& child : ChildElements(element)) {
    const std::string_view text = TextOf(child);
    if (!text.empty()) pairs.emplace_back(child.Name(), text);
  }
}

// Every list is taken as complete: it is emptied even when the file does not name it.
void ReadSystemLists(_GLOBALCONFIG_XMLCFG& cfg, const XMLElement& section) {
  for (const SystemListRow& row : kSystemLists) {
    const XMLElement* const list = FindElement(FindElement(&section, row.group), row.name);
    if (row.items != nullptr) {
      (cfg.*row.items).clear();
      if (list != nullptr) ReadItems(*list, kListItem, cfg.*row.items);
    } else {
      (cfg.*row.pairs).clear();
      if (list != nullptr) ReadPairs(*list, cfg.*row.pairs);
    }
  }
}

void ReadCustomTables(_CUSTOM_XMLCFG& cfg, const XMLElement& section) {
  for (const CustomTableRow& table : kCustomTables) {
    const XMLElement* const container = FindElement(&section, table.container);
    if (container == nullptr) continue;
    table.list.clear(cfg);
    for (const XMLElement& child : ChildElements(*container)) {
      if (table.item != child.Name()) continue;
      ConfigRecord& item = table.list.append(cfg);
      ReadOptions(child, table.options, item, &(item.*table.list.item_text));
    }
  }
}

void ReadSystemSetup(_GLOBALCONFIG_XMLCFG& cfg, const XMLElement& root) {
  if (const XMLElement* const overwrites = FindSection(&root, Section::kOverwrites)) {
    ReadOptions(*overwrites, kOverwriteOptions, cfg, &cfg.OverwriteCfg, Flatten::kWithoutDefaults);
  }
  if (const XMLElement* const settings = FindSection(&root, Section::kSettings)) {
    ReadOptions(*settings, kSettingOptions, cfg, &cfg.SETTING, Flatten::kWithoutDefaults);
  }
}

}  // namespace

void NormalizeHostIp(_GLOBALCONFIG_XMLCFG& cfg) {
  if (cfg.Host_IP_Config.empty()) cfg.Host_IP_Config = ReadHostIpFile();
  if (!IsIpv4Address(cfg.Host_IP_Config)) cfg.Host_IP_Config.clear();
}

void ResetGlobalConfig(_GLOBALCONFIG_XMLCFG& cfg) {
  cfg.Version = GetVersionText();
  for (const SystemListRow& row : kSystemLists) {
    if (row.items != nullptr) (cfg.*row.items).clear();
    if (row.pairs != nullptr) (cfg.*row.pairs).clear();
  }
  for (const CustomTableRow& table : kCustomTables) table.list.clear(cfg.CustomConfiguration);
  for (const OptionRow& knob : kKnobValues) cfg.KNOBS.emplace_back(knob.name, knob.reset);
  ResetOptions(kOverwriteOptions, cfg);
  ResetOptions(kSettingOptions, cfg);
  cfg.Host_IP_Config = ReadHostIpFile();
}

}  // namespace vexor

std::string ReadHostIpFile() {
  const char* const other = std::getenv("VEXOR_HOST_IP_FILE");
  std::ifstream file(other == nullptr ? vexor::platform::kHostIpFile : other);
  std::string line;
  vexor::ReadLine(file, line);
  if (line.ends_with('\r')) line.pop_back();
  return Trim(line);
}

bool GetGlobalCfgXML(_GLOBALCONFIG_XMLCFG& cfg, const tinyxml2::XMLElement* root,
                     bool verifyVersion) {
  if (root == nullptr) return false;
  cfg.Version = GetXMLText(root, vexor::NameOf(vexor::Section::kVersion).data(), "");
  cfg.LoopTracker = 1;
  if (cfg.Version != vexor::GetVersionText()) cfg.VersionMatch = false;
  if (verifyVersion && !vexor::IsCompatibleVersion(cfg.Version)) {
    vexor::StandardOutput() << "Invalid XML Version: " + cfg.Version + "\n";
    return false;
  }
  using vexor::Section;
  if (const auto* const lists = vexor::FindSection(root, Section::kSysConfiguration)) {
    vexor::ReadSystemLists(cfg, *lists);
  }
  if (const auto* const tables = vexor::FindSection(root, Section::kCustomConfiguration)) {
    vexor::ReadCustomTables(cfg.CustomConfiguration, *tables);
  }
  vexor::ReadSystemSetup(cfg, *root);
  return true;
}
