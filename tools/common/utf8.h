// Characters of UTF-8 texts.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <string_view>

namespace tools {

// Returns the number of bytes of the first character of a text that is not empty; 0 if it is not
// UTF-8.
inline std::size_t LengthOfUtf8(std::string_view text) {
  struct Form {  // the bounds exclude overlong forms, surrogates and characters above U+10FFFF
    unsigned char first_low, first_high, second_low, second_high;
    std::size_t length;
  };
  constexpr std::array<Form, 8> kForms = {{{0xC2, 0xDF, 0x80, 0xBF, 2},
                                           {0xE0, 0xE0, 0xA0, 0xBF, 3},
                                           {0xE1, 0xEC, 0x80, 0xBF, 3},
                                           {0xED, 0xED, 0x80, 0x9F, 3},
                                           {0xEE, 0xEF, 0x80, 0xBF, 3},
                                           {0xF0, 0xF0, 0x90, 0xBF, 4},
                                           {0xF1, 0xF3, 0x80, 0xBF, 4},
                                           {0xF4, 0xF4, 0x80, 0x8F, 4}}};
  assert(!text.empty());
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x80) return 1;
  for (const Form& form : kForms) {
    if (byte(0) < form.first_low || byte(0) > form.first_high) continue;
    if (text.size() < form.length) return 0;
    if (byte(1) < form.second_low || byte(1) > form.second_high) return 0;
    for (std::size_t i = 2; i < form.length; ++i) {
      if ((byte(i) & 0xC0) != 0x80) return 0;
    }
    return form.length;
  }
  return 0;
}

}  // namespace tools
