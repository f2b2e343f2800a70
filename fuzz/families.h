// All parsers of option texts, and what each has in common with the check of its syntax.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

enum class Agreement : std::uint8_t {
  kNone,
  kGoodIsRead,  // of a good text something is read
  kAlike,       // and of any other text nothing
};

// A syntax of option texts by its name, and its parser. `read` returns how much of the text was
// read: 0 for nothing, -1 where that cannot be told.
struct Family {
  std::string_view syntax;
  int (*read)(std::string_view text);
  Agreement agreement = Agreement::kNone;
};

std::span<const Family> Families();

// Reads a text by one syntax, and compares with the check.
void FuzzFamily(const Family& family, std::string_view text);
