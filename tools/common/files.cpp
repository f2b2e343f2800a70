#include "common/files.h"

#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <system_error>

#include "common/terminal.h"
#include "common/text_output.h"
#include "vexor/util/files.h"

namespace tools {
namespace {

struct FileCloser {
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

std::string LastError() { return std::generic_category().message(errno); }

void ReadAll(std::FILE* file, std::size_t most, Input& input) {
  auto buffer = std::make_unique<std::array<char, 65536>>();
  while (const std::size_t count = std::fread(buffer->data(), 1, buffer->size(), file)) {
    input.content.append(buffer->data(), count);
    if (input.content.size() > most) {
      input.failure = "cannot be read: larger than " + std::to_string(most >> 20U) + " MiB";
      return;
    }
  }
  if (std::ferror(file) != 0) input.failure = "cannot be read: " + LastError();
}

}  // namespace

std::filesystem::path PathOf(std::string_view name) {
  return std::u8string(name.begin(), name.end());
}

FileKind KindOf(const std::string& path) {
  // Without a trailing separator: some C runtimes do not find a folder with one.
  const std::size_t last = path.find_last_not_of(kSeparators);
  const bool is_root = last == std::string::npos || path[last] == ':';
  const std::string name = is_root ? path : path.substr(0, last + 1);
  struct stat found = {};
  if (stat(name.c_str(), &found) != 0) return FileKind::kNone;
  const auto type = found.st_mode & S_IFMT;
  if (type == S_IFDIR) return FileKind::kFolder;
  return type == S_IFREG ? FileKind::kFile : FileKind::kDevice;
}

bool AreOneFile(const std::string& a, const std::string& b) {
  if (a == b) return true;
  try {
    std::error_code ignored;
    return std::filesystem::equivalent(PathOf(a), PathOf(b), ignored);
  } catch (const std::system_error&) {
    return false;  // a name that cannot be converted to the system's characters
  }
}

Input ReadInput(const std::string& path, std::size_t most) {
  Input input;
  if (path == "-") {
    input.name = "<stdin>";
    if (std::feof(stdin) != 0) {
      input.failure = "cannot be read twice";
      return input;
    }
    UseBinaryInput();
    ReadAll(stdin, most, input);
    return input;
  }
  input.name = NameFile(path);
  if (KindOf(path) == FileKind::kFolder) {
    input.failure = "cannot be read: it is a folder";
    return input;
  }
  const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
  if (file == nullptr) {
    input.failure = "cannot be read: " + LastError();
  } else {
    ReadAll(file.get(), most, input);
  }
  return input;
}

Status AllowWriting(const std::string& path, bool force) {
  const FileKind kind = KindOf(path);
  if (kind == FileKind::kFolder) return Refuse(path, "cannot be written: it is a folder");
  if (kind == FileKind::kFile && !force && !IsFileEmpty(path)) {
    return Refuse(path, "exists; --force replaces it");
  }
  return kClean;
}

Status WriteDocument(const std::string& path, std::string_view content, bool force) {
  if (const Status status = AllowWriting(path, force); status != kClean) return status;
  const std::error_code error = vexor::SaveFile(path, content);
  if (!error) return kClean;
  return Refuse(path, "cannot be written: " + (error == std::errc::no_such_file_or_directory
                                                   ? "no such folder"
                                                   : error.default_error_condition().message()));
}

Status PutDocument(const WriteArguments& arguments, std::string_view content) {
  const bool has_file = !arguments.file.empty() && arguments.file != "-";
  if (has_file) return WriteDocument(arguments.file, content, arguments.force);
  std::cout << content;
  return kClean;
}

}  // namespace tools
