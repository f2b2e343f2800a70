// The grammars of option texts. To add one: an enumerator of Syntax, a row in syntax_table.cpp, and
// a check in syntax/checks.h.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "config/tables/option_table.h"
#include "config/texts/word_list.h"
#include "syntax/fault.h"

namespace vexor {

// One grammar. Only name and grammar are required; grammars that take any text or the words of the
// option's row have neither check nor invalid example.
struct SyntaxRow {
  Syntax syntax;
  std::string_view name;  // one word, as in "vexorcfg explain NAME"
  // In words, for people. "%w" is replaced by the words, "%u" by the units of time; see GrammarOf.
  std::string_view grammar;
  std::string_view example = {};                                   // a valid text
  std::string_view bad = {};                                       // an invalid text
  std::optional<Fault> (*check)(std::string_view text) = nullptr;  // null: any text is valid
  std::string (*meaning)(std::string_view text) = nullptr;  // null: the text needs no explanation
  const Expectation* words = nullptr;                       // the valid words, if any
  // Returns what is doubtful about a valid text: it is read, but probably not as it was meant.
  std::optional<Fault> (*doubt)(std::string_view text) = nullptr;
  // Regular expression that every valid text matches after whitespace normalisation; empty if none
  // is useful. "%w" stands for the words, "%n" for a number, "%r" for a ratio, "%u" for a unit of
  // time, and "%(...)" for text in any case.
  std::string_view pattern = {};
  std::string_view separators =
      {};  // lists: characters that separate items; the pattern is an item's
};

std::span<const SyntaxRow> Syntaxes();

const SyntaxRow& GetSyntax(Syntax syntax);

// Returns the grammar of that name, or null.
const SyntaxRow* FindSyntax(std::string_view name);

// Returns the description of the grammar with words and units filled in: "AC, DC or Default".
std::string_view GrammarOf(Syntax syntax);

// Returns the words that texts of a grammar, or of an option, consist of; may be empty.
Words GetWords(Syntax syntax);
Words GetWords(const OptionRow& option);

// Returns what is wrong with an option's text by its grammar and words. Empty text is always valid,
// because a missing option reads as empty.
std::optional<Fault> CheckOption(const OptionRow& option, std::string_view text);

// Returns what is doubtful about a valid text.
std::optional<Fault> DoubtOption(const OptionRow& option, std::string_view text);

}  // namespace vexor
