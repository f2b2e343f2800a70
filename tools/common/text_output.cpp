#include "common/text_output.h"

#include <algorithm>
#include <iostream>

#include "common/program.h"
#include "common/utf8.h"

namespace tools {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

bool IsControl(char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }

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
