// What is wrong with an option text, and where. The inner forms of the parsers answer with it; the
// exported parsers answer the same text with their neutral value.
#pragma once

#include <cstddef>
#include <string_view>

namespace vexor {

// All texts are literals: a fault may be kept for the life of the program and costs no allocation.
struct Fault {
  std::size_t at = 0;         // offset of the first wrong byte; the length of the text at its end
  std::string_view what;      // "unknown unit"
  std::string_view expected;  // "usec, msec, sec, min or hour"
};

}  // namespace vexor
