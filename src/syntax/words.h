// Words that stand for values, and lists of them. A word is compared as a whole and in any case.
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

constexpr std::string_view WordOf(std::string_view word) { return word; }

template <class Value>
constexpr std::string_view WordOf(const Word<Value>& word) {
  return word.text;
}

// Returns the first row of the text, null when no row has it.
template <class Rows>
constexpr auto FindWord(const Rows& rows, std::string_view text) -> decltype(rows.data()) {
  for (const auto& row : rows) {
    if (EqualsIgnoreCase(WordOf(row), text)) return &row;
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

// The texts of a constant table, and their list as one text, made at compile time: "AC, DC or
// Default".
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

// For example `kOneOf<kSchemes>`, where a fault expects one of the schemes.
template <const auto& kRows>
inline constexpr Expectation kOneOf = WordList<kRows>::kExpectation;

// Several texts as one, made at compile time.
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
