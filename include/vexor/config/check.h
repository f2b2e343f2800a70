// Hearing of every mistake in a configuration file. The reader accepts anything silently and makes
// the best of it; the checker says where that is not what was meant.
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
  kNote,     // no mistake: options that are absent and read as empty, tests that have no options,
             // names that are unknown and may be the user's own
  kWarning,  // read as it is written, but probably not what was meant: an older form, no effect, a
             // list that selects nothing, a test without its times, a name that is near a known
             // one; or XML that other programs refuse
  kError,    // not read, or read as something else than was written
};

struct Finding {
  int line = 0;      // from 1; 0 for the file as a whole
  std::string path;  // below the root: "GLOBALPM/CORE/CSTATES/ActiveTime"; one of several elements
                     // of a name ends in its number: "[2]"
  Severity severity = Severity::kError;
  std::string text;            // what stands there
  std::string what;            // what is wrong with it
  std::string expected;        // what may stand there; may be empty
  std::string suggestion;      // what was probably meant in its place; may be empty
  bool is_older_form = false;  // read as what is expected, and converted to it
};

struct CheckLimits {
  std::size_t most_bytes = std::size_t{64} << 20U;  // a longer file is not looked at
};

// Returns all that is wrong with a file, in the order of its lines; empty for a faultless one. A
// file that cannot be read, is longer than the limit, or is no XML, gives one finding. Findings
// speak of XML that other programs refuse, root and version, unknown, misplaced, repeated and older
// elements, and every option's text by the grammar of its parser. The time is linear in the file.
// Throws std::bad_alloc only. Any thread may call.
VEXOR_EXPORT std::vector<Finding> CheckXMLConfig(const std::string& path,
                                                 const CheckLimits& limits = {});

// The same for the content of a file.
VEXOR_EXPORT std::vector<Finding> CheckXMLConfigText(std::string_view content,
                                                     const CheckLimits& limits = {});

}  // namespace vexor
