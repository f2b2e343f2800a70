// All parsers of option texts, and how each must agree with the check of its syntax.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

enum class Agreement : std::uint8_t {
  kNone,
  kGoodIsRead,  // the parser reads something of every valid text
  kAlike,       // and nothing of any other text
};

// A syntax and its parser. `read` returns how much of the text was read: 0 for nothing, -1 if that
// is unknown.
struct Family {
  std::string_view syntax;
  int (*read)(std::string_view text);
  Agreement agreement = Agreement::kNone;
};

std::span<const Family> Families();

// Parses a text of one syntax and compares the result with the check.
void FuzzFamily(const Family& family, std::string_view text);
