#include "vexor/config/test_control.h"

#include <tinyxml2.h>

#include <iterator>

#include "config/element_walk.h"
#include "config/option_reader.h"
#include "config/tables/test_control_table.h"
#include "config/trace_entries.h"
#include "vexor/config/element_access.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

bool IsAutoRunTest(int test) { return test >= kFirstAutoRunTest && test <= kLastAutoRunTest; }

// A name of "AutoRunCfg" and whether the first element of that name is true.
struct AutoRunSwitch {
  std::string name;
  bool is_read = false;
  bool is_true = false;
};

void ReadAutoRun(_WL_CUSTOMERS_XMLCFG& control, const XMLElement& section) {
  const XMLElement* const parent = section.FirstChildElement("AutoRunCfg");
  if (parent == nullptr) return;
  std::array<AutoRunSwitch, kLastAutoRunTest + std::size(kOlderAutoRunNames)> switches;
  for (std::size_t i = 0; i < switches.size(); ++i) {
    switches[i].name = i < kLastAutoRunTest ? GetPMTestName(static_cast<VEXOR_PM_TEST_ID>(i + 1))
                                            : kOlderAutoRunNames[i - kLastAutoRunTest].name;
  }
  RowFinder finder(switches, &AutoRunSwitch::name);
  for (const XMLElement& child : ChildElements(*parent)) {
    const std::size_t i = finder.Find(child.Name());
    if (i == switches.size() || switches[i].is_read) continue;
    switches[i].is_read = true;
    switches[i].is_true = IsTrue(child);
  }
  for (std::size_t i = 0; i < kLastAutoRunTest; ++i) control.AutoRunCfg[i] = switches[i].is_true;
  for (std::size_t i = 0; i < std::size(kOlderAutoRunNames); ++i) {
    if (!switches[kLastAutoRunTest + i].is_true) continue;
    for (const VEXOR_PM_TEST_ID test : kOlderAutoRunNames[i].tests) SetAutoRun(control, test, true);
  }
}

void ReadTraces(_WL_CUSTOMERS_XMLCFG& control, const XMLElement& section,
                const std::string& version) {
  const XMLElement* const traces = section.FirstChildElement("TestTraceCfg");
  if (traces == nullptr) return;
  const TraceMigration migration(version);
  for (const XMLElement& child : ChildElements(*traces)) {
    const std::string entry(TextOf(child));
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
                       const std::string& version) {
  vexor::ResetTestControl(control);
  const auto* const section =
      root == nullptr ? nullptr : root->FirstChildElement("TEST_CONTROL_CFG");
  if (section == nullptr) return false;
  vexor::ReadAutoRun(control, *section);
  vexor::ReadTraces(control, *section, version);
  vexor::ReadWorkloadRunner(control, *section);
  return true;
}
