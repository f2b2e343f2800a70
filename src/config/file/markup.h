// Cuts a document that may be half-typed into tags, comments and texts. Unlike an XML parser, the
// scanner does not stop at an error: an unfinished tag ends where the next markup begins.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "config/file/source_tree.h"

namespace vexor {

struct MarkupPiece {
  enum class Kind : std::uint8_t {
    kText,
    kStartTag,  // "<A>", or "<" with nothing behind it
    kEmptyTag,  // "<A/>"
    kEndTag,    // "</A>"
    kComment,
    kOther,  // a CDATA section, a declaration, a document type or a processing instruction
  };

  Kind kind = Kind::kText;
  bool is_complete = true;  // whether it has its end, such as ">"
  SourceRange range = {};
  SourceRange name = {};  // of a tag; empty if it is not typed yet

  [[nodiscard]] bool IsTag() const {
    return kind == Kind::kStartTag || kind == Kind::kEmptyTag || kind == Kind::kEndTag;
  }
};

// Returns the pieces, which follow each other without gaps.
std::vector<MarkupPiece> ScanMarkup(std::string_view content);

struct MarkupAttribute {
  SourceRange name;
  SourceRange value = {};    // between the quotes, or up to the end of an unfinished tag
  bool has_value = false;    // whether there is at least the first quote
  bool is_complete = false;  // whether there is the second one as well
};

// Returns the attributes of a tag.
std::vector<MarkupAttribute> ScanAttributes(std::string_view content, const MarkupPiece& tag);

}  // namespace vexor
