// Conditions that constant tables must meet, for a static_assert beside the table.
#pragma once

#include <cstddef>
#include <functional>

namespace vexor {

// Returns whether `conflict` is false for every row and each row below it.
template <class Rows, class Conflict>
constexpr bool NoTwo(const Rows& rows, Conflict conflict) {
  for (auto lower = rows.begin(); lower != rows.end(); ++lower) {
    for (auto upper = rows.begin(); upper != lower; ++upper) {
      if (conflict(*upper, *lower)) return false;
    }
  }
  return true;
}

// Returns whether all rows differ in a member, or in whatever else `key` is.
template <class Rows, class Key = std::identity, class Equals = std::equal_to<>>
constexpr bool AreDistinct(const Rows& rows, Key key = {}, Equals equals = {}) {
  return NoTwo(rows, [&](const auto& upper, const auto& lower) {
    return equals(std::invoke(key, upper), std::invoke(key, lower));
  });
}

// Returns whether the rows' values are 0, 1, 2, ...
template <class Rows, class Row, class Enum>
constexpr bool AreInOrder(const Rows& rows, Enum Row::*value) {
  std::size_t index = 0;
  for (const Row& row : rows) {
    if (static_cast<std::size_t>(row.*value) != index++) return false;
  }
  return true;
}

}  // namespace vexor
