// The error words and codes in the notes of failures.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/vocabulary/pm_tests.h"

namespace tools::vexorlog {

// Returns what failures of one kind have in common: their error words ("EC_CSTATE EC_C6") or,
// without any, the text with "#" for every number.
std::string KindOfFailure(std::string_view what);

// Returns the error words in a text, each once, in their order.
std::vector<std::string_view> FindErrorWords(std::string_view text);

// Returns the code with the fewest bits for which a test prints the word; nothing for a word that
// it never prints.
std::optional<std::uint32_t> FindErrorCode(VEXOR_PM_TEST_ID test, std::string_view word);

// Returns what a test's error codes in a text mean, and its error words that none of these codes
// stands for, one line each: "0x00200004: C-state error (EC_CSTATE): EC_C6",
// "EC_C6: C-state error, code 0x00200004".
std::vector<std::string> ExplainErrors(VEXOR_PM_TEST_ID test, std::string_view text);

}  // namespace tools::vexorlog
