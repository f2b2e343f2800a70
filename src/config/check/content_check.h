// Checks of what one element holds. Each adds to `findings` what a reader does not read, or reads
// as something else than was written.
#pragma once

#include <tinyxml2.h>

#include <span>
#include <string>
#include <string_view>

#include "config/check/findings.h"
#include "config/tables/option_table.h"

namespace vexor {

// Finds text in an element, or a document, that only has elements to hold.
void CheckStrayText(const tinyxml2::XMLNode& parent, const std::string& path, Findings& findings);

// Finds attributes beside the known ones.
void CheckAttributes(const tinyxml2::XMLElement& element, const std::string& path,
                     Findings& findings, std::span<const std::string_view> known = {});

// Finds elements in an element that only has a text to hold, and text behind a comment or an
// element. Returns whether the element's own text, which may be empty, is what stands in it first.
bool CheckLeaf(const tinyxml2::XMLElement& element, const std::string& path, Findings& findings);

// Finds a fault in the text of an option, which stands in the element. Returns its finding, valid
// until the next one is added; null for a good text.
Finding* CheckText(const tinyxml2::XMLElement& at, const std::string& path, std::string_view text,
                   const OptionRow& option, Findings& findings);

// Finds a text that switches nothing on and was meant to, or does not say that it does not.
void CheckSwitch(const tinyxml2::XMLElement& element, const std::string& path, Findings& findings);

}  // namespace vexor
