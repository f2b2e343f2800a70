// Where the elements of each name may stand, for those that were found elsewhere.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/model/document_model.h"

namespace vexor {

class ElementPlaces {
 public:
  explicit ElementPlaces(const ElementModel& root);

  // What kind of element was found: one that is empty may be of either kind.
  enum class Kind : std::uint8_t { kText, kElements, kEither };

  // Returns the elements that the name is known in, those first that are close to `path`:
  // "GLOBALPM/SYSTEM", or "GLOBALPM/CORE/CSTATES or 5 other elements". Empty text for a name that
  // is known nowhere.
  [[nodiscard]] std::string Find(std::string_view name, Kind kind, std::string_view path) const;

 private:
  struct Place {
    std::string_view name;
    std::string parent;  // "GLOBALPM/SYSTEM"
    bool holds_elements;
  };

  void Collect(const ElementModel& parent, const std::string& path);

  std::vector<Place> places_;  // by name, equal ones in the order of a file
};

}  // namespace vexor
