// Says in words why a document could not be parsed.
#pragma once

#include <tinyxml2.h>

#include <string_view>

namespace vexor {

std::string_view ExplainXmlError(tinyxml2::XMLError error);

}  // namespace vexor
