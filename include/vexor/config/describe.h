// What a configuration file amounts to once it is read: every setting, and where it comes from.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vexor/export.h"

namespace vexor {

enum class Origin : std::int32_t {
  kFile,       // the element of the setting's name
  kOlderName,  // an element of an older name
  kCorrected,  // the file, brought to the current form: a test that an older file did not mean
  kDerived,    // computed from other settings
  kMissing,    // absent from an element that is there, and so empty
  kDefault,    // the default: the file does not speak of it
};

struct Setting {
  // "GLOBALPM/CORE/CSTATES/ActiveTime"; entries of lists end in "[1]", "[2]", ..., counted as they
  // are read.
  std::string path;
  std::string value;
  Origin origin = Origin::kDefault;
  int line = 0;      // of the element, 0 for a setting that comes from none
  std::string text;  // what the element says where that is not the value: "True", read as "false"
};

enum class UnreadKind : std::int32_t {
  kText,       // of an element that is unknown, misplaced or repeated, in an argument, or behind a
               // comment or another text
  kElement,    // an unknown one that holds nothing
  kAttribute,  // name="value"
  kComment,
  kMarkup,  // a document type, a declaration of another encoding, an attribute of an end tag, a
            // reference to a character that XML does not have, with the text that is lost by it
  kRest,    // what the parser does not reach; the text says why
};

// A part of a file that the reader passes over.
struct Unread {
  UnreadKind kind = UnreadKind::kText;
  int line = 0;
  std::string path;  // of the element it stands in, or of an element that is not known; empty for
                     // markup and outside of the root
  std::string text;
};

struct Description {
  std::string error;   // why the file could not be read; empty when it was
  int error_line = 0;  // 0 for the file as a whole
  std::string version;
  int version_line = 0;
  bool is_compatible = false;  // whether a reader that verifies versions takes the file
  // Section by section, as a written file has them; within a section in the order of the library's
  // tables, which is that of a written file but for two: the switches of AutoRunCfg stand in the
  // order of their tests' sections, and options that no file is written with stand among the
  // others.
  std::vector<Setting> settings;
  std::vector<Unread> unread;  // in the order of their lines; not the loop counter
};

// Reads the content of a configuration file, of any version, onto the defaults and returns all
// settings, those of the workloads included, and what is in the file besides. Prints nothing.
// Throws std::bad_alloc only. Any thread may call.
VEXOR_EXPORT Description DescribeXMLConfigText(std::string_view content);

}  // namespace vexor
