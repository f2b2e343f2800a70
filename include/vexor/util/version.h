// The version of the library.
#pragma once

#include "vexor/export.h"

namespace vexor {

// Returns the library's version text, such as "3.21.522.0": four numbers joined by points. It is
// also the version against which a configuration file's own version is checked. Any thread.
VEXOR_EXPORT const char* GetVersionText();

}  // namespace vexor
