// Diagnosis of option texts: severity, wording and suggestion of what is wrong or doubtful.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "config/tables/option_table.h"
#include "syntax/fault.h"
#include "vexor/config/syntaxes.h"

namespace vexor {

// Returns an error for a text that the option's parser rejects, a warning for one that it probably
// reads differently than meant, a note for an unknown word that may be a user's own, and nothing
// for any other text.
std::optional<TextFault> JudgeText(const OptionRow& option, std::string_view text);

struct FaultWording {
  std::string what;        // quotes the word or number at fault
  std::string expected;    // includes an example
  std::string suggestion;  // the whole text that was probably meant; may be empty
};

// Returns the texts of a one-line finding, which cannot mark the place of the fault.
FaultWording WordFault(const OptionRow& option, std::string_view text, const TextFault& fault);

// Overload for a fault found by `CheckOption`.
FaultWording WordFault(const OptionRow& option, std::string_view text, const Fault& fault);

}  // namespace vexor
