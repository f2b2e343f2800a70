#include "config/texts/word_list.h"

#include <algorithm>

#include "syntax/nearest.h"
#include "util/text.h"

namespace vexor {
namespace {

constexpr std::string_view kComma = ", ";
constexpr std::string_view kOr = " or ";

// In a short word, one changed letter already makes a different word.
std::size_t MostEdits(std::string_view word) {
  return word.size() < 3 ? 0 : std::max<std::size_t>(1, word.size() / 3);
}

std::string JoinWith(std::span<const std::string_view> words, std::string_view separator) {
  std::string joined;
  for (const std::string_view word : words) {
    joined.append(joined.empty() ? std::string_view() : separator).append(word);
  }
  return joined;
}

// A cheap test before the quadratic CountEdits: one edit changes the length by at most one.
bool CanBeNear(std::string_view text, std::string_view word) {
  const auto [shorter, longer] = std::minmax({text.size(), word.size()});
  return longer <= kLongestCompared && longer - shorter <= MostEdits(word);
}

}  // namespace

Words SplitWords(std::string_view joined) {
  Words words;
  for (std::string_view word; TakeItem(joined, ';', word);) words.push_back(word);
  return words;
}

std::string JoinWordList(std::span<const std::string_view> words) {
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) list += i + 1 == words.size() ? kOr : kComma;
    list += words[i];
  }
  return list;
}

std::string JoinWithCommas(std::span<const std::string_view> words) {
  return JoinWith(words, kComma);
}

std::string JoinWithAnd(std::span<const std::string_view> words) {
  return JoinWith(words, " and ");
}

std::string_view SuggestWord(std::string_view text, std::span<const std::string_view> words) {
  std::string_view nearest;
  std::size_t fewest = kLongestCompared;
  for (const std::string_view word : words) {
    if (!CanBeNear(text, word)) continue;
    const std::size_t edits = CountEdits(text, word);
    if (edits > MostEdits(word) || edits > fewest) continue;
    nearest =
        edits == fewest ? std::string_view() : word;  // a tie: no guess is better than a bad one
    fewest = edits;
  }
  return nearest;
}

}  // namespace vexor
