// Recognises files that are not XML in UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace vexor {

// Returns what the content is instead: "the file is JSON", "the file is UTF-16 text
// (little-endian)", ... Returns empty text for content that begins like XML.
std::string NameForeignContent(std::string_view content);

}  // namespace vexor
