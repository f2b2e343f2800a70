// A document that is being typed, made well-formed where its tags are not: an XML parser then gets
// behind the place where the user is.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/assist/typed_document.h"

namespace vexor {

// The text in which missing end tags are added, and unfinished tags and end tags that end nothing
// are blanks. Everything else stays.
class ClosedText {
 public:
  explicit ClosedText(const TypedDocument& document);

  [[nodiscard]] const std::string& text() const { return text_; }

  // Makes each "&" another character, because a strict parser refuses most of them. For whoever
  // needs only the places of tags and texts.
  void HideReferences();

  // Returns the place in the text of a place in the document, and the other way round. The second
  // is nothing inside of an added tag.
  [[nodiscard]] std::size_t FromOriginal(std::size_t at) const;
  [[nodiscard]] std::optional<std::size_t> ToOriginal(std::size_t at) const;

 private:
  // A tag that was added in front of a place of the document.
  struct Insertion {
    std::size_t original;
    std::size_t begin;  // in the text
    std::size_t size;
  };

  void AddEndTags(const TypedDocument& document, std::size_t at,
                  std::vector<std::size_t>& unclosed);

  std::string text_;
  std::vector<Insertion> insertions_;
};

}  // namespace vexor
