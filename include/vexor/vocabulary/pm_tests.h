// The power-management tests that the suite knows, and their names.
//
// A test has an identifier, a long name ("CSTATES") for configuration files and summaries, and a
// short name ("cstate") for command lines and per-test options. Any thread may call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "vexor/export.h"

enum VEXOR_PM_TEST_ID : std::int32_t {
  PM_TEST_VEXOR = 0,  // the suite as a whole
  PM_TEST_CSTATES = 1,
  PM_TEST_HWP = 2,
  PM_TEST_PSTATES = 3,
  PM_TEST_TSTATES = 4,
  PM_TEST_SDC = 5,
  PM_TEST_GSTATES = 6,
  PM_TEST_PECI = 7,
  PM_TEST_IGFX_DVFS = 8,
  PM_TEST_IGFX_RC6 = 9,
  PM_TEST_DGFX_DVFS = 10,
  PM_TEST_DGFX_RC6 = 11,
  PM_TEST_DGFX_SAGV = 12,
  PM_TEST_DGFX_RESET = 13,
  PM_TEST_FANSPEED_CTR = 14,
  PM_TEST_GCD_RC6 = 15,
  PM_TEST_GCD_DVFS = 16,
  PM_TEST_SAMEDIA_RC6 = 17,
  PM_TEST_SAMEDIA_DVFS = 18,
  PM_TEST_VPU_DVFS = 19,
  PM_TEST_PS_DVFS = 20,
  PM_TEST_IS_DVFS = 21,
  PM_TEST_UFS = 22,
  PM_TEST_SAGV = 23,
  PM_TEST_PSF0_GV = 24,
  PM_TEST_MESH_GV = 25,
  PM_TEST_ICE_PSTATES = 26,
  PM_TEST_ICE_CSTATES = 27,
  PM_TEST_FACT = 28,
  PM_TEST_PCIE_LINK = 29,
  PM_TEST_PCIE_GEN_WIDTH = 30,
  PM_TEST_DX_STATES = 31,
  PM_TEST_TEST_CONTROL = 32,
  PM_TEST_ALL = 33,    // every test at once, on a command line
  PM_TEST_MAX = 34,    // the result of parsing an unknown name
  PM_TEST_START = 35,  // the start of a run
  PM_TEST_END = 36,    // the end of a run
};

// Returns the test with this long name, or with one of the older names "GT-DVFS" and "GT-RC6";
// PM_TEST_MAX for any other text. Case matters unless `ignore_case` is set, except for "dGFX-SAGV",
// which is always accepted in any case. "FANSPEED-CTR" is only displayed and not accepted.
VEXOR_EXPORT VEXOR_PM_TEST_ID GetPMTestID(std::string_view name, bool ignore_case);

// Returns the long name, "NA" for PM_TEST_ALL, PM_TEST_MAX and any value outside 0 to 36.
VEXOR_EXPORT std::string GetPMTestName(VEXOR_PM_TEST_ID id);

// Returns the short name, also for PM_TEST_ALL ("all") and PM_TEST_MAX ("max"); empty text for any
// value outside 0 to 36.
VEXOR_EXPORT const char* GetPMTestNameByID(int id);

// Returns the test with this short name; PM_TEST_MAX for "max" and any other text.
VEXOR_EXPORT VEXOR_PM_TEST_ID ParsePMTestID(std::string_view token, bool ignore_case);

// Returns whether one of the `argc` arguments selects a test ("/cstate", "/all"): it contains "/"
// and is, with all slashes removed, a short name other than "max" in lower case. The program's name
// is examined like any other argument; null arguments are ignored.
VEXOR_EXPORT bool HasPMTestId(char** argv, int argc);
