// Shared code of the fuzz targets. A target is a function on bytes, run with the sanitizers: no
// bytes may make it crash, hang, leak, or break what the headers promise.
#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline std::string_view AsText(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Ends the process if a promise is broken, so that the fuzzer stores the input.
inline void Require(bool holds, std::string_view promise, std::string_view text = {}) {
  if (holds) return;
  std::cerr << "broken promise: " << promise << ": " << text << '\n';
  std::abort();
}

// Whether the text may have a range with so many values that expanding it takes long.
inline bool HasLongRange(std::string_view text) {
  constexpr std::size_t kBeyond64Bits = 21;
  std::size_t digits = 0;  // of a number, without leading zeros
  for (const char c : text) {
    if (c == '[' || c == ']') continue;  // ignored even inside numbers
    const bool is_digit = std::isxdigit(static_cast<unsigned char>(c)) != 0;
    if (!is_digit && digits >= 5 && digits < kBeyond64Bits) break;
    digits = is_digit && (digits > 0 || c != '0') ? digits + 1 : 0;
  }
  return digits >= 5 && digits < kBeyond64Bits && text.find('-') != std::string_view::npos;
}

// Returns the texts between the line ends; at least one.
inline std::vector<std::string> SplitLines(std::string_view input) {
  std::vector<std::string> lines(1);
  for (const char c : input) {
    if (c == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += c;
    }
  }
  return lines;
}

// Returns the path of a file in memory that has the text as its content until the next call.
inline const std::string& HoldInFile(std::string_view text) {
  static const int file = memfd_create("fuzz", MFD_CLOEXEC);
  static const std::string path = "/proc/self/fd/" + std::to_string(file);
  Require(ftruncate(file, 0) == 0 &&
              pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()),
          "a file in memory can be written");
  return path;
}
