// An index of the document model by element name, to suggest where a misplaced element belongs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/model/document_model.h"

namespace vexor {

class ElementPlaces {
 public:
  explicit ElementPlaces(const ElementModel& root);

  // What the misplaced element holds; an empty one may be of either kind.
  enum class Kind : std::uint8_t { kText, kElements, kEither };

  // Returns the parent elements in which the name is valid, the one nearest to `path` first:
  // "GLOBALPM/SYSTEM", or "GLOBALPM/CORE/CSTATES or 5 other elements". Returns empty text for an
  // unknown name.
  [[nodiscard]] std::string Find(std::string_view name, Kind kind, std::string_view path) const;

 private:
  struct Place {
    std::string_view name;
    std::string parent;  // "GLOBALPM/SYSTEM"
    bool holds_elements;
  };

  void Collect(const ElementModel& parent, const std::string& path);

  std::vector<Place> places_;  // sorted by name, equal names in the order of a file
};

}  // namespace vexor
