// What is wrong with an option text, and where. The checks return it; for the same text, the
// exported parsers return a neutral value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vexor {

// What was expected instead of a wrong text: a form, described in prose, or one of a list of words.
// The texts are literals or made at compile time, so that a copy stays valid for the life of the
// program.
struct Expectation {
  std::string_view text;                         // "usec, msec, sec, min or hour"
  std::span<const std::string_view> words = {};  // the words of the list; empty for a form

  constexpr Expectation() = default;
  constexpr Expectation(std::string_view form) : text(form) {}
  constexpr Expectation(const char* form) : text(form) {}
  constexpr Expectation(std::string_view list, std::span<const std::string_view> of)
      : text(list), words(of) {}
};

enum class FaultKind : std::uint8_t {
  kForm,  // not of the grammar, or not one of its words
  kLargeNumber,
  kReversedRange,
  kSurplus,  // text behind the end of what is read
  kReadsAsFalse,
  kFalseForm,  // reads as false, but is not written so
  kListAlone,  // numbers without a keyword, which select all
  kNothing,    // nothing runs, or nothing takes part
  kRepeatedItem,
  kReplacedItem,  // by a later item
  kOneOfSeveral,  // a list of which one item is read
};

struct Fault {
  std::size_t at = 0;  // offset of the first wrong byte; the size of the text if its end is missing
  std::string_view what;  // "unknown unit"
  Expectation expected;
  FaultKind kind = FaultKind::kForm;
};

}  // namespace vexor
