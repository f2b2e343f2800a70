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
  std::string
      path;  // "GLOBALPM/CORE/CSTATES/ActiveTime"; entries of lists end in "[1]", "[2]", ...
  std::string value;
  Origin origin = Origin::kDefault;
  int line = 0;  // of the element, 0 for a setting that comes from none
};

struct Description {
  std::string error;  // why the file could not be read; empty when it was
  int error_line = 0;
  std::string version;
  std::vector<Setting> settings;  // in the order of a written file
};

// Reads the content of a configuration file, of any version, onto the defaults and returns all
// settings, those of the workloads included. Prints nothing. Throws std::bad_alloc only. Any thread
// may call.
VEXOR_EXPORT Description DescribeXMLConfigText(std::string_view content);

}  // namespace vexor
