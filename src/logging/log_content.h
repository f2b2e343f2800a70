// Counts the lines of an existing log file to which a log is about to append.
#pragma once

#include <cstdint>
#include <string>

#include "platform/platform.h"

namespace vexor {

struct LogContent {
  FileIdentity file;
  std::uint64_t size = 0;       // number of bytes read
  std::uint32_t line_ends = 0;  // in those bytes
  bool torn = false;            // the last of those bytes is no line end

  // The number of lines, with a last one that has no line end.
  [[nodiscard]] std::uint32_t Lines() const { return line_ends + (torn ? 1 : 0); }
};

// Counts the lines of the file at `path`. Given the result of an earlier call, reads only what the
// file has gained since, or all of it if the file was replaced or cut. A file that is missing, not
// regular or not readable has no lines.
LogContent LookIntoLog(const std::string& path, const LogContent& earlier = {});

}  // namespace vexor
