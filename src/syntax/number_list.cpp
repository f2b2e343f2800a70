#include "syntax/number_list.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

#include "util/number_range.h"
#include "util/text.h"
#include "vexor/util/numbers.h"

namespace vexor {

namespace {

struct Range {
  std::uint64_t low = 0;
  std::uint64_t high = 0;
};

std::optional<Range> ReadRange(std::string_view text, NumberBase base) {
  const auto read = [base](std::string_view bound) {
    const UnsignedText number = ReadUnsigned(bound, base);
    return number.kind == UnsignedText::Kind::kNumber ? number.value : kNoNumber64;
  };
  const std::size_t dash = text.find('-');
  const std::uint64_t first = read(text.substr(0, dash));
  const std::uint64_t second = dash == std::string_view::npos ? first : read(text.substr(dash + 1));
  if (first == kNoNumber64 || second == kNoNumber64) return std::nullopt;
  return Range{std::min(first, second), std::max(first, second)};
}

void AppendRange(const Range& range, std::vector<int>& numbers) {
  const std::size_t first = numbers.size();
  numbers.resize(first + static_cast<std::size_t>(range.high - range.low) + 1);
  std::uint64_t value = range.low;
  for (int& number : std::span(numbers).subspan(first)) number = static_cast<int>(value++);
}

}  // namespace

std::uint64_t ReadNumberList(std::string_view text, std::vector<int>* numbers, FaultNote& note,
                             NumberBase base) {
  const std::size_t first = numbers != nullptr ? numbers->size() : 0;
  std::uint64_t count = 0;  // includes discarded numbers, which take time as well
  std::string_view rest = text;
  for (std::string_view item; TakeItem(rest, ',', item);) {
    std::string buffer;
    const std::string_view digits = RemoveBrackets(TrimIf(item, IsBracket), buffer);
    // Brackets alone after the last "," are no item, just as there is none if nothing follows it.
    if (digits.empty() && item.data() + item.size() == text.data() + text.size()) break;
    const std::optional<Range> range = ReadRange(digits, base);
    if (!range) {
      note.At(item, "not a number or a range", "a number such as 2 or 0x2, or a range such as 2-4");
      if (numbers != nullptr) numbers->resize(first);
      continue;
    }
    const std::uint64_t width = range->high - range->low;
    const bool is_too_long = width >= kMaxRangeValues - count;
    if (is_too_long && numbers != nullptr) ThrowTooLong(item);
    if (is_too_long) {
      note.At(item, "too many numbers", "at most 16777216 in a list", FaultKind::kLargeNumber);
      break;
    }
    count += width + 1;
    if (numbers != nullptr) AppendRange(*range, *numbers);
  }
  return count;
}

std::string_view FindRepeatedNumber(std::string_view text) {
  std::map<std::uint64_t, std::uint64_t> seen;  // the highest number of a range, by its lowest
  std::string_view rest = text;
  for (std::string_view item; TakeItem(rest, ',', item);) {
    std::string buffer;
    const auto range =
        ReadRange(RemoveBrackets(TrimIf(item, IsBracket), buffer), NumberBase::kDecimal);
    if (!range) continue;
    const auto above = seen.upper_bound(range->high);
    if (above != seen.begin() && std::prev(above)->second >= range->low) return item;
    seen.emplace(range->low, range->high);
  }
  return {};
}

}  // namespace vexor
