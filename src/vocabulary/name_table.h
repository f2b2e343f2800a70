// Names of the values of an enumeration that counts from 0. One table serves both directions: a
// value is the index of its row. In the source, each row also has its enumerator, and the order of
// the rows is checked at compile time.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "util/table_checks.h"

namespace vexor {

// The rows are string literals, so data() is a C string.
using NameTable = std::span<const std::string_view>;

// Returns the name of `value`, `otherwise` for a value without one.
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

template <class Enum>
struct NamedValue {
  Enum value;
  std::string_view name;
  std::string_view long_name = {};
};

// Returns the value after `value`, as the end of an enumeration whose "unknown" value is far above.
template <class Enum>
consteval Enum Next(Enum value) {
  return static_cast<Enum>(value + 1);
}

// Returns the names of all values below `kEnd`. Does not compile if a value has no row, rows are
// out of order, or a name occurs twice.
template <auto kEnd>
consteval auto NamesBefore(
    const NamedValue<decltype(kEnd)> (&rows)[kEnd],
    std::string_view NamedValue<decltype(kEnd)>::*form = &NamedValue<decltype(kEnd)>::name) {
  std::array<std::string_view, kEnd> names;
  std::ranges::transform(rows, names.begin(), form);
  if (!AreInOrder(rows, &NamedValue<decltype(kEnd)>::value)) throw "rows are in another order";
  if (!AreDistinct(names)) throw "a name stands twice";
  return names;
}

// Tables of values with a short and a long name.
template <std::size_t kCount>
struct BothNames {
  std::array<std::string_view, kCount> short_names;
  std::array<std::string_view, kCount> long_names;

  [[nodiscard]] constexpr NameTable Form(bool is_long) const {
    return is_long ? long_names : short_names;
  }
};

template <auto kEnd>
consteval BothNames<kEnd> BothNamesBefore(const NamedValue<decltype(kEnd)> (&rows)[kEnd]) {
  return {NamesBefore<kEnd>(rows), NamesBefore<kEnd>(rows, &NamedValue<decltype(kEnd)>::long_name)};
}

}  // namespace vexor
