// A document that someone is typing: its elements as far as they can be made out, and which options
// they are.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/file/markup.h"
#include "config/model/document_model.h"

namespace vexor {

// An element, a comment, or the document itself.
struct TypedNode {
  MarkupPiece piece = {};    // the comment, or the start tag
  SourceRange range = {};    // from the first "<" to the last ">"
  SourceRange content = {};  // of an element: between its tags
  std::size_t parent = 0;
  int depth = -1;         // 0 for the root
  bool is_closed = true;  // whether it has its own end
  // What a configuration has there; null for an unknown name, and for one of any name.
  const ElementModel* model = nullptr;

  [[nodiscard]] bool IsElement() const { return piece.IsTag(); }
};

class TypedDocument {
 public:
  // The content must outlive the object.
  explicit TypedDocument(std::string_view content);

  [[nodiscard]] std::string_view content() const { return content_; }

  // Nodes are numbered in the order of their begin; 0 is the document.
  [[nodiscard]] const std::vector<TypedNode>& nodes() const { return nodes_; }
  [[nodiscard]] const TypedNode& operator[](std::size_t node) const { return nodes_[node]; }

  [[nodiscard]] std::string_view TextOf(SourceRange range) const {
    return content_.substr(range.begin, range.size());
  }

  // A piece with the node that a tag or a comment belongs to, or else the node that it is in.
  struct Piece {
    MarkupPiece markup;
    std::size_t node = 0;    // 0 for an end tag that ends nothing, and for an unfinished tag
    std::size_t inside = 0;  // the innermost open element behind the piece
  };
  [[nodiscard]] const std::vector<Piece>& pieces() const { return pieces_; }

  // Returns the number of the piece that holds the byte in front of the place; nothing (the number
  // of pieces) at the begin.
  [[nodiscard]] std::size_t PieceBefore(std::size_t at) const;

  // Returns the name of an element: of an argument, its attribute "name".
  [[nodiscard]] SourceRange NameOf(std::size_t element) const;

  // Returns the text of an element without white space around it: of an argument, its attribute
  // "val". Empty behind the start tag if the element holds anything but one text.
  [[nodiscard]] SourceRange TextRangeOf(std::size_t element) const;

  // Returns a text as the reader reads it, with references replaced.
  [[nodiscard]] std::string ReadText(SourceRange range) const;

  // Returns whether the element holds elements by its name, or does hold some.
  [[nodiscard]] bool HoldsElements(std::size_t element) const;

  // Returns whether the element is an argument in a list of arguments.
  [[nodiscard]] bool IsArgument(std::size_t element) const;

  // Returns the path of the element with current names and without numbers, as the tables have it;
  // empty if no configuration has such an element, and for the root.
  [[nodiscard]] std::string PathOf(std::size_t element) const;

  // Returns the model of the element's parent; null if that is unknown.
  [[nodiscard]] const ElementModel* ParentModel(std::size_t element) const;

 private:
  void Open(const MarkupPiece& tag);
  std::size_t Close(const MarkupPiece& tag);
  void End(std::size_t node, std::size_t at);
  [[nodiscard]] const ElementModel* FindModel(std::size_t parent, const MarkupPiece& tag) const;
  [[nodiscard]] SourceRange AttributeOf(const MarkupPiece& tag, std::string_view name) const;

  std::string_view content_;
  std::vector<TypedNode> nodes_;
  std::vector<Piece> pieces_;
  std::vector<std::size_t> open_;   // the document and the open elements
  std::vector<bool> has_elements_;  // by node
};

}  // namespace vexor
