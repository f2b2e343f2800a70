// Names of values that count from 0. One table serves both directions: the row's index is the
// value.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace vexor {

// A row of a table.
template <class Enum>
struct Named {
  Enum value;
  std::string_view name;
};

// Returns the names of rows that stand in the order of their values. Rows in another order do not
// compile.
template <class Enum, std::size_t kCount>
consteval std::array<std::string_view, kCount> NamesOf(const Named<Enum> (&rows)[kCount]) {
  std::array<std::string_view, kCount> names;
  for (std::size_t i = 0; i < kCount; ++i) {
    if (static_cast<std::size_t>(rows[i].value) != i) throw "a row is out of order";
    names[i] = rows[i].name;
  }
  return names;
}

// Rows are literals, so that each is a C string too.
using NameTable = std::span<const std::string_view>;

// Returns the name of `value`, `otherwise` for a value that has none.
constexpr const char* NameOf(NameTable names, int value, const char* otherwise = "") {
  const auto index = static_cast<std::size_t>(value);
  return value >= 0 && index < names.size() ? names[index].data() : otherwise;
}

// Returns the value whose name is exactly `text`, `otherwise` for any other text.
template <class Enum>
constexpr Enum ValueOf(NameTable names, std::string_view text, Enum otherwise) {
  const auto row = std::find(names.begin(), names.end(), text);
  return row == names.end() ? otherwise : static_cast<Enum>(row - names.begin());
}

constexpr bool AllDistinct(NameTable names) {
  for (auto row = names.begin(); row != names.end(); ++row) {
    if (std::find(names.begin(), row, *row) != row) return false;
  }
  return true;
}

}  // namespace vexor
