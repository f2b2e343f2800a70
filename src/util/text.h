// Inner helpers of the text parsers. They work on bytes, fold case as the "C" locale does, and
// allocate nothing. A parser eats its text from the front:
//
//   std::string_view rest = "a;b;";
//   for (std::string_view item; TakeItem(rest, ';', item);) Use(item);  // "a", "b"
#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

namespace vexor {

constexpr bool IsDecDigit(char c) { return c >= '0' && c <= '9'; }

constexpr char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

constexpr bool IsHexDigit(char c) {
  return IsDecDigit(c) || (ToUpper(c) >= 'A' && ToUpper(c) <= 'F');
}

constexpr bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && ToUpper(a[i]) != ToUpper(b[i])) return false;
  }
  return true;
}

constexpr bool StartsWithIgnoreCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && EqualsIgnoreCase(text.substr(0, prefix.size()), prefix);
}

constexpr bool EndsWithIgnoreCase(std::string_view text, std::string_view suffix) {
  return text.size() >= suffix.size() &&
         EqualsIgnoreCase(text.substr(text.size() - suffix.size()), suffix);
}

// An empty part is contained in every text.
constexpr bool ContainsIgnoreCase(std::string_view text, std::string_view part) {
  const auto is_same = [](char a, char b) { return ToUpper(a) == ToUpper(b); };
  return std::search(text.begin(), text.end(), part.begin(), part.end(), is_same) != text.end() ||
         part.empty();
}

// Returns the text without the bytes at its two ends that the predicate holds for. What is left of
// a text of nothing else is empty and stands at the text's end.
template <class Predicate>
constexpr std::string_view TrimIf(std::string_view text, Predicate is_dropped) {
  while (!text.empty() && is_dropped(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_dropped(text.back())) text.remove_suffix(1);
  return text;
}

// Removes the space character only.
constexpr std::string_view TrimBlanks(std::string_view text) {
  return TrimIf(text, [](char c) { return c == ' '; });
}

// Removes the white space of XML: blank, tab, CR and LF.
constexpr std::string_view TrimSpace(std::string_view text) {
  return TrimIf(text, [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
}

// Takes white space and one sign off the front, as the C library's conversions do; whether the sign
// is a minus.
constexpr bool TakeSign(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(" \t\n\v\f\r"), rest.size()));
  const bool is_negative = rest.starts_with('-');
  if (is_negative || rest.starts_with('+')) rest.remove_prefix(1);
  return is_negative;
}

// Like `text.find(wanted)`. Items are short, and for a few bytes the call of a library function
// costs more than they do.
constexpr std::size_t FindByte(std::string_view text, char wanted) {
  constexpr std::size_t kShort = 16;
  const std::size_t looked_at = std::min(text.size(), kShort);
  for (std::size_t i = 0; i < looked_at; ++i) {
    if (text[i] == wanted) return i;
  }
  return text.find(wanted, looked_at);
}

// Takes the next item, up to the delimiter, off the front of `rest`; false when nothing is left.
// An empty item between delimiters is an item, a trailing delimiter gives none: "a,,b," holds "a",
// "" and "b", an empty text nothing.
constexpr bool TakeItem(std::string_view& rest, char delimiter, std::string_view& item) {
  if (rest.empty()) return false;
  const std::size_t end = FindByte(rest, delimiter);
  item = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return true;
}

// Like `TakeItem`, with empty items passed over: ",a,,b" holds "a" and "b".
constexpr bool TakeFilledItem(std::string_view& rest, char delimiter, std::string_view& item) {
  while (TakeItem(rest, delimiter, item)) {
    if (!item.empty()) return true;
  }
  return false;
}

constexpr bool HasHexPrefix(std::string_view text) {
  return text.size() >= 2 && text[0] == '0' && ToUpper(text[1]) == 'X';
}

// What a text says as an unsigned number. `value` counts only with `kNumber`.
struct UnsignedText {
  enum class Kind : std::uint8_t { kNumber, kNotANumber, kBeyond64Bits };
  Kind kind = Kind::kNotANumber;
  std::uint64_t value = 0;
};

// Reads digits of the base and nothing else: no sign, no prefix, no blank, at least one digit.
template <int kBase>
UnsignedText ReadDigits(std::string_view text) {
  using Kind = UnsignedText::Kind;
  const char* const end = text.data() + text.size();
  std::uint64_t value = 0;
  const auto [stop, error] = std::from_chars(text.data(), end, value, kBase);
  if (text.empty() || stop != end) return {};
  if (error == std::errc::result_out_of_range) return {.kind = Kind::kBeyond64Bits};
  return {.kind = Kind::kNumber, .value = value};
}

// How digits without "0x" are read.
enum class NumberBase : std::uint8_t { kDecimal, kHexadecimal };

// Reads a whole text of digits of the base, or of "0x" or "0X" and hexadecimal digits.
inline UnsignedText ReadUnsigned(std::string_view text, NumberBase base = NumberBase::kDecimal) {
  if (HasHexPrefix(text)) return ReadDigits<16>(text.substr(2));
  return base == NumberBase::kHexadecimal ? ReadDigits<16>(text) : ReadDigits<10>(text);
}

// The number that `ReadUnsigned` finds; nothing for any other text and for a number beyond 64 bits.
// Who must let the out-of-range error of the exported `String2Integer` pass calls that instead.
inline std::optional<std::uint64_t> ParseUnsigned(std::string_view text) {
  const UnsignedText number = ReadUnsigned(text);
  if (number.kind != UnsignedText::Kind::kNumber) return std::nullopt;
  return number.value;
}

}  // namespace vexor
