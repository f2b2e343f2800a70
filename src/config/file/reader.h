// The part of a reading that follows a successful version check.
#pragma once

#include "vexor/config/full_config.h"

namespace vexor {

// Reads the sections beside the global configuration and brings legacy entries to the current form.
// Throws std::out_of_range for malformed trace entries.
void ReadSections(const tinyxml2::XMLElement& root, _XML_FULL_CFG& cfg);

}  // namespace vexor
