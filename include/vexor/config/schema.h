// The XML schema of configuration files, for editors and validators.
#pragma once

#include <string>

#include "vexor/export.h"

namespace vexor {

// Returns an XML Schema 1.0 document that accepts every file that holds no unknown or misplaced
// element, no attribute that is not read and no wrong word, elements in any order; older names, and
// texts that a reader trims, are good. Of a switch it accepts "true", "false" and no text; beyond
// that it refuses no text that the options' parsers read as it is written. Throws std::bad_alloc
// only. Any thread may call.
VEXOR_EXPORT std::string GetXMLSchema();

}  // namespace vexor
