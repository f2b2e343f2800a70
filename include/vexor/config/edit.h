// Changes configurations: one option of a record by its path, and the text of a document in place.
//
// Editing in place changes only the bytes of the option: comments, blanks, attributes, the order of
// elements, line ends and encoding stay as they are.
//
//   vexor::EditedText edited = vexor::SetOptionInText(content, "CSTATES/ActiveTime", "msec:80");
//   if (edited.error.empty()) ... edited.content ...
//
// A path is that of vexor/config/describe.h, "GLOBALPM/CORE/CSTATES/ActiveTime", or the end of it
// if no other path ends so, in any case. Entries of lists have numbers: "TestTraceCfg/Name[2]". Any
// thread may call these functions; one thread at a time may use a record.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/config/describe.h"
#include "vexor/config/full_config.h"
#include "vexor/export.h"

namespace vexor {

// Returns the text of an option in the record, "true" or "false" for a switch. Returns nothing if
// the record keeps no option of this path. Workloads are not part of the record.
VEXOR_EXPORT std::optional<std::string> GetOption(const _XML_FULL_CFG& cfg, std::string_view path);

// Sets an option in the record and returns whether the record keeps one of this path. The text is
// not checked (see CheckOptionText); a switch is true for "true" alone. The number after the last
// one appends an entry to a list. Does not derive options from others, as the reader does.
VEXOR_EXPORT bool SetOption(_XML_FULL_CFG& cfg, std::string_view path, std::string_view text);

// Reads a document as ReadXMLPar reads a file without verifying its version, and prints nothing.
// Returns empty text, or the reason why it cannot be read; the record may then be changed in part.
// Throws only std::bad_alloc.
VEXOR_EXPORT std::string ReadXMLConfigText(std::string_view content, _XML_FULL_CFG& cfg);

struct FoundSettings {
  std::string path;               // the whole path
  std::vector<Setting> settings;  // empty if the path is known but nothing is set there
  std::string error;              // what is wrong with the path; empty if nothing is
};

// Returns the settings of a path: one for an option, one for each entry of a list, all of a
// section.
VEXOR_EXPORT FoundSettings FindSettings(const Description& description, std::string_view path);

// One change of a text.
struct TextChange {
  int line = 0;      // in the text before all changes
  std::string path;  // of the element; that of its current name
  std::string what;  // "set", "added", "renamed", ...
  std::string before;
  std::string after;
};

struct EditedText {
  std::string content;  // the whole text with the changes
  std::vector<TextChange> changes;
  std::string error;    // why nothing was changed; empty if it was possible
  int error_line = 0;   // 0 for the text as a whole
  std::string warning;  // what is doubtful about the value; empty if nothing is
};

struct EditLimits {
  bool force = false;  // sets a value that its grammar refuses, removes an element with comments
};

// Sets one option in the text of a document. An element that is missing is added in its place, with
// the defaults of its section if the section is missing, so that no other setting changes. Reading
// the result gives the value for the path, and for all other paths what they were, or there is an
// error: for an unknown path, with the most similar name; for a value that its grammar refuses; for
// XML that a strict parser refuses; and if the value cannot be set without changing others.
VEXOR_EXPORT EditedText SetOptionInText(std::string_view content, std::string_view path,
                                        std::string_view value, const EditLimits& limits = {});

// Removes the element of an option, an entry of a list, or a whole section or test, with its line.
// An option then reads as empty, a section as its defaults. An element that holds comments is
// removed only by force. Nothing is changed if there is no such element.
VEXOR_EXPORT EditedText UnsetOptionInText(std::string_view content, std::string_view path,
                                          const EditLimits& limits = {});

// Mends what the checker is sure of: mistyped names and words, wrong case, wrong separators,
// unescaped characters, and elements that belong into another element of the document. A change
// that would give a new finding is not made. Names and forms of older versions stay. Mending the
// result again changes nothing.
VEXOR_EXPORT EditedText FixText(std::string_view content);

// Brings the names and forms of older versions to the current ones, and the version to the
// library's. Reading the result gives the same value for every path, or there is an error and no
// change. What is not read at all stays as it is.
VEXOR_EXPORT EditedText MigrateText(std::string_view content);

}  // namespace vexor
