// Finds what a strict XML parser rejects. The XML library that reads configurations is lenient: it
// accepts bare "&", forbidden characters, content after the root and more, and drops some of it
// silently. It also gives few reasons for what it rejects. So a file that is read here may fail in
// every other XML program, and the checker needs a second look at the text. It is not a second
// reader: the XML library alone decides what is read.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/tables/finding_kinds.h"

namespace vexor {

struct XmlFault {
  int line = 0;
  std::size_t at = 0;    // of the first byte
  std::size_t size = 0;  // in bytes
  std::string text;      // the text at fault; may be empty
  std::string what;      // "bare &"
  std::string expected;  // "&amp;"; may be empty
  // kDroppedXml if the XML library drops the text silently.
  FindingKind kind = FindingKind::kLooseXml;
};

struct XmlLint {
  std::vector<XmlFault> faults;  // in the order of their lines
  std::optional<XmlFault> stop;  // where the structure breaks and the XML library stops
  // Whether there is text or an element outside the root, which a strict parser rejects, too.
  bool has_content_outside_root = false;
};

// Checks whether the content is well-formed XML 1.0; declarations inside a document type are not
// supported. Tags, comments and other markup begin and end where the XML library sees their begin
// and end, so that faults match what was read. The time is linear in the content, except that the
// attributes of one element are compared with each other.
XmlLint LintXml(std::string_view content);

}  // namespace vexor
