// Access to XML elements: children, sections and texts.
#pragma once

#include <tinyxml2.h>

#include <cstddef>
#include <optional>
#include <string_view>

#include "config/tables/sections.h"

namespace vexor {

// The child elements of an element, for a range-based loop.
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

// Returns the first child element of that name; null if there is none or the parent is null.
const tinyxml2::XMLElement* FindElement(const tinyxml2::XMLElement* parent, std::string_view name);

// Returns the first root element named VEXOR; null if there is none.
const tinyxml2::XMLElement* FindRoot(const tinyxml2::XMLDocument& document);

// Returns the section, or if it is absent, the element of its older name. Returns null if it or one
// of its parents is missing, or if the root is null.
const tinyxml2::XMLElement* FindSection(const tinyxml2::XMLElement* root, Section section);

// Returns the element's text without leading and trailing white space. Only the first child node
// counts: a comment or an element before the text hides it.
std::optional<std::string_view> TrimmedText(const tinyxml2::XMLElement& element);

// Returns the same, or empty text if the first child node is not text.
std::string_view TextOf(const tinyxml2::XMLElement& element);

// Returns whether the first child node is exactly "true": white space and case count.
bool IsTrue(const tinyxml2::XMLElement& element);

// Finds rows by name. The search continues after the last match, because most files have their
// elements in the order of the tables: reading such a file compares each name once.
template <class Rows, class Name>
class RowFinder {
 public:
  RowFinder(const Rows& rows, Name name) : rows_(rows), name_(name) {}

  // Returns the row's index, or the number of rows if no row has the name.
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
