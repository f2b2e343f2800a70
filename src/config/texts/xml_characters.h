// The character classes of XML 1.0.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vexor {

struct Utf8Character {
  char32_t value = 0;
  std::size_t size = 0;  // in bytes; 0 for invalid UTF-8
};

// Decodes the first character of a text, which must not be empty.
Utf8Character DecodeUtf8(std::string_view text);

// Returns the prefix and the given number of hexadecimal digits: "U+", 4 and ' ' give "U+0020".
std::string FormatHex(std::string_view prefix, std::size_t digits, char32_t value);

constexpr bool IsXmlBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// Returns whether XML allows the character, literally or as a reference.
bool IsXmlCharacter(char32_t c);

// Returns whether the text, in UTF-8, is a valid name of an element, attribute or entity.
bool IsXmlName(std::string_view text);

}  // namespace vexor
