// The grammars of option texts: what each is called, how it reads, and the check behind it.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "config/option_table.h"
#include "syntax/fault.h"

namespace vexor {

struct SyntaxRow {
  Syntax syntax;
  std::string_view name;                                 // one word
  std::string_view grammar;                              // for a reader of the reference
  std::string_view example;                              // a good text
  std::optional<Fault> (*check)(std::string_view text);  // null where any text is good
};

std::span<const SyntaxRow> Syntaxes();

const SyntaxRow& GetSyntax(Syntax syntax);

// Returns what is wrong with an option's text, by its grammar and its words. Empty text is good: a
// missing option reads as empty.
std::optional<Fault> CheckOption(const OptionRow& option, std::string_view text);

}  // namespace vexor
