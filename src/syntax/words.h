// Tables of words that stand for values, and lists of words. Words are compared as a whole,
// ignoring case.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string_view>

#include "syntax/fault.h"
#include "util/table_checks.h"
#include "util/text.h"

namespace vexor {

template <class Value>
struct Word {
  std::string_view text;
  Value value;
};

// Returns the word of a table's row. Tables with rows of another type overload it.
constexpr std::string_view WordOf(std::string_view word) { return word; }

template <class Value>
constexpr std::string_view WordOf(const Word<Value>& word) {
  return word.text;
}

// Returns the row whose word is the text; null if there is none.
template <class Rows>
constexpr auto FindWord(const Rows& rows, std::string_view text) -> decltype(rows.data()) {
  for (const auto& row : rows) {
    if (EqualsIgnoreCase(WordOf(row), text)) return &row;
  }
  return nullptr;
}

// Calls `read` with each item of a list separated by "," or ";", trimmed. Skips empty items, but
// not those that consist of blanks.
template <class Read>
constexpr void ForEachItem(std::string_view text, Read read) {
  for (std::string_view group; TakeFilledItem(text, ';', group);) {
    for (std::string_view item; TakeFilledItem(group, ',', item);) read(TrimBlanks(item));
  }
}

// The words of a constant table, and a text that lists them, such as "AC, DC or Default". Both are
// made at compile time.
template <const auto& kRows>
class WordList {
  static constexpr std::string_view kComma = ", ";
  static constexpr std::string_view kOr = " or ";

  static constexpr std::string_view SeparatorBefore(std::size_t row) {
    if (row == 0) return {};
    return row + 1 == kRows.size() ? kOr : kComma;
  }

  static constexpr auto kWords = [] {
    std::array<std::string_view, kRows.size()> words;
    std::ranges::transform(kRows, words.begin(), [](const auto& row) { return WordOf(row); });
    return words;
  }();
  static_assert(AreDistinct(kWords, std::identity(), EqualsIgnoreCase), "a word stands twice");

  static constexpr std::size_t kSize = [] {
    std::size_t size = 0;
    for (std::size_t i = 0; i < kWords.size(); ++i) {
      size += SeparatorBefore(i).size() + kWords[i].size();
    }
    return size;
  }();

  static constexpr auto kChars = [] {
    std::array<char, kSize> chars{};
    auto out = chars.begin();
    for (std::size_t i = 0; i < kWords.size(); ++i) {
      out = std::ranges::copy(SeparatorBefore(i), out).out;
      out = std::ranges::copy(kWords[i], out).out;
    }
    return chars;
  }();

 public:
  static constexpr Expectation kExpectation{{kChars.data(), kChars.size()}, kWords};
};

// What a fault expects where any word of a table is valid, for example `kOneOf<kSchemes>`.
template <const auto& kRows>
inline constexpr Expectation kOneOf = WordList<kRows>::kExpectation;

// Concatenates texts at compile time.
template <const std::string_view&... kTexts>
class JoinedTexts {
  static constexpr auto kChars = [] {
    std::array<char, (kTexts.size() + ...)> chars{};
    auto out = chars.begin();
    ((out = std::ranges::copy(kTexts, out).out), ...);
    return chars;
  }();

 public:
  static constexpr std::string_view kText{kChars.data(), kChars.size()};
};

}  // namespace vexor
