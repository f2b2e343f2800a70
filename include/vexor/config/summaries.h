// Summarise in short lines of text what a configuration will do. The functions only read the
// record: any thread may call while none changes it.
#pragma once

#include <string>
#include <vector>

#include "vexor/config/full_config.h"
#include "vexor/export.h"

// Returns one line for each test that runs: "<CSTATES>," and the test's options as its element had
// them. Does not list "Vpu-DVFS". Empty if no test runs.
VEXOR_EXPORT std::vector<std::string> GetXMLPMTestsInfo(const _XML_FULL_CFG& cfg);

// Returns three lines: the tests that run, the trace entries, the workload runner's settings.
VEXOR_EXPORT std::vector<std::string> GetXMLTestControlInfo(const _XML_FULL_CFG& cfg);

// Returns eighteen lines: the overwritten base addresses, the setup, the six configuration groups
// and the ten lists of custom registers. Empty sections have a line, too.
VEXOR_EXPORT std::vector<std::string> GetXMLGlobalConfigInfo(const _XML_FULL_CFG& cfg);
