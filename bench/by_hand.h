// Shared code of the hand-written loops. They assume the form of their texts, do not detect bad
// texts, and are inlined.
#pragma once

#include <algorithm>
#include <charconv>
#include <string_view>

namespace vexor {

template <class Number = int>
Number ReadByHand(std::string_view text, int base = 10) {
  Number number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number, base);
  return number;
}

template <class Use>
void ForEachItemByHand(std::string_view text, char delimiter, Use use) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(delimiter), text.size());
    use(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

// Calls `use` with all numbers of a list such as "0,2-4".
template <class Use>
void ForEachNumberByHand(std::string_view text, Use use) {
  ForEachItemByHand(text, ',', [&](std::string_view item) {
    const std::size_t dash = item.find('-');
    const int low = ReadByHand(item.substr(0, dash));
    const int high = dash == std::string_view::npos ? low : ReadByHand(item.substr(dash + 1));
    for (int number = low; number <= high; ++number) use(number);
  });
}

}  // namespace vexor
