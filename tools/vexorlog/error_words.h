// Finds and explains the error words and codes in the notes of failures.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/vocabulary/pm_tests.h"

namespace tools::vexorlog {

// Returns the kind of a failure: its error words ("EC_CSTATE EC_C6") or, if it has none, its text
// with "#" for every number.
std::string KindOfFailure(std::string_view what);

// Returns the error words in a text in order, each once.
std::vector<std::string_view> FindErrorWords(std::string_view text);

// Returns the code with the fewest bits for which a test reports the word; nothing for a word that
// it never reports.
std::optional<std::uint32_t> FindErrorCode(VEXOR_PM_TEST_ID test, std::string_view word);

// Explains the error codes in a text of a test, and the error words that none of these codes
// includes, one line each: "0x00200004: C-state error (EC_CSTATE): EC_C6",
// "EC_C6: C-state error, code 0x00200004".
std::vector<std::string> ExplainErrors(VEXOR_PM_TEST_ID test, std::string_view text);

}  // namespace tools::vexorlog
