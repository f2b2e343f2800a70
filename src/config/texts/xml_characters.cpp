#include "config/texts/xml_characters.h"

#include <algorithm>
#include <cassert>

namespace vexor {
namespace {

struct Range {
  char32_t first, last;
};

// NameStartChar of the XML recommendation.
constexpr Range kNameStarts[] = {
    {':', ':'},       {'A', 'Z'},       {'_', '_'},       {'a', 'z'},
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
    {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};
// The additional characters of NameChar.
constexpr Range kNameParts[] = {
    {'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040},
};
constexpr Range kCharacters[] = {
    {'\t', '\n'}, {'\r', '\r'}, {' ', 0xD7FF}, {0xE000, 0xFFFD}, {0x10000, 0x10FFFF},
};

template <std::size_t kSize>
bool IsIn(const Range (&ranges)[kSize], char32_t c) {
  return std::ranges::any_of(
      ranges, [c](const Range& range) { return c >= range.first && c <= range.last; });
}

// The smallest values that need 2, 3 and 4 bytes. Overlong encodings are invalid UTF-8.
constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};

}  // namespace

Utf8Character DecodeUtf8(std::string_view text) {
  assert(!text.empty());
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return {.value = first, .size = 1};
  const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC0 || first > 0xF7 || text.size() < size) return {};
  char32_t value = first & (0xFFU >> (size + 1));
  for (std::size_t i = 1; i < size; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) return {};
    value = value << 6U | (byte(i) & 0x3FU);
  }
  const bool is_surrogate = value >= 0xD800 && value <= 0xDFFF;
  if (value < kLeast[size] || value > 0x10FFFF || is_surrogate) return {};
  return {.value = value, .size = size};
}

std::string FormatHex(std::string_view prefix, std::size_t digits, char32_t value) {
  std::string text(prefix);
  for (std::size_t i = digits; i-- > 0;) text += "0123456789ABCDEF"[value >> (4 * i) & 0xFU];
  return text;
}

bool IsXmlCharacter(char32_t c) { return IsIn(kCharacters, c); }

bool IsXmlName(std::string_view text) {
  if (text.empty()) return false;
  for (bool is_first = true; !text.empty(); is_first = false) {
    const auto [c, size] = DecodeUtf8(text);
    if (size == 0 || (!IsIn(kNameStarts, c) && (is_first || !IsIn(kNameParts, c)))) return false;
    text.remove_prefix(size);
  }
  return true;
}

}  // namespace vexor
