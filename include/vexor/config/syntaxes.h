// The syntaxes of option texts and the options of a configuration file, for programs that explain
// them to people. All of it comes from the tables with which the library reads files.
//
//   CheckSyntax("time", "msec80");      // what is wrong with the text, and where
//   FindOptions("CSTATES/ActiveTime");  // an option's meaning, syntax and default
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
  std::string_view grammar;  // described in words
  std::string_view example;  // a valid text; empty if the valid words depend on the option
};

struct TextFault {
  std::size_t at = 0;      // offset of the first wrong byte; the text's size if its end is wrong
  std::string what;        // what is wrong there
  std::string expected;    // what would be valid there
  std::string suggestion;  // the whole text as it was probably meant; may be empty
  Severity severity = Severity::kError;
  std::string_view code;  // of its kind, as in Finding; see GetFindingCodes
};

struct OptionInfo {
  std::string path;        // "GLOBALPM/CORE/CSTATES/ActiveTime"
  std::string_view about;  // one sentence
  // The keyword of vexor/syntax/keywords.h that sets it on a command line. Mostly the option's own
  // name, but "ExeCstates" for the option "ExeStates" of "Ice-Cstates". Empty if there is none.
  std::string_view keyword;
  SyntaxInfo syntax;
  // Valid words joined by ";": all of them for the syntaxes "word" and "words", the known ones for
  // "knobs".
  std::string_view words;
  std::string hint;          // the valid values, as a comment of a written file; may be empty
  std::string preset;        // its text if the file lacks the element that encloses it
  std::string fallback;      // its text if the file has that element, but not the option
  std::string stands_for;    // the current name, if this is an older one
  bool repeats = false;      // may occur several times; each is one entry of a list
  bool is_argument = false;  // the "name" of an "arg" element
  bool is_read = true;
  bool is_written = true;
};

// Returns all syntaxes.
VEXOR_EXPORT std::vector<SyntaxInfo> GetSyntaxes();

// Returns the words that texts of the named syntax consist of, such as the units of a time. Empty
// for an unknown syntax, for one without words, and for "word" and "words", whose words depend on
// the option.
VEXOR_EXPORT std::vector<std::string_view> GetSyntaxWords(std::string_view syntax);

// Returns what is wrong with a text of the named syntax, and how serious it is: an error is not
// read as it is written; a warning is, but probably means something else; a note is a word that may
// be the user's own. Returns nothing for a valid text, for empty text (which is what a missing
// option reads as), and for the syntaxes "word" and "words", whose words depend on the option. Any
// text is an error if no syntax has the name. CheckXMLConfig judges texts in the same way.
VEXOR_EXPORT std::optional<TextFault> CheckSyntax(std::string_view syntax, std::string_view text);

// The same for a text as the value of an option, with the option's words.
VEXOR_EXPORT std::optional<TextFault> CheckOptionText(const OptionInfo& option,
                                                      std::string_view text);

// Returns in words what a valid text of the named syntax means: "80 ms to 120 ms" for
// "msec:80-120". Texts with the same meaning have the same description. Empty text for empty and
// invalid texts, for an unknown syntax, and for syntaxes whose texts need no description.
VEXOR_EXPORT std::string DescribeText(std::string_view syntax, std::string_view text);

// Returns whether two texts of the named syntax mean the same: they are equal, or both are valid
// and read as the same. An empty text means what it reads as, so "" and "Invalid" are the same
// time. Without such a syntax, only equal texts mean the same.
VEXOR_EXPORT bool MeanTheSame(std::string_view syntax, std::string_view a, std::string_view b);

// Returns all elements and arguments that hold a text, including older names: section by section in
// the order of a written file, and within a section in the order of the library's tables.
VEXOR_EXPORT std::vector<OptionInfo> GetOptions();

// Returns the options of this name, and the options inside elements of this name. The name may be
// several parts of a path ("CSTATES/ActiveTime"), in any case. An option is also found by its
// keyword instead of its own name and, if nothing else has the name, by the short name of command
// lines ("at").
VEXOR_EXPORT std::vector<OptionInfo> FindOptions(std::string_view name);

// Returns the name of an element or option that is most similar to a mistyped name; empty if none
// is similar.
VEXOR_EXPORT std::string FindNearestOption(std::string_view name);

}  // namespace vexor
