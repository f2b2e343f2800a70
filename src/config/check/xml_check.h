// What is wrong with a file as XML, whatever its elements are.
#pragma once

#include <tinyxml2.h>

#include <string_view>

#include "config/check/findings.h"

namespace vexor {

// Parses the content into the document, and returns whether it did. Finds why not, or otherwise
// what a strict parser refuses.
bool CheckXml(std::string_view content, tinyxml2::XMLDocument& document, Findings& findings);

}  // namespace vexor
