// Describes the result of reading a configuration file: every setting and where its value comes
// from.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"

struct _PM_TEST_CONFIG_NODE;

namespace vexor {

enum class Origin : std::int32_t {
  kFile,       // the element with the setting's name
  kOlderName,  // an element with an older name
  kCorrected,  // converted to the current form: an older trace entry, or a test switched off by
               // CheckLegacyLxDx
  kDerived,    // computed from other settings
  kMissing,    // the element is missing from its section, which makes the value empty
  kDefault,    // the default, because the file lacks the whole section
};

struct Setting {
  // "GLOBALPM/CORE/CSTATES/ActiveTime"; entries of lists end in "[1]", "[2]", ..., counted as they
  // are read.
  std::string path;
  std::string value;
  Origin origin = Origin::kDefault;
  int line = 0;      // of the element; 0 if the value does not come from one
  std::string text;  // the element's text if it differs from the value: "True", read as "false"
};

enum class UnreadKind : std::int32_t {
  kText,       // the text of an unknown, misplaced or repeated element or of an argument, or text
               // that follows a comment or another text
  kElement,    // an unknown element without content
  kAttribute,  // name="value"
  kComment,
  kMarkup,  // a document type, a declaration of another encoding, an attribute of an end tag, or a
            // reference to a character that XML does not allow, with the text that this loses
  kRest,    // everything after the point where the parser stops; `text` says why it does
};

// A part of a file that the reader ignores.
struct Unread {
  UnreadKind kind = UnreadKind::kText;
  int line = 0;
  std::string path;  // of the enclosing element, or of the unknown element itself; empty for markup
                     // and outside the root
  std::string text;
};

struct Description {
  std::string error;   // why the file could not be read; empty if it could
  int error_line = 0;  // 0 for the file as a whole
  std::string version;
  int version_line = 0;
  bool is_compatible = false;  // whether a reader that verifies versions accepts the file
  // Section by section in the order of a written file; within a section in the order of the
  // library's tables. That is the order of a written file with two exceptions: the switches of
  // AutoRunCfg are in the order of the tests' sections, and options that are only read are listed
  // among the others.
  std::vector<Setting> settings;
  std::vector<Unread> unread;  // in the order of their lines; does not list the loop counter
};

// Reads the content of a configuration file of any version over the defaults. Returns all settings,
// including those of the workloads, and the parts of the file that are ignored. Prints nothing.
// Throws only std::bad_alloc. Any thread may call.
VEXOR_EXPORT Description DescribeXMLConfigText(std::string_view content);

// The same for the configuration after ApplyTestOptions with each of the nodes of a command line
// (vexor/config/overrides.h). Lines and origins stay those of the file.
VEXOR_EXPORT Description DescribeXMLConfigText(std::string_view content,
                                               const std::vector<_PM_TEST_CONFIG_NODE>& overrides);

}  // namespace vexor
