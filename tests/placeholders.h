// Expected lines with placeholders for what grows with the library's tables: an option or a word
// that is added changes no test of something else.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

// Whether a line is as written: "<N>" stands for any number, "<...>" for any text.
inline bool IsLike(std::string_view line, std::string_view written) {
  while (!written.empty()) {
    if (written.starts_with("<...>")) {
      const std::string_view behind = written.substr(5);
      while (!IsLike(line, behind) && !line.empty()) line.remove_prefix(1);
      written = behind;
    } else if (written.starts_with("<N>")) {
      const std::size_t digits = std::min(line.find_first_not_of("0123456789"), line.size());
      if (digits == 0) return false;
      line.remove_prefix(digits);
      written.remove_prefix(3);
    } else {
      if (!line.starts_with(written.front())) return false;
      line.remove_prefix(1);
      written.remove_prefix(1);
    }
  }
  return line.empty();
}

// The written lines, each replaced by the line in its place where that is as written.
inline std::vector<std::string> FilledIn(std::vector<std::string> written,
                                         const std::vector<std::string>& lines) {
  for (std::size_t i = 0; i < std::min(written.size(), lines.size()); ++i) {
    if (IsLike(lines[i], written[i])) written[i] = lines[i];
  }
  return written;
}
