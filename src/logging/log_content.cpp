#include "logging/log_content.h"

#include <algorithm>
#include <array>
#include <span>

namespace vexor {

namespace {

constexpr std::size_t kBlock = 65536;

// Adds what lies between the handle's position and the end of the file to `content`.
void Count(FileHandle handle, LogContent& content) {
  std::array<char, kBlock> bytes;  // NOLINT(*-member-init): not read before it is written
  std::size_t count = 0;
  while (!ReadFileBytes(handle, bytes.data(), bytes.size(), count) && count > 0) {
    content.line_ends +=
        static_cast<std::uint32_t>(std::ranges::count(std::span(bytes).first(count), '\n'));
    content.torn = bytes[count - 1] != '\n';
    content.size += count;
  }
}

}  // namespace

LogContent LookIntoLog(const std::string& path, const LogContent& earlier) {
  FileHandle handle = kNoFile;
  if (LookUpPath(path) != PathKind::kRegularFile || OpenReadFile(path, handle)) return {};
  LogContent content;
  if (!IdentifyFile(handle, content.file)) {
    const bool is_longer =
        earlier.file.IsSameFile(content.file) && earlier.size <= content.file.size;
    if (is_longer && !SeekReadFile(handle, earlier.size)) content = earlier;
    Count(handle, content);
  }
  CloseReadFile(handle);
  return content;
}

}  // namespace vexor
