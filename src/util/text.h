// Building blocks of the text parsers. They work on bytes, fold case like the "C" locale, and
// allocate no memory. A parser consumes its text from the front:
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

// Every text contains an empty part.
constexpr bool ContainsIgnoreCase(std::string_view text, std::string_view part) {
  const auto is_same = [](char a, char b) { return ToUpper(a) == ToUpper(b); };
  return std::search(text.begin(), text.end(), part.begin(), part.end(), is_same) != text.end() ||
         part.empty();
}

// Returns the text without the bytes at both ends for which the predicate is true. If it is true
// for all bytes, the result is empty and refers to the end of the text (fault reports use the
// place).
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

// Removes leading white space and one sign, as the C library's conversions do. Returns whether the
// sign is a minus.
constexpr bool TakeSign(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(" \t\n\v\f\r"), rest.size()));
  const bool is_negative = rest.starts_with('-');
  if (is_negative || rest.starts_with('+')) rest.remove_prefix(1);
  return is_negative;
}

// Like `text.find(wanted)`, but faster for short items: calling memchr takes longer than searching
// a few bytes.
constexpr std::size_t FindByte(std::string_view text, char wanted) {
  constexpr std::size_t kShort = 16;
  const std::size_t looked_at = std::min(text.size(), kShort);
  for (std::size_t i = 0; i < looked_at; ++i) {
    if (text[i] == wanted) return i;
  }
  return text.find(wanted, looked_at);
}

// Removes the next item and its delimiter from the front of `rest`; false if `rest` is empty. Items
// may be empty, but there is none after a trailing delimiter: "a,,b," has the items "a", "" and
// "b", an empty text has none.
constexpr bool TakeItem(std::string_view& rest, char delimiter, std::string_view& item) {
  if (rest.empty()) return false;
  const std::size_t end = FindByte(rest, delimiter);
  item = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  return true;
}

// Like `TakeItem`, but skips empty items: ",a,,b" has the items "a" and "b".
constexpr bool TakeFilledItem(std::string_view& rest, char delimiter, std::string_view& item) {
  while (TakeItem(rest, delimiter, item)) {
    if (!item.empty()) return true;
  }
  return false;
}

constexpr bool HasHexPrefix(std::string_view text) {
  return text.size() >= 2 && text[0] == '0' && ToUpper(text[1]) == 'X';
}

// The result of reading an unsigned number. `value` is valid only with `kNumber`.
struct UnsignedText {
  enum class Kind : std::uint8_t { kNumber, kNotANumber, kBeyond64Bits };
  Kind kind = Kind::kNotANumber;
  std::uint64_t value = 0;
};

// Reads one or more digits of the base, without sign, prefix or blanks.
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

// The base of digits without "0x".
enum class NumberBase : std::uint8_t { kDecimal, kHexadecimal };

// Reads a text that is a number as a whole: digits of the base, or "0x" or "0X" and hexadecimal
// digits.
inline UnsignedText ReadUnsigned(std::string_view text, NumberBase base = NumberBase::kDecimal) {
  if (HasHexPrefix(text)) return ReadDigits<16>(text.substr(2));
  return base == NumberBase::kHexadecimal ? ReadDigits<16>(text) : ReadDigits<10>(text);
}

// Returns the number of `ReadUnsigned`; nothing for any other text and for a number beyond 64 bits.
// To propagate out_of_range, call String2Integer.
inline std::optional<std::uint64_t> ParseUnsigned(std::string_view text) {
  const UnsignedText number = ReadUnsigned(text);
  if (number.kind != UnsignedText::Kind::kNumber) return std::nullopt;
  return number.value;
}

}  // namespace vexor
