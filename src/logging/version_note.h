#pragma once

#include <string>

namespace vexor {

// What a log states about the library at its start: version, driver version, source revision, and
// date and time of the build.
std::string MakeVersionNote();

}  // namespace vexor
