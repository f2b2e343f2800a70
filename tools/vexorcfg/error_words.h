// Error codes and the tags of their bits.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "explanation.h"

namespace tools::vexorcfg {

// Returns the test of a long or short name, in any case; PM_TEST_MAX if there is none.
VEXOR_PM_TEST_ID FindTest(std::string_view name);

// Returns the long names of all tests.
std::vector<std::string> NamesOfTests();

// Returns a 32-bit decimal or 0x number; nothing for any other text.
std::optional<std::uint32_t> ParseErrorCode(const std::string& text);

// Explains a code of a test, or of all tests: one entry for tests of the same explanation.
ErrorCode ExplainCode(VEXOR_PM_TEST_ID test, std::uint32_t code);
std::vector<ErrorCode> ExplainCode(std::uint32_t code);

// Return the tags of a test, the names of all tags, and the tags of a name, in any case: one entry
// for tests in which it has the same bits.
std::vector<TagUse> TagsOf(VEXOR_PM_TEST_ID test);
std::vector<std::string> NamesOfTags();
std::vector<TagUse> FindTag(std::string_view name);
std::optional<TagUse> FindTagOf(VEXOR_PM_TEST_ID test, std::string_view name);

// Return why a name is not that of a test, and why a text is neither a code nor a tag of the test.
std::string RefuseTest(const std::string& name);
std::string RefuseError(VEXOR_PM_TEST_ID test, const std::string& text);

}  // namespace tools::vexorcfg
