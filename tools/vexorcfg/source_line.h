// Lines of a file, for messages that mark a place in them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tools::vexorcfg {

struct SourceLine {
  std::string text;   // without indentation and control characters; only a part of a long line
  std::size_t mark;   // the number of columns in front of the place
  std::size_t width;  // the number of columns of the place in this line; at least 1
};

// Returns the line of the `size` bytes at an offset.
SourceLine CutSourceLine(std::string_view content, std::size_t at, std::size_t size);

}  // namespace tools::vexorcfg
