// The time stamps at the beginning of log rows.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "vexor/logging/log_reader.h"

namespace vexor {

inline constexpr std::size_t kStampSize = 23;  // 2024-03-07 09:05:02.017

// Whether the text is a stamp or the beginning of one, such as "2024-03-0".
bool BeginsStamp(std::string_view text);

// Reads stamps. Keeps the last date: most rows of a log are of the same day, and converting the
// date is the slow part.
class StampReader {
 public:
  // Returns the time of the stamp that the text begins with, `kNoLogTime` if it begins with none.
  LogTime Read(std::string_view text);

  // The date of the last stamp, with the blank after it; empty at first.
  [[nodiscard]] std::string_view LastDate() const { return date_.data(); }

 private:
  std::array<char, 12> date_ = {};
  LogTime midnight_ = 0;
};

}  // namespace vexor
