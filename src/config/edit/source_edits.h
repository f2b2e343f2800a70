// Changes to the text of a document. All bytes outside the changed ranges stay.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/file/source_tree.h"

namespace vexor {

struct SourceEdit {
  SourceRange range;  // empty to insert
  std::string text;
};
using SourceEdits = std::vector<SourceEdit>;

// Returns the content with the edits applied. Their ranges must not overlap; of edits at one place,
// the first in the list comes first.
std::string ApplyEdits(std::string_view content, SourceEdits edits);

// An element that does not exist yet.
struct NewElement {
  std::string name;
  std::string text = {};
  bool is_argument = false;  // written as <arg name="NAME" val="TEXT"/>
  std::string entry = {};  // the name with the number of a list's entry, for whoever builds a tree
  std::vector<NewElement> children = {};
};

// Makes edits in the manner of the document: its line ends, its indentation, its encoding. The tree
// must be whole.
class SourceEditor {
 public:
  explicit SourceEditor(const SourceTree& tree);

  // Sets the text that the reader takes for the element's own. White space around it stays, unless
  // `is_exact`.
  [[nodiscard]] SourceEdits SetText(std::size_t element, std::string_view text,
                                    bool is_exact) const;

  // Sets or adds an attribute.
  [[nodiscard]] SourceEdits SetAttribute(std::size_t element, std::string_view name,
                                         std::string_view value) const;

  // Changes the name in both tags.
  [[nodiscard]] SourceEdits Rename(std::size_t element, std::string_view name) const;

  // Removes a node with its line if nothing else is on it.
  [[nodiscard]] SourceEdits Remove(std::size_t node) const;

  // Inserts an element behind `sibling`, or as the first one in `parent` if that is 0.
  [[nodiscard]] SourceEdits Insert(std::size_t parent, std::size_t sibling,
                                   const NewElement& element) const;

  // Inserts an element of that name with the content of an existing one behind `sibling`.
  [[nodiscard]] SourceEdits InsertCopy(std::size_t sibling, std::size_t element,
                                       std::string_view name) const;

  // Replaces a range of a text or of an attribute's value.
  [[nodiscard]] SourceEdits Replace(SourceRange range, std::string_view text) const;

  // Moves an element behind `sibling`, or to the begin of `parent` if that is 0.
  [[nodiscard]] SourceEdits Move(std::size_t element, std::size_t parent,
                                 std::size_t sibling) const;

 private:
  [[nodiscard]] std::string Escape(std::string_view text, bool is_attribute) const;
  [[nodiscard]] std::string Print(const NewElement& element, const std::string& indent) const;
  [[nodiscard]] std::size_t LineBegin(std::size_t at) const;
  [[nodiscard]] std::string IndentOf(std::size_t node) const;
  [[nodiscard]] bool BeginsLine(std::size_t at) const;
  [[nodiscard]] std::size_t SkipComments(std::size_t node, std::size_t at) const;
  template <class PrintAt>
  [[nodiscard]] SourceEdits InsertPrinted(std::size_t parent, std::size_t sibling,
                                          const PrintAt& print) const;
  [[nodiscard]] SourceEdits Fill(std::size_t element, std::string_view content) const;

  const SourceTree& tree_;
  std::string line_end_ = "\n";
  std::string unit_ = "    ";  // one level of indentation
  bool is_utf8_ = true;
};

}  // namespace vexor
