#include "common/text_output.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <iostream>

#include "common/program.h"

namespace tools {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

bool IsControl(char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }

// Returns the number of bytes of the first character, 0 if it is not UTF-8.
std::size_t LengthOfUtf8(std::string_view text) {
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

void AppendEscape(std::string& out, std::string_view prefix, char c) {
  const auto byte = static_cast<unsigned char>(c);
  out.append(prefix).append(1, kHexDigits[byte / 16U]).append(1, kHexDigits[byte % 16U]);
}

}  // namespace

std::string OneLine(std::string_view text, std::size_t most) {
  std::string line;
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::size_t length = LengthOfUtf8(rest);
    const char c = rest.front();
    if (text.size() - rest.size() + std::max<std::size_t>(1, length) > most) break;
    if (c == '\n') {
      line += "\\n";
    } else if (c == '\t') {
      line += "\\t";
    } else if (IsControl(c) || length == 0) {
      AppendEscape(line, "\\x", c);
    } else {
      line += rest.substr(0, length);
    }
    rest.remove_prefix(length == 0 ? 1 : length);
  }
  if (!rest.empty()) line += "... (" + std::to_string(text.size()) + " bytes)";
  return line;
}

std::string Quote(std::string_view text) { return '"' + OneLine(text) + '"'; }

std::string Count(std::size_t count, std::string_view noun) {
  return std::to_string(count).append(" ").append(noun).append(count == 1 ? "" : "s");
}

std::string NameFile(std::string_view path) {
  return path.empty() ? "\"\"" : OneLine(path, std::string::npos);
}

Status Refuse(std::string_view file, std::string_view reason) {
  std::cout.flush();
  std::cerr << kProgram.name << ": " << NameFile(file) << ": " << reason << '\n';
  return kNotRun;
}

}  // namespace tools
