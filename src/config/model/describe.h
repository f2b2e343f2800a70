// A description together with the document that it was made from.
#pragma once

#include <tinyxml2.h>

#include <string_view>
#include <vector>

#include "vexor/config/describe.h"

namespace vexor {

struct DescribedDocument {
  tinyxml2::XMLDocument document{true, tinyxml2::PRESERVE_WHITESPACE};
  Description description;
  // For each setting, the element that its value comes from, or null.
  std::vector<const tinyxml2::XMLElement*> sources;
};

// Does what DescribeXMLConfigText does. `described` must be new.
void DescribeDocument(std::string_view content, const std::vector<_PM_TEST_CONFIG_NODE>& overrides,
                      DescribedDocument& described);

}  // namespace vexor
