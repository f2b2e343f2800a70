// Reads a stream to its end. If memory runs out, std::getline and its like only set a flag, as at
// the end of the file: half of a file would look like the whole. These functions throw
// std::bad_alloc instead. Where a stream cannot be read, for example a folder, it ends.
#pragma once

#include <cstddef>
#include <istream>
#include <string>

namespace vexor {

// Like std::getline; false if there is no line left.
inline bool ReadLine(std::istream& file, std::string& line) {
  try {
    file.exceptions(std::ios::badbit);  // makes getline rethrow what is thrown inside it
    return static_cast<bool>(std::getline(file, line));
  } catch (const std::ios::failure&) {
    return false;
  }
}

// Returns the rest of the stream. If that is longer than `most`, stops after some byte beyond it.
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
