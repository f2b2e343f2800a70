// The version of the library.
#pragma once

#include "vexor/export.h"

namespace vexor {

// Returns the library's version, four numbers joined by points: "3.21.522.0". Versions of
// configuration files are compared with it. Any thread may call.
VEXOR_EXPORT const char* GetVersionText();

}  // namespace vexor
