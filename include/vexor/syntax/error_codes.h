// The error word of a test, in words.
//
// A test reports its failures as one word of bits: the low 20 name categories of failures, the high
// 12 details, whose meaning depends on the category and on the test. Any thread may call.
//
//   GetErrorCode(PM_TEST_CSTATES, 0x80000004);  // " EC_CSTATE; EC_C1;"
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"
#include "vexor/vocabulary/pm_tests.h"

// Returns the tags of the word's bits, one behind the other, each with its own blanks and
// semicolons: those of the system, then of the configuration, then of the test. Empty text when no
// tag applies, as for 0. PM_TEST_FANSPEED_CTR, PM_TEST_ICE_PSTATES, PM_TEST_ICE_CSTATES,
// PM_TEST_FACT and every value outside 1 to 31 have the one tag of tracing for a test's own.
VEXOR_EXPORT std::string GetErrorCode(VEXOR_PM_TEST_ID test, unsigned int code);

// Returns the word without the failures to ignore. Nothing is ignored unless the two words share a
// category. Then the ignored details go, and the ignored categories go when no detail is left.
VEXOR_EXPORT unsigned int IgnoreErrorCode(unsigned int ignore_mask, unsigned int code);

namespace vexor {

struct ErrorTag {
  std::string_view tag;    // as GetErrorCode gives it, with its own blanks and semicolons
  std::uint32_t bits = 0;  // what the tag stands for; all of them are set in the word
};

// Returns the tags that GetErrorCode joins, each with its bits.
VEXOR_EXPORT std::vector<ErrorTag> GetErrorTags(VEXOR_PM_TEST_ID test, unsigned int code);

}  // namespace vexor
