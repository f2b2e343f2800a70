// Reads and writes whole files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "common/status.h"

namespace tools {

inline constexpr bool kIsWindows = std::filesystem::path::preferred_separator == '\\';
inline constexpr std::string_view kSeparators = kIsWindows ? "/\\" : "/";

// Returns the path for a name of the command line, which is UTF-8 on Windows and unchanged bytes on
// other systems. On Windows, throws std::system_error for a name that is not UTF-8.
std::filesystem::path PathOf(std::string_view name);

struct Input {
  std::string name;  // for messages
  std::string content;
  std::string failure;  // why it could not be read; empty if it could
};

enum class FileKind : std::uint8_t { kNone, kFile, kFolder, kDevice };
FileKind KindOf(const std::string& path);

// Returns whether the two paths lead to the same file.
bool AreOneFile(const std::string& a, const std::string& b);

// Reads a file, or standard input for "-", of at most `most` bytes. The default is more than any
// configuration has; the limit ends the reading of devices such as /dev/zero.
Input ReadInput(const std::string& path, std::size_t most = std::size_t{256} << 20U);

// Returns kClean if a file may be written at the path; otherwise prints the reason on standard
// error. A file with content may be replaced only with `force`.
Status AllowWriting(const std::string& path, bool force);

// Writes a document to a file, which has its old or its new content at any time. A file with
// content is replaced only with `force`.
Status WriteDocument(const std::string& path, std::string_view content, bool force);

// The arguments of a command that writes a document.
struct WriteArguments {
  std::string file;  // empty or "-" for standard output
  bool force = false;
};

// Writes a document to the file, or to standard output if none is given.
Status PutDocument(const WriteArguments& arguments, std::string_view content);

}  // namespace tools
