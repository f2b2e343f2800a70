// What a strict XML parser refuses in a document. The library's own parser lets much of it pass, so
// that the file reads well here and not at all elsewhere.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexor {

struct XmlFault {
  int line = 0;
  std::string text;      // what stands there; may be empty
  std::string what;      // "bare &"
  std::string expected;  // "&amp;"; may be empty
  // The library's parser passes over the text and keeps nothing of it.
  bool is_dropped = false;
};

struct XmlLint {
  std::vector<XmlFault> faults;  // in the order of their lines
  std::optional<XmlFault> stop;  // where the structure breaks, and both parsers stop
  // Text and elements beside the root, which a strict parser refuses, too.
  bool has_content_outside_root = false;
};

// Checks that the content is well-formed by XML 1.0, without a document type's declarations. Tags,
// comments and the like begin and end where the library's parser has them begin and end. The time
// is linear in the content, but for the attributes of one element, which are compared with each
// other.
XmlLint LintXml(std::string_view content);

}  // namespace vexor
