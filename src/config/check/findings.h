// Collects the findings of a check.
#pragma once

#include <tinyxml2.h>

#include <string>
#include <string_view>
#include <vector>

#include "config/tables/finding_kinds.h"
#include "vexor/config/check.h"

namespace vexor {

// Sets line and column of the findings that have a place.
void SetColumns(std::string_view content, std::vector<Finding>& findings);

class Findings {
 public:
  // These add a finding on the given line or that of the node, with the severity of its kind. The
  // caller sets `expected` and `suggestion` in the result, which is valid until the next finding is
  // added.
  Finding& Add(FindingKind kind, int line, std::string path, std::string_view text,
               std::string what);
  Finding& Add(FindingKind kind, const tinyxml2::XMLNode& at, const std::string& path,
               std::string_view text, std::string what);

  // Sets the places of all findings in the content, from which the document was made.
  void Locate(std::string_view content, const tinyxml2::XMLDocument& document);

  // Marks each finding for which `is_allowed` returns true. Its arguments are the finding and its
  // node, which is null for one that has only a line.
  template <class IsAllowed>
  void Allow(IsAllowed is_allowed) {
    for (std::size_t i = 0; i < findings_.size(); ++i) {
      Finding& finding = findings_[i];
      const bool can_be_allowed = !FindFindingRow(finding.code)->ends_reading;
      if (can_be_allowed && !finding.is_allowed)
        finding.is_allowed = is_allowed(finding, nodes_[i]);
    }
  }

  // Returns all findings sorted by line, those of one line in the order in which they were added.
  std::vector<Finding> Sorted() &&;

 private:
  std::vector<Finding> findings_;
  std::vector<const tinyxml2::XMLNode*> nodes_;  // of each finding; null if it has none
};

}  // namespace vexor
