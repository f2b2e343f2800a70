// What there is to say of an option's text: what is wrong or doubtful about it, how much that
// weighs, and what was probably meant.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "config/tables/option_table.h"
#include "syntax/fault.h"
#include "vexor/config/syntaxes.h"

namespace vexor {

// Returns an error for a text that the option's parser does not read, a warning for one that it
// reads otherwise than was probably meant, and a note for a word that may be the user's own.
std::optional<TextFault> JudgeText(const OptionRow& option, std::string_view text);

struct FaultWording {
  std::string what;        // with the word or number that the fault lies in
  std::string expected;    // with an example
  std::string suggestion;  // the whole text as it was probably meant; may be empty
};

// Returns what a finding says of the fault, which stands in one line without a mark.
FaultWording WordFault(const OptionRow& option, std::string_view text, const TextFault& fault);

// The same of a fault that `CheckOption` found.
FaultWording WordFault(const OptionRow& option, std::string_view text, const Fault& fault);

}  // namespace vexor
