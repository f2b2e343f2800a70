// The words that a text may be made of, and the one that a mistyped text was meant to be.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexor {

using Words = std::vector<std::string_view>;

// "a;b;c"
Words SplitWords(std::string_view joined);

// Returns "a, b or c".
std::string JoinWordList(std::span<const std::string_view> words);

// Returns "a, b".
std::string JoinWithCommas(std::span<const std::string_view> words);

// Returns "a and b".
std::string JoinWithAnd(std::span<const std::string_view> words);

// Returns the word that the text is nearest to, empty text where none is near or several are
// equally near.
std::string_view SuggestWord(std::string_view text, std::span<const std::string_view> words);

}  // namespace vexor
