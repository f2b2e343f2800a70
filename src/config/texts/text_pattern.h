// The grammars of option texts as regular expressions of an XML schema.
#pragma once

#include <string>

#include "config/tables/option_table.h"

namespace vexor {

// Returns whether the texts of the option are single words as they are written.
bool HasPlainWords(const OptionRow& option);

// Returns an expression that every good text of the option matches as a whole, once its white space
// is unified; empty for an option of any texts. Bad texts may match, too: where a grammar is more
// than an expression can say, the checker is the one to ask.
std::string MakePattern(const OptionRow& option);

}  // namespace vexor
