#include "vexor/config/summaries.h"

#include <algorithm>
#include <cassert>
#include <iterator>

#include "config/tables/custom_register_tables.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/system_setup.h"
#include "util/text.h"

namespace vexor {
namespace {

// The order of the lines, which is neither that of the identifiers nor that of the file.
// PM_TEST_VPU_DVFS is left out on purpose.
constexpr VEXOR_PM_TEST_ID kSummaryOrder[] = {
    PM_TEST_CSTATES,     PM_TEST_PSTATES,      PM_TEST_HWP,
    PM_TEST_TSTATES,     PM_TEST_SDC,          PM_TEST_FACT,
    PM_TEST_ICE_CSTATES, PM_TEST_ICE_PSTATES,  PM_TEST_GSTATES,
    PM_TEST_PECI,        PM_TEST_IGFX_DVFS,    PM_TEST_IGFX_RC6,
    PM_TEST_DGFX_DVFS,   PM_TEST_DGFX_RC6,     PM_TEST_DGFX_SAGV,
    PM_TEST_DGFX_RESET,  PM_TEST_FANSPEED_CTR, PM_TEST_GCD_RC6,
    PM_TEST_GCD_DVFS,    PM_TEST_SAMEDIA_RC6,  PM_TEST_SAMEDIA_DVFS,
    PM_TEST_IS_DVFS,     PM_TEST_PS_DVFS,      PM_TEST_SAGV,
    PM_TEST_PSF0_GV,     PM_TEST_UFS,          PM_TEST_MESH_GV,
    PM_TEST_PCIE_LINK,   PM_TEST_DX_STATES,    PM_TEST_PCIE_GEN_WIDTH,
};

constexpr std::string_view kCustomOrder[] = {"MSR_CFG",  "PCIE_CFG",  "PMC-MMIO",  "GT-MMIO",
                                             "ISP-MMIO", "MMIO",      "P2SB-MMIO", "CRBCFG",
                                             "IOSFCFG",  "MailBoxCfg"};

std::string Opener(std::string_view name) { return "<" + std::string(name) + ">,"; }

std::string GroupOpener(std::string_view group) {
  return "<SysConfiguration><" + std::string(group) + ">,";
}

void AppendItems(std::string_view name, const std::vector<std::string>& items, std::string& line) {
  for (const std::string& item : items) line += "<" + std::string(name) + ">" + item + "  ";
}

std::string ItemsLine(std::string_view group, const std::vector<std::string>& config,
                      const std::vector<std::string>& setting) {
  std::string line = GroupOpener(group);
  AppendItems("CONFIG", config, line);
  AppendItems("SETTING", setting, line);
  return line;
}

// `unset` lists the values that count as not set, joined by ",".
bool IsSet(std::string_view value, std::string_view unset) {
  for (std::string_view word; TakeItem(unset, ',', word);) {
    if (value == word) return false;
  }
  return !value.empty();
}

std::string PairsLine(std::string_view group, std::initializer_list<const NamedValues*> lists,
                      std::string_view unset) {
  std::string line = GroupOpener(group);
  std::string_view separator;
  for (const NamedValues* const list : lists) {
    for (const auto& [name, value] : *list) {
      if (!IsSet(value, unset)) continue;
      line.append(separator).append("<").append(name).append(">").append(value);
      separator = "  ";
    }
  }
  return line;
}

std::string CustomLine(std::string_view name, const _CUSTOM_XMLCFG& custom) {
  const auto& table = *std::ranges::find(kCustomTables, name, &CustomTableRow::container);
  assert(&table != std::end(kCustomTables));
  std::string line = Opener(name);
  for (std::size_t i = 0; i < table.list.size(custom); ++i) {
    if (i > 0) line += ";  ";
    line += table.list.at(custom, i).*table.list.item_text;
  }
  return line;
}

}  // namespace
}  // namespace vexor

using namespace vexor;

std::vector<std::string> GetXMLPMTestsInfo(const _XML_FULL_CFG& cfg) {
  std::vector<std::string> lines;
  for (const VEXOR_PM_TEST_ID id : kSummaryOrder) {
    if (!IsAutoRun(cfg.TestControl, id)) continue;
    const PmTestRow* const test = FindPmTest(id);
    assert(test != nullptr);
    const _PM_TEST_NODE& record = test->const_record(cfg.GlobalPM);
    lines.push_back(Opener(test->name) + record.AllOptions);
  }
  return lines;
}

std::vector<std::string> GetXMLTestControlInfo(const _XML_FULL_CFG& cfg) {
  const _WL_CUSTOMERS_XMLCFG& control = cfg.TestControl;
  std::string tests = "<AutoRunCfg>,";
  for (int id = kFirstAutoRunTest; id <= kLastAutoRunTest; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    if (IsAutoRun(control, test)) tests += "<" + GetPMTestName(test) + ">true ";
  }
  std::string traces = "<TestTraceCfg>";
  for (const std::string& entry : control.TestTraceCfg) traces += ",<" + entry + ">";
  if (control.TestTraceCfg.empty()) traces += ",";
  return {tests, traces,
          "ExeMode=" + control.ExeMode + ";MaxWorkloads=" + control.MaxWorkloads +
              ";LoopNum=" + control.LoopNum};
}

std::vector<std::string> GetXMLGlobalConfigInfo(const _XML_FULL_CFG& cfg) {
  const _GLOBALCONFIG_XMLCFG& global = cfg.GlobalConfig;
  std::vector<std::string> lines = {
      Opener("OverwriteCfg") + global.OverwriteCfg,
      Opener("SystemSetup") + global.SETTING,
      ItemsLine("CORE", global.CORE_CONFIG, global.CORE_SETTING),
      ItemsLine("POWER", global.POWER_CONFIG, global.POWER_SETTING),
      PairsLine("UNCORE", {&global.UNCORE_CONFIG, &global.UNCORE_SETTING}, "Default"),
      PairsLine("GSTATES", {&global.GSTATES}, "Default"),
      PairsLine("OS", {&global.OS}, "Default"),
      PairsLine("KNOBS", {&global.KNOBS}, "Default,false"),
  };
  for (const std::string_view name : kCustomOrder) {
    lines.push_back(CustomLine(name, global.CustomConfiguration));
  }
  return lines;
}
