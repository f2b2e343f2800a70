// What is wrong with an option text, and where. The inner forms of the parsers answer with it; the
// exported parsers answer the same text with their neutral value.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace vexor {

// What a text should have been: a form described in words, or one of a list of words. All texts are
// literals or made at compile time, so that one may be kept for the life of the program.
struct Expectation {
  std::string_view text;                         // "usec, msec, sec, min or hour"
  std::span<const std::string_view> words = {};  // those of the list; none for a form

  constexpr Expectation() = default;
  constexpr Expectation(std::string_view form) : text(form) {}
  constexpr Expectation(const char* form) : text(form) {}
  constexpr Expectation(std::string_view list, std::span<const std::string_view> of)
      : text(list), words(of) {}
};

struct Fault {
  std::size_t at = 0;     // offset of the first wrong byte; the length of the text at its end
  std::string_view what;  // "unknown unit"
  Expectation expected;
};

}  // namespace vexor
