#include "vexor/util/strings.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <utility>

#include "util/text.h"

namespace vexor {

namespace {

bool AreEqual(std::string_view a, std::string_view b, bool ignore_case) {
  return ignore_case ? EqualsIgnoreCase(a, b) : a == b;
}

}  // namespace

}  // namespace vexor

using namespace vexor;

std::vector<std::string> Split(std::string_view text, char delimiter, bool trim) {
  std::vector<std::string> items;
  for (std::string_view item; TakeFilledItem(text, delimiter, item);) {
    items.emplace_back(trim ? TrimBlanks(item) : item);
  }
  return items;
}

std::vector<std::string> Splits(std::string_view text, char delimiter,
                                std::vector<std::string>& out) {
  // Split first, then grow `out`: the text may be an element of `out`.
  std::vector<std::string> items = Split(text, delimiter, false);
  out.insert(out.end(), std::make_move_iterator(items.begin()),
             std::make_move_iterator(items.end()));
  return out;
}

std::vector<std::string> SplitByString(std::string_view text, std::string_view delimiter) {
  // Deliberately fixed, not the delimiter's length: callers split at ", " and rely on the results.
  constexpr std::size_t kRestart = 2;
  std::vector<std::string> items;
  if (!delimiter.empty()) {
    for (std::size_t at = text.find(delimiter); at != std::string_view::npos;
         at = text.find(delimiter)) {
      items.emplace_back(text.substr(0, at));
      text = text.substr(at + kRestart);  // throws std::out_of_range beyond the end
    }
  }
  items.emplace_back(text);
  return items;
}

std::string Trim(std::string_view text) { return std::string(TrimBlanks(text)); }

bool StringCompare(std::string_view a, std::string_view b, bool ignore_case) {
  return AreEqual(a, b, ignore_case);
}

bool StringContains(std::string_view a, std::string_view b, bool ignore_case) {
  return ignore_case ? ContainsIgnoreCase(a, b) : a.find(b) != std::string_view::npos;
}

bool StringStartswith(std::string_view a, std::string_view b, bool ignore_case) {
  return ignore_case ? StartsWithIgnoreCase(a, b) : a.starts_with(b);
}

bool StringEndsWith(std::string_view a, std::string_view b, bool ignore_case) {
  return ignore_case ? EndsWithIgnoreCase(a, b) : a.ends_with(b);
}

bool StringHasAny(std::string_view text, const std::vector<std::string>& list, bool prefix_mode) {
  // The asymmetry is deliberate: prefixes match in any case, other parts only in their own.
  return std::ranges::any_of(list, [&](const std::string& entry) {
    return prefix_mode ? StartsWithIgnoreCase(text, entry)
                       : text.find(entry) != std::string_view::npos;
  });
}

bool StringContainsKeyword(std::string_view list, std::string_view keyword, char delimiter,
                           bool ignore_case) {
  for (std::string_view item; TakeFilledItem(list, delimiter, item);) {
    if (AreEqual(TrimBlanks(item), keyword, ignore_case)) return true;
  }
  return false;
}

bool IsInVector(const std::vector<std::string>& items, std::string_view text, bool ignore_case) {
  return std::ranges::any_of(
      items, [&](const std::string& item) { return AreEqual(item, text, ignore_case); });
}

std::string StringToUpper(std::string_view text) {
  std::string upper(text);
  std::ranges::transform(upper, upper.begin(), ToUpper);
  return upper;
}

bool StringBoolean(std::string_view text, bool default_value) {
  return text.empty() ? default_value : EqualsIgnoreCase(text, "true");
}

std::string Bool2String(bool value, std::string_view text_if_true, std::string_view text_if_false) {
  return std::string(value ? text_if_true : text_if_false);
}

std::string StringReplace(std::string_view text, char old_char, char new_char) {
  std::string joined;
  joined.reserve(text.size());
  for (std::string_view item; TakeFilledItem(text, old_char, item);) {
    if (!joined.empty()) joined += new_char;
    joined += item;
  }
  return joined;
}

void StringReplaceSubstring(std::string& text, std::string_view old_text,
                            std::string_view new_text) {
  if (old_text.empty()) return;
  std::string replaced;
  std::size_t copied = 0;
  for (std::size_t at = text.find(old_text); at != std::string::npos;
       at = text.find(old_text, copied)) {
    replaced.append(text, copied, at - copied).append(new_text);
    copied = at + old_text.size();
  }
  if (copied == 0) return;
  replaced.append(text, copied);
  text = std::move(replaced);
}

void RemoveCharsFromString(std::string& text, const char* set) {
  std::array<bool, 256> is_removed{};
  for (; *set != '\0'; ++set) is_removed[static_cast<unsigned char>(*set)] = true;
  std::erase_if(text, [&](char c) { return is_removed[static_cast<unsigned char>(c)]; });
}

std::string RemoveUnits(std::string_view text) {
  std::string number;
  std::ranges::copy_if(text, std::back_inserter(number),
                       [](char c) { return IsDecDigit(c) || c == '.'; });
  return number;
}

std::string ConcatCharVec(const std::vector<const char*>& items, std::string_view separator,
                          std::string_view tail, bool leading_separator, bool tail_after_last) {
  std::string text;
  const std::size_t count = items.size();
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0 || leading_separator) text += separator;
    text.append("'").append(items[i]).append("' ");
    // Deliberately no tail after the second to last item; the last one has a flag of its own.
    const bool is_last = i + 1 == count;
    if (is_last ? tail_after_last : i + 2 < count) text += tail;
  }
  return text;
}

std::string WChar2String(const unsigned short* wide, int count) {
  constexpr int kMaxLength = 255;
  std::string text;
  for (int i = 0; i < std::min(count, kMaxLength); ++i) {
    const char low_byte = static_cast<char>(wide[i] & 0xFFU);
    if (low_byte == '\0') break;
    text += low_byte;
  }
  return text;
}

std::uint64_t String2Ascii(std::string_view text) {
  constexpr std::size_t kMaxLength = 8;
  if (text.size() > kMaxLength) {
    std::printf("ERROR: Attemping string exceeds conversion limit: %s\n",
                std::string(text).c_str());
    return 0;
  }
  std::uint64_t packed = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    // Deliberately in signed 32 bits, as callers compare the results with stored numbers: the
    // characters 5 to 8 are OR-ed over the first four, and a sign fills the upper half.
    const std::int32_t widened = static_cast<std::int8_t>(text[i]);
    const auto shifted =
        static_cast<std::int32_t>(static_cast<std::uint32_t>(widened) << (8 * i % 32));
    packed |= static_cast<std::uint64_t>(std::int64_t{shifted});
  }
  return packed;
}

bool IsNotDigit(char c) { return !IsDecDigit(c); }

bool IsDecString(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, IsDecDigit);
}

bool IsHexString(std::string_view text) {
  return HasHexPrefix(text) && text.size() > 2 && std::ranges::all_of(text.substr(2), IsHexDigit);
}

bool IsDecOrHexString(std::string_view text) { return IsHexString(text) || IsDecString(text); }
