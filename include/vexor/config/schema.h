// The XML schema of configuration files, for editors and validators.
#pragma once

#include <string>

#include "vexor/export.h"

namespace vexor {

// Returns an XML Schema 1.0 document. It accepts files with elements in any order, older names
// and white space around texts. It refuses unknown and misplaced elements, attributes that are not
// read, unknown words, and switches other than "true", "false" and empty. It refuses no other text
// that an option's parser reads as it is written. Throws only std::bad_alloc. Any thread may call.
VEXOR_EXPORT std::string GetXMLSchema();

}  // namespace vexor
