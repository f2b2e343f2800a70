#include "vexor/config/test_control.h"

#include <tinyxml2.h>

#include "config/element_walk.h"
#include "config/option_reader.h"
#include "config/tables/test_control_table.h"
#include "config/trace_entries.h"
#include "vexor/config/element_access.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

bool IsAutoRunTest(int test) { return test >= kFirstAutoRunTest && test <= kLastAutoRunTest; }

void ReadAutoRun(_WL_CUSTOMERS_XMLCFG& control, const XMLElement& section) {
  const XMLElement* const switches = section.FirstChildElement("AutoRunCfg");
  if (switches == nullptr) return;
  for (int id = kFirstAutoRunTest; id <= kLastAutoRunTest; ++id) {
    const auto test = static_cast<VEXOR_PM_TEST_ID>(id);
    SetAutoRun(control, test, GetXMLBOOL(switches, GetPMTestName(test).c_str(), false));
  }
  for (const OlderAutoRunName& older : kOlderAutoRunNames) {
    if (IsAutoRun(control, older.test)) continue;
    SetAutoRun(control, older.test, GetXMLBOOL(switches, older.name.data(), false));
  }
}

void ReadTraces(_WL_CUSTOMERS_XMLCFG& control, const XMLElement& section,
                const std::string& version) {
  const XMLElement* const traces = section.FirstChildElement("TestTraceCfg");
  if (traces == nullptr) return;
  const TraceMigration migration(version);
  for (const XMLElement& child : ChildElements(*traces)) {
    const std::string entry(TrimmedText(child).value_or(""));
    if (!entry.empty()) migration.Append(entry, control.TestTraceCfg);
  }
}

void ReadWorkloadRunner(_WL_CUSTOMERS_XMLCFG& control, const XMLElement& section) {
  const XMLElement* runner = section.FirstChildElement("WorkloadCfg");
  if (runner == nullptr) runner = section.FirstChildElement("SETTING");  // older files
  if (runner != nullptr) ReadOptions(*runner, kWorkloadRunnerOptions, control, nullptr);
}

}  // namespace

bool IsAutoRun(const _WL_CUSTOMERS_XMLCFG& control, VEXOR_PM_TEST_ID test) {
  return IsAutoRunTest(test) && control.AutoRunCfg[static_cast<std::size_t>(test) - 1];
}

void SetAutoRun(_WL_CUSTOMERS_XMLCFG& control, VEXOR_PM_TEST_ID test, bool on) {
  if (IsAutoRunTest(test)) control.AutoRunCfg[static_cast<std::size_t>(test) - 1] = on;
}

void ResetTestControl(_WL_CUSTOMERS_XMLCFG& control) {
  control.Switch1 = control.Switch2 = false;
  control.AutoRunCfg.fill(false);
  control.Enable1 = control.Enable2 = true;
  control.TestTraceCfg.clear();
  ResetOptions(kWorkloadRunnerOptions, control);
}

}  // namespace vexor

bool GetTestControlXML(_WL_CUSTOMERS_XMLCFG& control, const tinyxml2::XMLElement* root,
                       std::string version) {
  vexor::ResetTestControl(control);
  const auto* const section =
      root == nullptr ? nullptr : root->FirstChildElement("TEST_CONTROL_CFG");
  if (section == nullptr) return false;
  vexor::ReadAutoRun(control, *section);
  vexor::ReadTraces(control, *section, version);
  vexor::ReadWorkloadRunner(control, *section);
  return true;
}
