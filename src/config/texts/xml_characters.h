// The characters of XML 1.0: which a document may hold, and which a name may be made of.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vexor {

struct Utf8Character {
  char32_t value = 0;
  std::size_t size = 0;  // in bytes; 0 for bytes that are no UTF-8
};

// Returns the character that a text, which is not empty, begins with.
Utf8Character DecodeUtf8(std::string_view text);

// Returns the prefix and the lowest digits of the value: "U+", 4 and ' ' give "U+0020".
std::string FormatHex(std::string_view prefix, std::size_t digits, char32_t value);

constexpr bool IsXmlBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// Whether a document may hold the character, as it is or as a reference.
bool IsXmlCharacter(char32_t c);

// Whether the text, in UTF-8, is a name of an element, an attribute or an entity.
bool IsXmlName(std::string_view text);

}  // namespace vexor
