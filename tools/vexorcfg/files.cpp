#include "files.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <system_error>

#include "terminal.h"
#include "text_output.h"
#include "vexor/config/reader.h"
#include "vexor/util/files.h"

namespace vexorcfg {
namespace {

// More than any configuration has; a device without an end stops here.
constexpr std::size_t kLargest = std::size_t{256} << 20U;

struct FileCloser {
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

std::string LastError() { return std::generic_category().message(errno); }

void ReadAll(std::FILE* file, Input& input) {
  auto buffer = std::make_unique<std::array<char, 65536>>();
  while (const std::size_t count = std::fread(buffer->data(), 1, buffer->size(), file)) {
    input.content.append(buffer->data(), count);
    if (input.content.size() > kLargest) {
      input.failure = "cannot be read: larger than 256 MiB";
      return;
    }
  }
  if (std::ferror(file) != 0) input.failure = "cannot be read: " + LastError();
}

}  // namespace

Input ReadInput(const std::string& path) {
  Input input;
  if (path == "-") {
    input.name = "<stdin>";
    UseBinaryInput();
    ReadAll(stdin, input);
    return input;
  }
  input.name = path;
  const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
  if (file == nullptr) {
    input.failure = "cannot be read: " + LastError();
  } else {
    ReadAll(file.get(), input);
  }
  return input;
}

std::optional<vexor::Description> DescribeInput(const std::string& path, Input& input) {
  input = ReadInput(path);
  if (!input.failure.empty()) {
    Refuse(input.name, input.failure);
    return std::nullopt;
  }
  vexor::Description description = vexor::DescribeXMLConfigText(input.content);
  if (description.error.empty()) return description;
  const int line = description.error_line;
  Refuse(line == 0 ? input.name : input.name + ":" + std::to_string(line), description.error);
  return std::nullopt;
}

std::unique_ptr<_XML_FULL_CFG> ReadRecord(const std::string& path) {
  auto cfg = std::make_unique<_XML_FULL_CFG>();
  ResetVexorXmlConfiguration(*cfg);
  bool is_read = false;
  try {
    is_read = VexorConfigParser().ReadXMLPar(path, cfg.get(), false, false);
  } catch (const std::out_of_range&) {
    is_read = false;  // a trace entry
  }
  if (is_read) return cfg;
  Refuse(path, "changed while it was read");
  return nullptr;
}

Status WriteDocument(const std::string& path, std::string_view content, bool force) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path target = path;
  if (!force && fs::is_regular_file(target, error) && fs::file_size(target, error) > 0) {
    return Refuse(path, "exists; --force replaces it");
  }
  const bool has_folder =
      !target.has_parent_path() || fs::is_directory(target.parent_path(), error);
  if (!has_folder) return Refuse(path, "cannot be written: no such folder");
  error = vexor::SaveFile(path, content);
  if (!error) return kClean;
  return Refuse(path, "cannot be written: " + error.default_error_condition().message());
}

Status PutDocument(const WriteArguments& arguments, std::string_view content) {
  const bool has_file = !arguments.file.empty() && arguments.file != "-";
  if (has_file) return WriteDocument(arguments.file, content, arguments.force);
  std::cout << content;
  return kClean;
}

}  // namespace vexorcfg
