// The grammars of option texts: what each is called, how it reads, and the check behind it.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "config/option_table.h"
#include "config/word_list.h"
#include "syntax/fault.h"

namespace vexor {

struct SyntaxRow {
  Syntax syntax;
  std::string_view name;                                 // one word
  std::string_view grammar;                              // for a reader of the reference
  std::string_view example;                              // a good text
  std::optional<Fault> (*check)(std::string_view text);  // null where any text is good
  // What every good text looks like, with white space unified, as a regular expression; empty where
  // that says nothing. "%w" stands for the words of the grammar, "%n" for a number, "%r" for a
  // ratio and "%(...)" for words in any case.
  std::string_view pattern = {};
  std::string_view separators = {};  // of a list: what may stand between items of the pattern
  // What is doubtful about a good text: it is read, but probably otherwise than it was meant. Null
  // where nothing is.
  std::optional<Fault> (*doubt)(std::string_view text) = nullptr;
};

std::span<const SyntaxRow> Syntaxes();

const SyntaxRow& GetSyntax(Syntax syntax);

// Returns the words that the texts of a grammar, or of an option, are made of; none where these are
// no words.
Words GetWords(Syntax syntax);
Words GetWords(const OptionRow& option);

// Returns what is wrong with an option's text, by its grammar and its words. Empty text is good: a
// missing option reads as empty.
std::optional<Fault> CheckOption(const OptionRow& option, std::string_view text);

// Returns what is doubtful about a good text.
std::optional<Fault> DoubtOption(const OptionRow& option, std::string_view text);

}  // namespace vexor
