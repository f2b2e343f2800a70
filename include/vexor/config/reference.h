// Writes a reference of all options of a configuration file.
#pragma once

#include <string>

#include "vexor/export.h"

namespace vexor {

// Returns a Markdown document that lists every element of a file, section by section, with its
// meaning, syntax, example, default and valid words, and whether it is read and written. Throws
// only std::bad_alloc. Any thread may call.
VEXOR_EXPORT std::string GetOptionReference();

}  // namespace vexor
