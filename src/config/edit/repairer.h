// Makes the edits that mend one finding.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "config/edit/open_document.h"
#include "config/edit/source_edits.h"
#include "config/file/source_tree.h"
#include "vexor/config/check.h"

namespace vexor {

// Returns whether the finding is a name or a form of older versions, which MigrateText mends.
bool IsOfOlderVersion(const Finding& finding);

// A repair of one finding, which must outlive it.
struct Repair {
  const Finding* finding = nullptr;
  SourceEdits edits;
  std::string what;
};

// Finds the repairs of a document.
class Repairer {
 public:
  // The content must outlive the object.
  explicit Repairer(std::string_view content);

  // Returns a repair without edits if there is none.
  [[nodiscard]] Repair Find(const Finding& finding) const;

 private:
  [[nodiscard]] std::size_t ElementAt(std::size_t at) const;
  [[nodiscard]] SourceEdits Rename(const Finding& finding, std::size_t element) const;
  [[nodiscard]] SourceEdits Replace(const Finding& finding, std::size_t element) const;
  [[nodiscard]] SourceEdits Move(const Finding& finding, std::size_t element) const;

  SourceTree tree_;
  std::optional<SourceEditor> editor_;  // none if the XML has to be mended first
  std::unique_ptr<OpenDocument> document_;
  std::map<std::size_t, std::size_t> names_;  // the elements by the begin of their names
};

}  // namespace vexor
