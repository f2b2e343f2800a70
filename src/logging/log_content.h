// The lines of a log file that exists already, to which a log is about to append.
#pragma once

#include <cstdint>
#include <string>

#include "platform/platform.h"

namespace vexor {

struct LogContent {
  FileIdentity file;
  std::uint64_t size = 0;  // so many bytes were looked at
  std::uint32_t line_ends = 0;
  bool torn = false;  // they end in the middle of a line

  // The line included that the file ends in the middle of.
  [[nodiscard]] std::uint32_t Lines() const { return line_ends + (torn ? 1 : 0); }
};

// Counts the lines of the file at `path`. With what was found earlier, only what is behind it is
// read, unless another file stands there now or this one was cut. A file that cannot be read, or is
// none, has no lines.
LogContent LookIntoLog(const std::string& path, const LogContent& earlier = {});

}  // namespace vexor
