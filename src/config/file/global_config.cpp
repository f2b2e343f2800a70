#include "vexor/config/global_config.h"

#include <tinyxml2.h>

#include <cassert>
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

// Once the section is present, lists that are absent from it are emptied, too.
void ReadSystemLists(_GLOBALCONFIG_XMLCFG& cfg, const XMLElement& section) {
  for (const SystemListRow& row : kSystemLists) {
    const XMLElement* const list = FindElement(FindElement(&section, row.group), row.name);
    assert((row.items == nullptr) != (row.pairs == nullptr));
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

using namespace vexor;

std::string ReadHostIpFile() {
  const char* const other = std::getenv("VEXOR_HOST_IP_FILE");
  std::ifstream file(other == nullptr ? platform::kHostIpFile : other);
  std::string line;
  ReadLine(file, line);
  if (line.ends_with('\r')) line.pop_back();
  return Trim(line);
}

bool GetGlobalCfgXML(_GLOBALCONFIG_XMLCFG& cfg, const tinyxml2::XMLElement* root,
                     bool verifyVersion) {
  if (root == nullptr) return false;
  cfg.Version = GetXMLText(root, NameOf(Section::kVersion).data(), "");
  cfg.LoopTracker = 1;
  if (cfg.Version != GetVersionText()) cfg.VersionMatch = false;
  if (verifyVersion && !IsCompatibleVersion(cfg.Version)) {
    StandardOutput() << "Invalid XML Version: " + cfg.Version + "\n";
    return false;
  }
  if (const auto* const lists = FindSection(root, Section::kSysConfiguration)) {
    ReadSystemLists(cfg, *lists);
  }
  if (const auto* const tables = FindSection(root, Section::kCustomConfiguration)) {
    ReadCustomTables(cfg.CustomConfiguration, *tables);
  }
  ReadSystemSetup(cfg, *root);
  return true;
}
