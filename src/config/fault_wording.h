// What a finding says about a fault in an option's text.
#pragma once

#include <string>
#include <string_view>

#include "config/option_table.h"
#include "syntax/fault.h"

namespace vexor {

struct FaultWording {
  std::string what;        // "unknown C-state at "C2""
  std::string expected;    // "C1, C3 or C6 (for example C1:5;C6:3)"
  std::string suggestion;  // the whole text as it was probably meant; may be empty
};

// Returns what to say of the fault that `CheckOption` found in the option's text.
FaultWording WordFault(const OptionRow& option, std::string_view text, const Fault& fault);

}  // namespace vexor
