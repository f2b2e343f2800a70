// A reference of all options of a configuration file.
#pragma once

#include <string>

#include "vexor/export.h"

namespace vexor {

// Returns a Markdown document: every element that a file may hold, section by section, with its
// meaning, syntax, an example, default and valid words, and whether it is read and written. Throws
// std::bad_alloc only. Any thread may call.
VEXOR_EXPORT std::string GetOptionReference();

}  // namespace vexor
