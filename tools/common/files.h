// The files that a command reads whole, and the documents that it writes.
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

// Returns the path of a name as the command line gives it: in UTF-8 on Windows, in the system's own
// bytes elsewhere. Throws std::system_error for a name that is not UTF-8, on Windows.
std::filesystem::path PathOf(std::string_view name);

struct Input {
  std::string name;  // as messages call it
  std::string content;
  std::string failure;  // why it could not be read; empty when it was
};

enum class FileKind : std::uint8_t { kNone, kFile, kFolder, kDevice };
FileKind KindOf(const std::string& path);

// Returns whether the two paths lead to one file.
bool AreOneFile(const std::string& a, const std::string& b);

// Reads a file, or standard input for "-", of no more than `most` bytes: more than any
// configuration has, and a device without an end stops there.
Input ReadInput(const std::string& path, std::size_t most = std::size_t{256} << 20U);

// Returns kClean for a path at which a file may be written; else says on standard error why not. A
// file with content is replaced with `force` only.
Status AllowWriting(const std::string& path, bool force);

// Writes a document to a file, which is whole at any time. A file with content is replaced with
// `force` only.
Status WriteDocument(const std::string& path, std::string_view content, bool force);

// The arguments of a command that writes a document of its own making.
struct WriteArguments {
  std::string file;  // empty or "-" for standard output
  bool force = false;
};

// The same for a document that goes to standard output where no file is given.
Status PutDocument(const WriteArguments& arguments, std::string_view content);

}  // namespace tools
