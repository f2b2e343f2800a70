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
// semicolons; empty text for 0. A value that is no test of its own has the tags of tracing.
VEXOR_EXPORT std::string GetErrorCode(VEXOR_PM_TEST_ID test, unsigned int code);

// Returns the word without the failures to ignore. Nothing is ignored unless the two words share a
// category. Then the ignored details go, and an ignored category goes with the last of the details.
VEXOR_EXPORT unsigned int IgnoreErrorCode(unsigned int ignore_mask, unsigned int code);

namespace vexor {

struct ErrorTag {
  std::string_view tag;    // as GetErrorCode gives it, with its own blanks and semicolons
  std::uint32_t bits = 0;  // the tag is given when all of these are set
};

// Returns the tags that GetErrorCode joins, each with its bits.
VEXOR_EXPORT std::vector<ErrorTag> GetErrorTags(VEXOR_PM_TEST_ID test, unsigned int code);

}  // namespace vexor
