// Regular expressions for option texts, in the dialect of XML Schema.
#pragma once

#include <string>

#include "config/tables/option_table.h"

namespace vexor {

// Returns whether the option takes a single, case-sensitive word: an enumeration in the schema.
bool HasPlainWords(const OptionRow& option);

// Returns an expression that every valid text of the option matches after whitespace normalisation;
// empty for an option that takes any text. Some invalid texts match, too: not every grammar can be
// expressed as a regular expression, and only the checker is exact.
std::string MakePattern(const OptionRow& option);

}  // namespace vexor
