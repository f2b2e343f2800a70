// The "TEST_CONTROL_CFG" section: which tests run automatically, what is traced, and the settings
// of the workload runner.
//
//   <TEST_CONTROL_CFG>
//     <AutoRunCfg> <CSTATES>true</CSTATES> ... </AutoRunCfg>
//     <TestTraceCfg> <Name>CSTATES_Core_Con:10</Name> ... </TestTraceCfg>
//     <WorkloadCfg> <ExeMode>CM</ExeMode> ... </WorkloadCfg>
//   </TEST_CONTROL_CFG>
//
// One thread at a time may use a record.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "vexor/config/config_record.h"
#include "vexor/export.h"
#include "vexor/vocabulary/pm_tests.h"

struct _WL_CUSTOMERS_XMLCFG : vexor::ConfigRecord {
  bool Switch1 = false;
  bool Switch2 = false;
  std::array<bool, 32> AutoRunCfg{};  // test ids 1 to 32, in order: entry 0 is id 1
  bool Enable1 = true;
  bool Enable2 = true;
  std::vector<std::string> TestTraceCfg;
  std::string Log_File_Name;
  std::string ExeMode;
  std::string MaxWorkloads;
  std::string Delay;
  std::string LoopNum;
};

// Resets the record, then reads the "TEST_CONTROL_CFG" child of `root`. Returns false and leaves
// the defaults if there is none or `root` is null. `version` is the version text of the file, which
// determines how older trace entries are converted. Throws std::out_of_range ("invalid vector<T>
// subscript") if there is a "TestTraceCfg" and the version has fewer than four parts, an entry has
// fewer than three fields, or its third field is empty or consists of ":" only.
VEXOR_EXPORT bool GetTestControlXML(_WL_CUSTOMERS_XMLCFG& control, const tinyxml2::XMLElement* root,
                                    const std::string& version);

namespace vexor {

inline constexpr int kFirstAutoRunTest = 1;
inline constexpr int kLastAutoRunTest = 32;

// Returns whether the test runs automatically; false for an id outside 1 to 32.
VEXOR_EXPORT bool IsAutoRun(const _WL_CUSTOMERS_XMLCFG& control, VEXOR_PM_TEST_ID test);

// Sets whether the test runs automatically; does nothing for an id outside 1 to 32.
VEXOR_EXPORT void SetAutoRun(_WL_CUSTOMERS_XMLCFG& control, VEXOR_PM_TEST_ID test, bool on);

// Sets the record to its defaults: no test runs, no trace entries, the runner's default texts.
VEXOR_EXPORT void ResetTestControl(_WL_CUSTOMERS_XMLCFG& control);

}  // namespace vexor
