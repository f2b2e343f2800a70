// The command "show".
#pragma once

#include <string>

namespace vexorcfg {

// Prints what the file says, as the library's summaries tell it. Returns the exit status: 0, or 3
// with a message that names the file when it cannot be read.
int Show(const std::string& file);

}  // namespace vexorcfg
