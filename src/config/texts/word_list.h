// Lists of words, and the search for the word that a mistyped one was meant to be.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexor {

using Words = std::vector<std::string_view>;

// Splits "a;b;c" at the semicolons. The result points into `joined`.
Words SplitWords(std::string_view joined);

// Returns "a, b or c".
std::string JoinWordList(std::span<const std::string_view> words);

// Returns "a, b".
std::string JoinWithCommas(std::span<const std::string_view> words);

// Returns "a and b".
std::string JoinWithAnd(std::span<const std::string_view> words);

// Returns the word nearest to the text by edit distance; empty if none is near or several are
// equally near.
std::string_view SuggestWord(std::string_view text, std::span<const std::string_view> words);

}  // namespace vexor
