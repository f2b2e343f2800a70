// An index of the document model by element name, to suggest where a misplaced element belongs.
#pragma once

#include <cstddef>
#include <cstdint>
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

  // The parent elements in which a name is valid.
  struct Found {
    std::string nearest;        // "GLOBALPM/SYSTEM"; empty for an unknown name
    std::ptrdiff_t others = 0;  // those that are as near
    bool is_only = false;       // whether there is no other that holds an element of this kind
  };

  // Finds the parents of a name, the one nearest to `path` among those that hold such an element.
  [[nodiscard]] Found Find(std::string_view name, Kind kind, std::string_view path) const;

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
