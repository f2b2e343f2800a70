// Time stamps at the beginning of a log's lines.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "vexor/logging/log_reader.h"

namespace vexor {

inline constexpr std::size_t kStampSize = 23;  // 2024-03-07 09:05:02.017

// Whether the text could go on to be a stamp: "2024-03-0".
bool BeginsStamp(std::string_view text);

// Reads stamps. Those of a log mostly share their date, which is then read once.
class StampReader {
 public:
  // The time of the stamp that the text begins with; `kNoLogTime` when it begins with none.
  LogTime Read(std::string_view text);

  // The date of the last stamp, with the blank behind it; empty at first.
  [[nodiscard]] std::string_view LastDate() const { return date_.data(); }

 private:
  std::array<char, 12> date_ = {};
  LogTime midnight_ = 0;
};

}  // namespace vexor
