// The grammars of option texts. A new grammar is an enumerator of Syntax, a row of the table here,
// and a check in syntax/checks.h.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "config/tables/option_table.h"
#include "config/texts/word_list.h"
#include "syntax/fault.h"

namespace vexor {

// All that is known of a grammar. Only the name and the grammar are required; a grammar that takes
// any text, or the words of the option's own row, has no example and no check.
struct SyntaxRow {
  Syntax syntax;
  std::string_view name;  // one word, as in "vexorcfg explain NAME"
  // For a person. "%w" stands for the words and "%u" for the units of time; see GrammarOf.
  std::string_view grammar;
  std::string_view example = {};                                   // a valid text
  std::string_view bad = {};                                       // an invalid one
  std::optional<Fault> (*check)(std::string_view text) = nullptr;  // null: any text is valid
  std::string (*meaning)(std::string_view text) = nullptr;  // null: the text speaks for itself
  const Expectation* words = nullptr;                       // that texts are made of
  // What is doubtful about a valid text: it is read, but it probably means something else.
  std::optional<Fault> (*doubt)(std::string_view text) = nullptr;
  // Regular expression that every valid text matches after whitespace normalisation; empty if none
  // is useful. "%w" stands for the words, "%n" for a number, "%r" for a ratio, "%u" for a unit of
  // time, and "%(...)" for text in any case.
  std::string_view pattern = {};
  std::string_view separators = {};  // of a list: what may stand between items of the pattern
};

std::span<const SyntaxRow> Syntaxes();

const SyntaxRow& GetSyntax(Syntax syntax);

// Returns the grammar for a person, with the words and units written out: "AC, DC or Default".
std::string_view GrammarOf(Syntax syntax);

// Returns the words that texts of a grammar, or of an option, are made of; may be empty.
Words GetWords(Syntax syntax);
Words GetWords(const OptionRow& option);

// Returns what is wrong with an option's text, by its grammar and its words. Empty text is valid: a
// missing option reads as empty.
std::optional<Fault> CheckOption(const OptionRow& option, std::string_view text);

// Returns what is doubtful about a valid text.
std::optional<Fault> DoubtOption(const OptionRow& option, std::string_view text);

}  // namespace vexor
