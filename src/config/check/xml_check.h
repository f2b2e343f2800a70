// The check of a file as XML, independent of its elements.
#pragma once

#include <tinyxml2.h>

#include <string_view>

#include "config/check/findings.h"

namespace vexor {

// Parses the content into `document`. Reports why it cannot be parsed and returns false, or reports
// what only a strict parser rejects and returns true.
bool CheckXml(std::string_view content, tinyxml2::XMLDocument& document, Findings& findings);

}  // namespace vexor
