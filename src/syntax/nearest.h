// The name that a mistyped text most likely means.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "util/text.h"

namespace vexor {

// No name is longer, and no more of a text is looked at.
inline constexpr std::size_t kLongestCompared = 31;

// How many letters must be changed, added or dropped to make one text of the other, ignoring case:
// the edit distance of Levenshtein, one row of its table at a time.
constexpr std::size_t CountEdits(std::string_view from, std::string_view to) {
  std::array<std::size_t, kLongestCompared + 1> row{};
  for (std::size_t i = 0; i <= to.size(); ++i) row[i] = i;
  for (const char c : from.substr(0, kLongestCompared)) {
    std::size_t diagonal = row[0]++;
    for (std::size_t i = 0; i < to.size(); ++i) {
      const std::size_t replaced = diagonal + (ToUpper(c) == ToUpper(to[i]) ? 0 : 1);
      diagonal = row[i + 1];
      row[i + 1] = std::min({replaced, diagonal + 1, row[i] + 1});
    }
  }
  return row[to.size()];
}

// Returns the row whose name takes the fewest edits, the first of several; null for no rows.
template <class Rows, class NameOf>
auto FindNearestRow(std::string_view text, const Rows& rows, NameOf name_of)
    -> decltype(&*rows.begin()) {
  decltype(&*rows.begin()) nearest = nullptr;
  std::size_t fewest = kLongestCompared + 1;  // more than any distance
  for (const auto& row : rows) {
    const std::size_t edits = CountEdits(text, name_of(row));
    if (edits >= fewest) continue;
    fewest = edits;
    nearest = &row;
  }
  return nearest;
}

// Returns the name of that row, empty text for no rows.
template <class Rows, class NameOf>
std::string_view FindNearest(std::string_view text, const Rows& rows, NameOf name_of) {
  const auto* const nearest = FindNearestRow(text, rows, name_of);
  return nearest == nullptr ? std::string_view() : std::string_view(name_of(*nearest));
}

}  // namespace vexor
