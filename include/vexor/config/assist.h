// Assists whoever types a configuration, for editors: what stands at a place of a document, what
// may be inserted there, the outline, and repairs of findings. It comes from the tables and
// grammars of the reader and the checker.
//
//   for (const vexor::Completion& c : vexor::CompleteText(content, at).items) { ... c.label ... }
//
// Documents may be half-typed or broken: an element that is not closed ends with its parent, and an
// end tag without a begin counts for nothing. A place is an offset in bytes; one behind the end
// counts as the end. The functions take time linear in the document, throw only std::bad_alloc, and
// any thread may call them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/config/check.h"
#include "vexor/config/syntaxes.h"
#include "vexor/export.h"

namespace vexor {

// A range of bytes of the document.
struct TextRange {
  std::size_t begin = 0;
  std::size_t end = 0;
};

struct TextReplacement {
  TextRange range;  // empty to insert
  std::string text;
};

// Returns whether the document is a configuration, or may become one: its root element is VEXOR or
// has a similar name, or there is none yet. Editors open other XML as well.
VEXOR_EXPORT bool MayBeConfiguration(std::string_view content);

// Does what CheckXMLConfigText does, and goes on behind unfinished tags and missing end tags, where
// that function ends. Nothing is reported as missing then, since it may be typed next.
VEXOR_EXPORT std::vector<Finding> CheckTypedText(std::string_view content,
                                                 const CheckLimits& limits = {});

// What an element, or a text in it, means.
struct ElementInfo {
  TextRange range;              // the name or the text that the place is in
  std::string name = {};        // as it is written; of an argument, its attribute "name"
  std::string path = {};        // "GLOBALPM/CORE/CSTATES/ActiveTime", with the current names
  std::string about = {};       // one sentence; empty if nothing is known
  std::string stands_for = {};  // the current names, joined by ", ", if this is an older one
  std::optional<OptionInfo> option = {};  // if the element holds the text of an option
  std::string text = {};                  // of the option, without white space around it
  std::string meaning = {};             // "80 ms to 120 ms"; empty if the text needs no description
  std::optional<TextFault> fault = {};  // what is wrong with the text
};

// Returns what stands at the place, which is in a tag, in an attribute or in a text of an element.
// Returns nothing elsewhere, and for elements that no configuration has there.
VEXOR_EXPORT std::optional<ElementInfo> FindElementAt(std::string_view content, std::size_t at);

enum class CompletionKind : std::int32_t {
  kSection,  // an element that holds elements
  kOption,   // an element or an argument that holds a text
  kEndTag,
  kWord,     // a word of the grammar
  kExample,  // a whole text: the default, or an example of the grammar
  kCode,     // a code of the checker, in a comment that allows it
};

struct Completion {
  CompletionKind kind = CompletionKind::kWord;
  std::string label;       // what a list shows: "ActiveTime", "msec"
  std::string text;        // replaces the range: "<ActiveTime></ActiveTime>"
  std::size_t cursor = 0;  // offset in `text` where typing goes on
  std::string detail;      // a few words: the default, or the grammar; may be empty
  std::string about;       // a sentence or more; may be empty
};

struct Completions {
  TextRange range;  // what each item replaces: what is typed already of an element or a word
  std::vector<Completion> items;  // the most likely first
};

// Returns what may stand at the place: elements that their parent does not have yet, or may have
// several times; the end tag of the element that is open; words of the grammar. Not only what
// begins like the text in the range: choosing among the items is the editor's. No items if nothing
// is known, as in a free text.
VEXOR_EXPORT Completions CompleteText(std::string_view content, std::size_t at);

// An element or a comment of a document.
struct OutlineItem {
  std::string name;  // of the element, or of the argument; empty for a comment
  std::string text;  // of an element without children; shortened if it is long
  TextRange range;   // the whole element, with its tags
  TextRange name_range;
  int depth = 0;  // 0 for the root
  bool is_comment = false;
  bool holds_elements = false;
};

// Returns the elements and comments in the order of the document.
VEXOR_EXPORT std::vector<OutlineItem> OutlineText(std::string_view content);

struct TextRepair {
  std::string title;                          // an imperative: "Change to 'ActiveTime'"
  std::vector<TextReplacement> replacements;  // in the order of the document, without overlap
  bool is_sure = false;                       // whether FixText or MigrateText would do it as well
};

// Returns the repairs of a finding in this document, the most likely first: what the checker
// suggests; for a name or a form of older versions, the migration of the document; and a comment
// that allows the finding in its element.
VEXOR_EXPORT std::vector<TextRepair> FindRepairs(std::string_view content, const Finding& finding);

// Returns the replacements that turn one text into the other: the smallest range of lines that
// holds all differences. None if they are equal.
VEXOR_EXPORT std::vector<TextReplacement> FindReplacements(std::string_view before,
                                                           std::string_view after);

}  // namespace vexor
