// Error words of tests as text.
//
// A test reports its failures as one 32-bit word: the low 20 bits are categories of failures, the
// high 12 bits are details, whose meaning depends on the category and the test. Any thread may
// call.
//
//   GetErrorCode(PM_TEST_CSTATES, 0x80000004);  // " EC_CSTATE; EC_C1;"
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"
#include "vexor/vocabulary/pm_tests.h"

// Returns the tags of the word's bits, one after another, each with its own blanks and semicolons:
// tags of the system, of the configuration, then of the test. Empty text if no tag applies, as for
// 0. PM_TEST_FANSPEED_CTR, PM_TEST_ICE_PSTATES, PM_TEST_ICE_CSTATES, PM_TEST_FACT and all values
// outside 1 to 31 have no tags of their own but the tracing tag.
VEXOR_EXPORT std::string GetErrorCode(VEXOR_PM_TEST_ID test, unsigned int code);

// Returns the word without the failures to ignore. If the two words share no category, nothing is
// ignored. Otherwise the details of the mask are removed and, if no detail remains, its categories.
VEXOR_EXPORT unsigned int IgnoreErrorCode(unsigned int ignore_mask, unsigned int code);

namespace vexor {

struct ErrorTag {
  std::string_view tag;    // as in GetErrorCode, with its own blanks and semicolons
  std::uint32_t bits = 0;  // the bits of the word that the tag stands for
};

// Returns the tags that GetErrorCode joins, each with its bits.
VEXOR_EXPORT std::vector<ErrorTag> GetErrorTags(VEXOR_PM_TEST_ID test, unsigned int code);

// Returns all tags that GetErrorCode can give for the test, in its order, each with the bits that a
// word needs to have. GetErrorCode may still leave a tag out in favour of another one.
VEXOR_EXPORT std::vector<ErrorTag> ListErrorTags(VEXOR_PM_TEST_ID test);

}  // namespace vexor
