// Finds the mistakes in a configuration file. The reader accepts any text silently; the checker
// reports each text that it does not read as it was probably meant.
//
//   for (const vexor::Finding& f : vexor::CheckXMLConfig("lab.xml")) { ... f.line ... f.what ... }
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"

namespace vexor {

enum class Severity : std::int32_t {
  kNote,     // not a mistake: a missing option, which reads as empty; a test without options; an
             // unknown name that may be the user's own
  kWarning,  // read as written, but probably not what was meant: an older form, a text without
             // effect, a list that selects nothing, a test without its times, a name similar to a
             // known one; also XML that other programs refuse
  kError,    // not read, or not read as it was written
};

// What `Finding::suggestion` replaces.
enum class Mend : std::int32_t {
  kNone,  // nothing that is sure; a suggestion, if any, is for people to consider
  kName,  // the element's name, in both tags; for an argument, its attribute "name"
  kText,  // the element's whole text; for an argument, its attribute "val"
  kMove,  // nothing: the element moves into `belongs_in`, and there is no suggestion
  kXml,   // a piece of the XML: a character that must be escaped
};

struct Finding {
  int line = 0;          // from 1; 0 for the file as a whole
  int column = 0;        // from 1, in characters; 0 if it is not known, as behind malformed XML
  std::size_t at = 0;    // with a column, the first byte of the faulty part of the content,
  std::size_t size = 0;  // and its number of bytes: the name, the text, the attribute, ...
  std::string path;  // below the root: "GLOBALPM/CORE/CSTATES/ActiveTime"; one of several elements
                     // of a name ends in its number: "[2]"
  Severity severity = Severity::kError;
  std::string text;            // the text found
  std::string what;            // what is wrong with it
  std::string expected;        // what would be valid; may be empty
  std::string suggestion;      // the text that was probably meant; may be empty
  bool is_older_form = false;  // valid in older versions, and read as its current form
  bool is_allowed = false;     // by a comment such as <!-- vexorcfg: allow VX019 -->
  std::string_view code;       // of its kind: "VX019"; never changes its meaning
  Mend mend = Mend::kNone;     // other than kNone only where suggestion or belongs_in is sure
  std::string belongs_in;      // the only element that a misplaced one may stand in, as a path:
                               // "GLOBALPM/SYSTEM", or "VEXOR" for the root; else empty
};

// A kind of findings.
struct FindingCode {
  std::string_view code;   // "VX019"
  std::string_view title;  // a few words: "unknown element"
  std::string_view about;  // a few sentences: what the reader does, and what to do about it
  Severity severity = Severity::kError;  // the usual one; findings of a kind may be milder
  bool can_be_allowed = true;            // by a comment; not where reading ends
};

struct CheckLimits {
  std::size_t most_bytes = std::size_t{64} << 20U;  // longer files are not read
  bool with_allowed = false;  // also return the findings that a comment in the file allows
};

// Checks the file at `path` and returns the findings in the order of their lines; none if nothing
// is wrong. Checks the XML (also for what only other programs refuse), the root element and the
// version, unknown, misplaced, repeated and older elements, and each option's text by the grammar
// of its parser. A file that cannot be read, is longer than the limit or is not XML gives one
// finding. A comment such as <!-- vexorcfg: allow VX019, VX054 --> allows the findings of these
// codes in the element that follows it, and as the first content of the root or in front of it in
// the whole file; only a file that cannot be read is reported in any case. Takes time linear in the
// size of the file. Throws only std::bad_alloc. Any thread may call.
VEXOR_EXPORT std::vector<Finding> CheckXMLConfig(const std::string& path,
                                                 const CheckLimits& limits = {});

// Checks the content of a file in the same way.
VEXOR_EXPORT std::vector<Finding> CheckXMLConfigText(std::string_view content,
                                                     const CheckLimits& limits = {});

// Returns all kinds of findings in the order of their codes. Any thread may call.
VEXOR_EXPORT std::vector<FindingCode> GetFindingCodes();

}  // namespace vexor
