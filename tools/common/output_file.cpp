#include "common/output_file.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "common/files.h"
#include "common/terminal.h"
#include "common/text_output.h"

namespace tools {

OutputFile::OutputFile(std::string path, bool force) : path_(std::move(path)) {
  if (path_.empty() || path_ == "-") {
    UseBinaryOutput();
    file_ = stdout;
    is_open_ = true;
    return;
  }
  if (AllowWriting(path_, force) != kClean) return;
  part_ = path_ + ".part";
  file_ = std::fopen(part_.c_str(), "wb");
  is_open_ = file_ != nullptr;
  if (is_open_) return;
  Refuse(path_, "cannot be written: " +
                    (errno == ENOENT ? "no such folder" : std::generic_category().message(errno)));
}

OutputFile::~OutputFile() {
  if (part_.empty() || file_ == nullptr) return;
  static_cast<void>(std::fclose(file_));
  static_cast<void>(std::remove(part_.c_str()));
}

void OutputFile::Write(std::string_view text) {
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), file_));
}

Status OutputFile::Close() {
  bool is_written = std::fflush(file_) == 0 && std::ferror(file_) == 0;
  if (part_.empty()) return is_written ? kClean : Refuse("standard output", "cannot be written");
  is_written = std::fclose(std::exchange(file_, nullptr)) == 0 && is_written;
  std::error_code error;
  if (is_written) std::filesystem::rename(PathOf(part_), PathOf(path_), error);
  if (is_written && !error) return kClean;
  static_cast<void>(std::remove(part_.c_str()));
  return Refuse(path_, "cannot be written: " +
                           (error ? error.message() : std::generic_category().message(errno)));
}

}  // namespace tools
