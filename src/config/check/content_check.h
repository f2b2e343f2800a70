// Checks of the contents of one element. Each adds findings for content that is not read, or
// probably read differently than meant.
#pragma once

#include <tinyxml2.h>

#include <span>
#include <string>
#include <string_view>

#include "config/check/findings.h"
#include "config/tables/option_table.h"

namespace vexor {

// Reports text in a document, or in an element that only holds elements.
void CheckStrayText(const tinyxml2::XMLNode& parent, const std::string& path, Findings& findings);

// Reports attributes other than the known ones.
void CheckAttributes(const tinyxml2::XMLElement& element, const std::string& path,
                     Findings& findings, std::span<const std::string_view> known = {});

// Checks an element that only holds a text: reports elements in it, and text after a comment or an
// element. Returns whether the element's text can be read, which requires that it is empty or comes
// first.
bool CheckLeaf(const tinyxml2::XMLElement& element, const std::string& path, Findings& findings);

// Checks an option's text, which is in the element `at`. Returns the finding, valid until the next
// one is added, or null for a valid text.
Finding* CheckText(const tinyxml2::XMLElement& at, const std::string& path, std::string_view text,
                   const OptionRow& option, Findings& findings);

// Reports switch texts other than exactly "true" or "false".
void CheckSwitch(const tinyxml2::XMLElement& element, const std::string& path, Findings& findings);

}  // namespace vexor
