// Parses the content of a file, within limits that keep the time linear in its size.
#pragma once

#include <tinyxml2.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "config/tables/finding_kinds.h"

namespace vexor {

// Elements with more attributes are rejected: the XML library compares each attribute with all
// before it. No element of a configuration file has more than three.
inline constexpr int kMostAttributes = 256;

// Files with more unterminated character references, such as "&#1", are rejected: for each, the XML
// library searches the rest of the text for the end.
inline constexpr int kMostOpenReferences = 256;

// Parses the content and returns the XML library's error. For content beyond the limits this is
// XML_ERROR_FILE_READ_ERROR, and the document is empty.
tinyxml2::XMLError ParseXml(std::string_view content, tinyxml2::XMLDocument& document);

// Does the same for the content of an open file.
tinyxml2::XMLError ParseXmlFile(std::FILE* file, tinyxml2::XMLDocument& document);

// The reason why a file cannot be parsed.
struct XmlRefusal {
  int line = 0;          // 0 for the file as a whole
  std::size_t at = 0;    // the first byte of the place, if that is known
  std::size_t size = 0;  // 0 if it is not
  std::string what;      // "not well-formed XML: the file ends before </CSTATES>"
  std::string expected;  // may be empty
  FindingKind kind = FindingKind::kMalformedXml;
};

// Parses the content. Returns nothing on success, or the reason why it cannot be parsed. Also
// rejects files of other kinds, such as JSON, which the XML library may accept as a document with
// text only.
std::optional<XmlRefusal> ParseXmlOrExplain(std::string_view content,
                                            tinyxml2::XMLDocument& document);

}  // namespace vexor
