// Finds the name that a mistyped text most likely means.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "util/text.h"

namespace vexor {

// How many bytes of a text and of a name are compared.
inline constexpr std::size_t kLongestCompared = 31;

// Returns how many letters must be changed, added, dropped or swapped with their neighbour to turn
// `from` into `to`, ignoring case: the Damerau-Levenshtein distance (optimal string alignment).
// Every byte of `to` beyond `kLongestCompared` counts as added; those of `from` do not count.
constexpr std::size_t CountEdits(std::string_view from, std::string_view to) {
  using Row = std::array<std::size_t, kLongestCompared + 1>;
  Row earlier{};
  Row above{};
  Row row{};
  from = from.substr(0, kLongestCompared);
  const std::size_t excess = to.size() - std::min(to.size(), kLongestCompared);
  to.remove_suffix(excess);
  // Only three rows of the table of distances are needed at a time.
  for (std::size_t j = 0; j <= to.size(); ++j) row[j] = j;
  for (std::size_t i = 0; i < from.size(); ++i) {
    earlier = above;
    above = row;
    row[0] = i + 1;
    for (std::size_t j = 0; j < to.size(); ++j) {
      const auto is_same = [&](std::size_t a, std::size_t b) {
        return ToUpper(from[a]) == ToUpper(to[b]);
      };
      row[j + 1] = std::min({above[j] + (is_same(i, j) ? 0 : 1), above[j + 1] + 1, row[j] + 1});
      const bool is_swapped = i > 0 && j > 0 && is_same(i, j - 1) && is_same(i - 1, j);
      if (is_swapped) row[j + 1] = std::min(row[j + 1], earlier[j - 1] + 1);
    }
  }
  return row[to.size()] + excess;
}

// Returns the first of the rows whose names need the fewest edits; null if there are no rows.
template <class Rows, class NameOf>
auto FindNearestRow(std::string_view text, const Rows& rows, NameOf name_of)
    -> decltype(&*rows.begin()) {
  decltype(&*rows.begin()) nearest = nullptr;
  auto fewest = static_cast<std::size_t>(-1);
  for (const auto& row : rows) {
    const std::size_t edits = CountEdits(text, name_of(row));
    if (edits >= fewest) continue;
    fewest = edits;
    nearest = &row;
  }
  return nearest;
}

// Returns the name of that row; empty text if there are no rows.
template <class Rows, class NameOf>
std::string_view FindNearest(std::string_view text, const Rows& rows, NameOf name_of) {
  const auto* const nearest = FindNearestRow(text, rows, name_of);
  return nearest == nullptr ? std::string_view() : std::string_view(name_of(*nearest));
}

}  // namespace vexor
