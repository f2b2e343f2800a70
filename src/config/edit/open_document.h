// A document that is to be changed: its settings, its elements, and where both are in the text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "config/check/shared_model.h"
#include "config/edit/option_paths.h"
#include "config/edit/source_edits.h"
#include "config/file/source_tree.h"
#include "config/model/describe.h"
#include "config/model/document_model.h"
#include "vexor/config/edit.h"

namespace vexor {

class OpenDocument {
 public:
  // The content must outlive the object.
  explicit OpenDocument(std::string_view content);

  // The reason why the document cannot be changed; empty if it can.
  [[nodiscard]] const std::string& error() const { return error_; }
  [[nodiscard]] int error_line() const { return error_line_; }

  [[nodiscard]] const Description& description() const { return described_.description; }
  [[nodiscard]] const SourceTree& tree() const { return tree_; }
  [[nodiscard]] const ElementModel& model() const { return GetSharedModel().root; }

  // Returns the setting of the path, or null.
  [[nodiscard]] const Setting* FindSetting(std::string_view path) const;

  // Returns the element that a setting of description() comes from, or 0.
  [[nodiscard]] std::size_t ElementOf(const Setting& setting) const;

  // Returns the element in `parent` that the reader takes for a step of a path, or 0. Without a
  // number it is the first; an element of an older name stands for one that is missing.
  [[nodiscard]] std::size_t FindStep(std::size_t parent, const ElementModel& parent_model,
                                     const PathStep& step) const;

  // Returns the element that the reader takes for a path of elements; 0 if one is missing.
  [[nodiscard]] std::size_t FindElement(const ResolvedPath& path) const;

  // Returns the last child of an element that a written file has before one of that name; 0 if it
  // has none. An unknown name comes last.
  [[nodiscard]] std::size_t FindSibling(std::size_t parent, const ElementModel& model,
                                        std::string_view name) const;

  // Returns the root element.
  [[nodiscard]] std::size_t Root() const;

  [[nodiscard]] int LineOf(std::size_t node) const;

  // Returns the name of an element in a parent of that model: for an argument, its attribute.
  [[nodiscard]] std::string_view NameIn(const ElementModel& parent, std::size_t element) const;

 private:
  void FindError();

  SourceTree tree_;
  DescribedDocument described_;
  std::optional<SourceNodes> nodes_;
  std::string error_;
  int error_line_ = 0;
};

// Returns the outcome of an edit that was not made.
EditedText Fail(std::string_view content, std::string error, int line = 0);

// Returns the paths whose values differ between two descriptions, except those that are derived
// from others. A path that only one of them has counts as empty in the other.
std::vector<std::string> ListDifferences(const Description& before, const Description& after);

}  // namespace vexor
