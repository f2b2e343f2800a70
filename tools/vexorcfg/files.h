// The files that the commands read and write.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "commands.h"
#include "vexor/config/describe.h"
#include "vexor/config/full_config.h"

namespace vexorcfg {

struct Input {
  std::string name;  // as messages call it
  std::string content;
  std::string failure;  // why it could not be read; empty when it was
};

enum class FileKind : std::uint8_t { kNone, kFile, kFolder, kDevice };
FileKind KindOf(const std::string& path);

// Returns whether the two paths lead to one file.
bool AreOneFile(const std::string& a, const std::string& b);

// Reads a file, or standard input for "-".
Input ReadInput(const std::string& path);

// Returns what the file at the path, or standard input, amounts to; nothing, with a message on
// standard error, for one that is no configuration file. `input` keeps its content.
std::optional<vexor::Description> DescribeInput(const std::string& path, Input& input);

// Reads a file that DescribeInput has accepted into a record. Null, with a message on standard
// error, when it changed meanwhile.
std::unique_ptr<_XML_FULL_CFG> ReadRecord(const std::string& path);

// Writes a document to a file, which is whole at any time. A file with content is replaced with
// `force` only.
Status WriteDocument(const std::string& path, std::string_view content, bool force);

// The same for a document that goes to standard output where no file is given.
Status PutDocument(const WriteArguments& arguments, std::string_view content);

}  // namespace vexorcfg
