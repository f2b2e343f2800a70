// Parsing the content of a file within bounds that keep the time linear in its size.
#pragma once

#include <tinyxml2.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace vexor {

// An element of more attributes is refused: the XML library compares each attribute with all before
// it. No element of a configuration file has more than three.
inline constexpr int kMostAttributes = 256;

// The same holds for character references that do not end within a few bytes, such as "&#1": for
// each, the XML library searches the rest of the text for the end.
inline constexpr int kMostOpenReferences = 256;

// Parses the content, and returns the XML library's error. For content beyond the bounds that is
// XML_ERROR_FILE_READ_ERROR, and the document is empty.
tinyxml2::XMLError ParseXml(std::string_view content, tinyxml2::XMLDocument& document);

// The same for what an open file holds.
tinyxml2::XMLError ParseXmlFile(std::FILE* file, tinyxml2::XMLDocument& document);

// Why a file gives no document, or none of ours.
struct XmlRefusal {
  int line = 0;          // 0 for the file as a whole
  std::string what;      // "not well-formed XML: the file ends before </CSTATES>"
  std::string expected;  // may be empty
};

// Parses the content, and returns why it gives no document; nothing when it does. A file that is
// not meant to be XML at all is refused, too, where the XML library takes it for a text.
std::optional<XmlRefusal> ParseXmlOrExplain(std::string_view content,
                                            tinyxml2::XMLDocument& document);

}  // namespace vexor
