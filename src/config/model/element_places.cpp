#include "config/model/element_places.h"

#include <algorithm>
#include <span>
#include <utility>

namespace vexor {
namespace {

// Returns the number of leading elements that two paths share.
std::ptrdiff_t CountShared(std::string_view a, std::string_view b) {
  const auto [end, unused] = std::ranges::mismatch(a, b);
  const auto whole = static_cast<std::size_t>(end - a.begin());
  const auto is_end = [whole](std::string_view path) {
    return whole == path.size() || path[whole] == '/';
  };
  const std::ptrdiff_t separators = std::ranges::count(a.substr(0, whole), '/');
  return separators + (whole > 0 && is_end(a) && is_end(b) ? 1 : 0);
}

}  // namespace

ElementPlaces::ElementPlaces(const ElementModel& root) {
  Collect(root, "");
  std::ranges::stable_sort(places_, {}, &Place::name);
}

// Skips the children of older names, which are those of the current names, and the options of
// argument lists, which are not elements.
void ElementPlaces::Collect(const ElementModel& parent, const std::string& path) {
  if (parent.content == ElementModel::Content::kArguments || parent.IsOlder()) return;
  for (const ElementModel& child : parent.children) {
    places_.push_back(
        {child.name, path.empty() ? std::string(parent.name) : path, child.HoldsElements()});
    Collect(child, path.empty() ? std::string(child.name) : path + "/" + std::string(child.name));
  }
}

ElementPlaces::Found ElementPlaces::Find(std::string_view name, Kind kind,
                                         std::string_view path) const {
  const auto is_kind = [kind](const Place& place) {
    return kind == Kind::kEither || place.holds_elements == (kind == Kind::kElements);
  };
  const auto rank = [&](const Place& place) {
    return std::pair(is_kind(place), CountShared(place.parent, path));
  };
  const auto first = std::ranges::lower_bound(places_, name, {}, &Place::name);
  const auto last = std::ranges::upper_bound(places_, name, {}, &Place::name);
  const std::span known(first, last);
  if (known.empty()) return {};
  const Place& best = *std::ranges::max_element(known, {}, rank);
  return {.nearest = best.parent,
          .others = std::ranges::count(known, rank(best), rank) - 1,
          .is_only = is_kind(best) && std::ranges::count_if(known, is_kind) == 1};
}

}  // namespace vexor
