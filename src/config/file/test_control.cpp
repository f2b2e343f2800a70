#include "vexor/config/test_control.h"

#include <tinyxml2.h>

#include <algorithm>
#include <cassert>
#include <vector>

#include "config/file/element_walk.h"
#include "config/file/option_reader.h"
#include "config/file/trace_entries.h"
#include "config/tables/pm_test_table.h"
#include "config/tables/test_control_table.h"

namespace vexor {
namespace {

using tinyxml2::XMLElement;

// Element 0 of AutoRunCfg is the switch of the first identifier.
bool IsAutoRunTest(int test) { return test >= kFirstAutoRunTest && test <= kLastAutoRunTest; }

// A test switch: whether an element of its name was read, and whether the first one is true.
struct AutoRunSwitch {
  std::string name;
  bool is_read = false;
  bool is_true = false;
};
using AutoRunSwitches = std::vector<AutoRunSwitch>;

// Returns the switches of all tests in the order of their identifiers, then those of older names.
AutoRunSwitches MakeSwitches() {
  AutoRunSwitches switches;
  for (int id = kFirstAutoRunTest; id <= kLastAutoRunTest; ++id) {
    switches.push_back({.name = GetPMTestName(static_cast<VEXOR_PM_TEST_ID>(id))});
  }
  for (const PmTestRow& test : PmTests()) {
    const bool is_known =
        std::ranges::find(switches, test.older, &AutoRunSwitch::name) != switches.end();
    if (!test.older.empty() && !is_known) switches.push_back({.name = std::string(test.older)});
  }
  return switches;
}

// An older name only ever switches tests on, so that a file may have both names. One older name may
// stand for two tests.
void ReadAutoRun(_WL_CUSTOMERS_XMLCFG& control, const XMLElement& section) {
  AutoRunSwitches switches = MakeSwitches();
  RowFinder finder(switches, &AutoRunSwitch::name);
  for (const XMLElement& child : ChildElements(section)) {
    const std::size_t i = finder.Find(child.Name());
    if (i == switches.size() || switches[i].is_read) continue;
    switches[i].is_read = true;
    switches[i].is_true = IsTrue(child);
  }
  for (std::size_t i = 0; i < kLastAutoRunTest; ++i) control.AutoRunCfg[i] = switches[i].is_true;
  for (const PmTestRow& test : PmTests()) {
    if (test.older.empty()) continue;
    const auto older = std::ranges::find(switches, test.older, &AutoRunSwitch::name);
    assert(older != switches.end());  // MakeSwitches added it
    if (older->is_true) SetAutoRun(control, test.id, true);
  }
}

void ReadTraces(_WL_CUSTOMERS_XMLCFG& control, const XMLElement& section,
                const std::string& version) {
  const TraceMigration migration(version);
  for (const XMLElement& child : ChildElements(section)) {
    const std::string entry(TextOf(child));
    if (!entry.empty()) migration.Append(entry, control.TestTraceCfg);
  }
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

using namespace vexor;

bool GetTestControlXML(_WL_CUSTOMERS_XMLCFG& control, const tinyxml2::XMLElement* root,
                       const std::string& version) {
  ResetTestControl(control);
  if (FindSection(root, Section::kTestControl) == nullptr) return false;
  if (const auto* const switches = FindSection(root, Section::kAutoRun)) {
    ReadAutoRun(control, *switches);
  }
  if (const auto* const traces = FindSection(root, Section::kTestTraces)) {
    ReadTraces(control, *traces, version);
  }
  if (const auto* const runner = FindSection(root, Section::kWorkloadRunner)) {
    ReadOptions(*runner, kWorkloadRunnerOptions, control, nullptr);
  }
  return true;
}
