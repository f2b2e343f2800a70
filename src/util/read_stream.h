// Reading a file to its end. The stream's own ways take memory that runs out for the end of the
// file: half of it would pass for the whole. Here std::bad_alloc passes; a file that cannot be read
// on, such as a folder, ends where it is.
#pragma once

#include <cstddef>
#include <istream>
#include <string>

namespace vexor {

// As std::getline; false when there is no line left.
inline bool ReadLine(std::istream& file, std::string& line) {
  try {
    file.exceptions(std::ios::badbit);  // has the stream pass on what is thrown inside
    return static_cast<bool>(std::getline(file, line));
  } catch (const std::ios::failure&) {
    return false;
  }
}

// Returns all that is left, or a beginning of it that is longer than `most`.
inline std::string ReadRest(std::istream& file, std::size_t most = std::string::npos) {
  constexpr std::size_t kBlock = 65536;
  std::string content;
  while (file && content.size() <= most) {
    const std::size_t size = content.size();
    content.resize(size + kBlock);
    file.read(content.data() + size, kBlock);
    content.resize(size + static_cast<std::size_t>(file.gcount()));
  }
  return content;
}

}  // namespace vexor
