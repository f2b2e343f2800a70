// The syntaxes of option texts, and the options of a configuration file, for programs that tell
// people about them. Nothing is stated here twice: all of it comes from the tables that the library
// itself reads by.
//
//   CheckSyntax("time", "msec80");           // what is wrong with the text, and where
//   FindOptions("CSTATES/ActiveTime");       // one option: its meaning, syntax and default
//
// Any thread may call.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/config/check.h"
#include "vexor/export.h"

namespace vexor {

struct SyntaxInfo {
  std::string_view name;     // one word, such as "time"
  std::string_view grammar;  // for a reader
  std::string_view example;  // a good text; empty where only an option's words are good
};

struct TextFault {
  std::size_t at = 0;      // offset of the first wrong byte; the text's length at its end
  std::string what;        // what is wrong there
  std::string expected;    // what may stand there
  std::string suggestion;  // the whole text as it was probably meant; may be empty
  Severity severity = Severity::kError;
};

struct OptionInfo {
  std::string path;        // "GLOBALPM/CORE/CSTATES/ActiveTime"
  std::string_view about;  // one sentence
  // The name that command lines know it by, which is not always its own: "ExeCstates" for the
  // option "ExeStates" of "Ice-Cstates". Empty for what no command line reaches.
  std::string_view keyword;
  SyntaxInfo syntax;
  std::string_view words;  // known words joined by ";": all of "word" and "words", some of "knobs"
  std::string hint;        // the valid values as a written file shows them; may be empty
  std::string preset;      // its text when the file says nothing of the element it stands in
  std::string fallback;    // its text when only the option itself is missing
  std::string stands_for;  // of an older name: the current one
  bool repeats = false;    // may stand several times, one entry of a list each
  bool is_argument = false;  // the "name" of an "arg" element
  bool is_read = true;
  bool is_written = true;
};

// Returns all syntaxes.
VEXOR_EXPORT std::vector<SyntaxInfo> GetSyntaxes();

// Returns what is wrong with a text of the syntax of that name, and how much it weighs: an error is
// not read as it is written; a warning is read, but probably means something else; a note is a word
// that may be the user's own. Nothing for a good text, and for the syntaxes "word" and "words",
// which only an option makes exact. Empty text is good: it is what a missing option reads as. Any
// text is an error when no syntax has that name. CheckXMLConfig judges texts in the same way.
VEXOR_EXPORT std::optional<TextFault> CheckSyntax(std::string_view syntax, std::string_view text);

// The same for a text as the value of an option, whose words count.
VEXOR_EXPORT std::optional<TextFault> CheckOptionText(const OptionInfo& option,
                                                      std::string_view text);

// Returns what a valid text of the syntax of that name amounts to, for a person: "80 ms to 120 ms"
// for "msec:80-120". Texts that mean the same have the same description. Empty for empty text, for
// an invalid one, for an unknown syntax, and where texts speak for themselves.
VEXOR_EXPORT std::string DescribeText(std::string_view syntax, std::string_view text);

// Returns all elements and arguments that hold a text, older names included: section by section as
// a written file has them, and within a section in the order of the library's tables.
VEXOR_EXPORT std::vector<OptionInfo> GetOptions();

// Returns the options whose path has the name as a part: options of that name, and those that stand
// in elements of that name. Several parts may be given ("CSTATES/ActiveTime"), in any case. An
// option is also found by its keyword in place of its own name, and by the short name of command
// lines ("at") where no path has that as a part.
VEXOR_EXPORT std::vector<OptionInfo> FindOptions(std::string_view name);

// Returns the part of a path that a mistyped name most likely means; empty when none is near.
VEXOR_EXPORT std::string FindNearestOption(std::string_view name);

}  // namespace vexor
