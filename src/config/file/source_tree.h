// The byte ranges of a file's elements, texts and comments, from Expat's positions. The reader's
// XML library knows only lines; whoever shows a column or changes a file needs the bytes.
#pragma once

#include <tinyxml2.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vexor {

// A range of bytes of the content.
struct SourceRange {
  std::size_t begin = 0;
  std::size_t end = 0;

  [[nodiscard]] std::size_t size() const { return end - begin; }
  [[nodiscard]] bool IsEmpty() const { return begin == end; }
  bool operator==(const SourceRange&) const = default;
};

struct SourceNode {
  enum class Kind : std::uint8_t {
    kDocument,
    kElement,
    kText,
    kData,     // a CDATA section
    kComment,  // "<!-- ... -->"
    kOther,    // a declaration, a document type or a processing instruction
  };

  Kind kind = Kind::kDocument;
  SourceRange range;    // from the first "<" to the last ">"
  SourceRange content;  // of an element: between its tags, empty at the end of "<A/>"
  std::size_t parent = 0;
  std::size_t next = 0;  // the node after this one and all nodes in it
};

struct SourceAttribute {
  std::string_view name;
  SourceRange range;  // with the blank before the name
  SourceRange value;  // between the quotes
};

// A tree of the nodes that the reader's XML library has, in the same order: text of nothing but
// white space is no node. The content must outlive the tree.
class SourceTree {
 public:
  // Parses the content. If a strict parser refuses it, or if it declares entities, the tree has the
  // nodes before that place, of which the open ones end there, and IsWhole() is false.
  explicit SourceTree(std::string_view content);

  [[nodiscard]] bool IsWhole() const { return is_whole_; }
  // Returns whether characters beyond ASCII may be written in UTF-8.
  [[nodiscard]] bool IsUtf8() const { return is_utf8_; }
  [[nodiscard]] std::string_view content() const { return content_; }

  // Nodes are numbered in the order of their begin; 0 is the document.
  [[nodiscard]] std::size_t size() const { return nodes_.size(); }
  [[nodiscard]] const SourceNode& operator[](std::size_t node) const { return nodes_[node]; }

  // Returns the first child, or its next sibling; 0 if there is none.
  [[nodiscard]] std::size_t FirstChild(std::size_t node) const;
  [[nodiscard]] std::size_t NextSibling(std::size_t node) const;

  [[nodiscard]] std::string_view TextOf(SourceRange range) const {
    return content_.substr(range.begin, range.size());
  }

  // Of an element:
  [[nodiscard]] SourceRange NameOf(std::size_t element) const;
  [[nodiscard]] bool HasEndTag(std::size_t element) const;
  [[nodiscard]] SourceRange EndNameOf(std::size_t element) const;  // in the end tag
  [[nodiscard]] std::vector<SourceAttribute> AttributesOf(std::size_t element) const;
  [[nodiscard]] std::optional<SourceAttribute> FindAttribute(std::size_t element,
                                                             std::string_view name) const;

  // Returns the first child if it is a text or a CDATA section: what the reader takes for the
  // element's text. Returns 0 otherwise.
  [[nodiscard]] std::size_t TextNodeOf(std::size_t element) const;

 private:
  friend class SourceTreeBuilder;

  std::string_view content_;
  bool is_utf8_ = false;
  bool is_whole_ = false;
  std::vector<SourceNode> nodes_;
};

// Finds the nodes of a document of the XML library in the tree of the same content.
class SourceNodes {
 public:
  SourceNodes(const tinyxml2::XMLDocument& document, const SourceTree& tree);

  // Returns the number of the node; 0 for the document, and for a node that the tree lacks.
  [[nodiscard]] std::size_t Find(const tinyxml2::XMLNode* node) const {
    const auto found = numbers_.find(node);
    return found == numbers_.end() ? 0 : found->second;
  }

 private:
  std::unordered_map<const tinyxml2::XMLNode*, std::size_t> numbers_;
};

}  // namespace vexor
