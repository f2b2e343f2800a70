// The part of reading that follows the version check.
#pragma once

#include "vexor/config/full_config.h"

namespace vexor {

// Reads all sections except the global configuration, and converts legacy entries to the current
// form. Throws std::out_of_range for malformed trace entries.
void ReadSections(const tinyxml2::XMLElement& root, _XML_FULL_CFG& cfg);

}  // namespace vexor
