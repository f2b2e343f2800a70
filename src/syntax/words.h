// Words that stand for values, and lists of them. A word is compared as a whole and in any case.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "util/text.h"

namespace vexor {

template <class Value>
struct Word {
  std::string_view text;
  Value value;
};

constexpr std::string_view TextOf(std::string_view word) { return word; }

template <class Value>
constexpr std::string_view TextOf(const Word<Value>& word) {
  return word.text;
}

// Returns the first row of the text, null when no row has it.
template <class Rows>
constexpr auto FindWord(const Rows& rows, std::string_view text) -> decltype(rows.data()) {
  for (const auto& row : rows) {
    if (EqualsIgnoreCase(TextOf(row), text)) return &row;
  }
  return nullptr;
}

// Calls `read` with each item of a list at "," or ";", without its outer blanks. Empty items are
// passed over.
template <class Read>
constexpr void ForEachItem(std::string_view text, Read read) {
  for (std::string_view group; TakeFilledItem(text, ';', group);) {
    for (std::string_view item; TakeFilledItem(group, ',', item);) read(TrimBlanks(item));
  }
}

// The texts of a constant table as one text, made at compile time: "AC, DC or Default".
template <const auto& kRows>
class JoinedWords {
  static constexpr std::string_view kComma = ", ";
  static constexpr std::string_view kOr = " or ";

  static constexpr std::string_view SeparatorBefore(std::size_t row) {
    if (row == 0) return {};
    return row + 1 == kRows.size() ? kOr : kComma;
  }

  static constexpr std::size_t kSize = [] {
    std::size_t size = 0;
    for (std::size_t row = 0; row < kRows.size(); ++row) {
      size += SeparatorBefore(row).size() + TextOf(kRows[row]).size();
    }
    return size;
  }();

  static constexpr auto kChars = [] {
    std::array<char, kSize> chars{};
    std::size_t end = 0;
    for (std::size_t row = 0; row < kRows.size(); ++row) {
      for (const char c : SeparatorBefore(row)) chars[end++] = c;
      for (const char c : TextOf(kRows[row])) chars[end++] = c;
    }
    return chars;
  }();

 public:
  static constexpr std::string_view kText{kChars.data(), kChars.size()};
};

// For example `kListOf<kSchemes>`, the words that a fault says it expected.
template <const auto& kRows>
inline constexpr std::string_view kListOf = JoinedWords<kRows>::kText;

}  // namespace vexor
