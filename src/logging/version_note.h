// The first row of a log.
#pragma once

#include <string>

namespace vexor {

// Returns the text by which a log tells which build of the library wrote it: version, driver
// version, source revision, and date and time of the build.
std::string MakeVersionNote();

}  // namespace vexor
