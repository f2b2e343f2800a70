// Files that are not what they seem.
#pragma once

#include <string>
#include <string_view>

namespace vexor {

// Says what a file of this content is instead of XML in UTF-8: "the file is JSON", "the file is
// UTF-16 text (little-endian)", ... Returns empty text for content that begins as XML does.
std::string NameForeignContent(std::string_view content);

}  // namespace vexor
