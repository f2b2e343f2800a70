// Walking the children of an XML element. A walk costs time linear in the children, whatever they
// are; a name is matched by walking on from the row that matched last, because files mostly hold
// their elements in the order of the tables.
#pragma once

#include <tinyxml2.h>

#include <cstddef>
#include <optional>
#include <string_view>

#include "config/tables/sections.h"

namespace vexor {

// The children of an element, for a range-based loop.
class ChildElements {
 public:
  explicit ChildElements(const tinyxml2::XMLElement& parent) : first_(parent.FirstChildElement()) {}

  class Iterator {
   public:
    explicit Iterator(const tinyxml2::XMLElement* element) : element_(element) {}
    const tinyxml2::XMLElement& operator*() const { return *element_; }
    Iterator& operator++() {
      element_ = element_->NextSiblingElement();
      return *this;
    }
    bool operator!=(const Iterator& other) const { return element_ != other.element_; }

   private:
    const tinyxml2::XMLElement* element_;
  };

  [[nodiscard]] Iterator begin() const { return Iterator(first_); }
  [[nodiscard]] Iterator end() const { return Iterator(nullptr); }

 private:
  const tinyxml2::XMLElement* first_;
};

// Returns the first child element of that name; null when there is none or the parent is null.
const tinyxml2::XMLElement* FindElement(const tinyxml2::XMLElement* parent, std::string_view name);

// Returns the first root element of the right name; null when there is none.
const tinyxml2::XMLElement* FindRoot(const tinyxml2::XMLDocument& document);

// Returns the section in a document of that root, under its older name where it stands under no
// other; null when it or a section above it is missing, or the root is null.
const tinyxml2::XMLElement* FindSection(const tinyxml2::XMLElement* root, Section section);

// Returns the element's own text, trimmed of white space: its first child node, when that is text.
std::optional<std::string_view> TrimmedText(const tinyxml2::XMLElement& element);

// The same, with empty text for an element whose first child node is no text.
std::string_view TextOf(const tinyxml2::XMLElement& element);

// Returns whether the element's first child node is exactly "true", blanks and case included.
bool IsTrue(const tinyxml2::XMLElement& element);

// Finds the row of a name, trying the row behind the last match first.
template <class Rows, class Name>
class RowFinder {
 public:
  RowFinder(const Rows& rows, Name name) : rows_(rows), name_(name) {}

  // Returns the row's index, or the number of rows for a name that is none.
  std::size_t Find(std::string_view wanted) {
    const std::size_t count = std::size(rows_);
    for (std::size_t step = 0, i = next_; step < count; ++step, ++i) {
      if (i >= count) i = 0;
      if (rows_[i].*name_ != wanted) continue;
      next_ = i + 1;
      return i;
    }
    return count;
  }

 private:
  const Rows& rows_;
  Name name_;
  std::size_t next_ = 0;
};

}  // namespace vexor
