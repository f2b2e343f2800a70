#include <atomic>
#include <string>

#include "platform/platform.h"

namespace vexor {

namespace {

const FileCalls& Calls() { return *file_calls.load(std::memory_order_acquire); }

std::error_code WriteWhole(const std::string& path, std::string_view content) {
  File file;
  std::error_code error = file.Open(path, OpenMode::kTruncate);
  if (!error) error = file.Append(content);
  if (!error) error = file.Flush();
  return error;
}

// A name beside the target that no other thread and no other process uses at the same time.
std::string TemporaryName(const std::string& target) {
  static constinit std::atomic<unsigned> count = 0;
  return target + "." + std::to_string(ReadProcessId()) + "-" + std::to_string(++count) + ".tmp";
}

}  // namespace

File::~File() {
  if (handle_ != kNoFile) Calls().close(handle_);
}

std::error_code File::Open(const std::string& path, OpenMode mode) {
  File opened;
  if (const std::error_code error = Calls().open(path, mode, opened.handle_)) return error;
  *this = std::move(opened);
  return {};
}

std::error_code File::SyncName(const std::string& path) { return Calls().sync_name(path); }

std::error_code File::Append(std::string_view bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    std::size_t written = 0;
    std::error_code error = Calls().write(handle_, bytes.substr(done), written);
    done += written;
    if (!error && written == 0) error = std::make_error_code(std::errc::no_space_on_device);
    if (!error) continue;
    FileStatus status;
    if (done > 0 && !Calls().read_status(handle_, status) && status.size >= done) {
      Calls().cut(handle_, status.size - done);
    }
    return error;
  }
  return {};
}

std::error_code File::Flush() { return Calls().flush(handle_); }

bool File::IsRemoved() const {
  FileStatus status;
  return !Calls().read_status(handle_, status) && status.removed;
}

bool File::IsEmpty() const {
  FileStatus status;
  return Calls().read_status(handle_, status) || status.size == 0;
}

std::error_code ReplaceFileContent(const std::string& path, std::string_view content) {
  const ReplaceTarget target = ResolveReplaceTarget(path);
  if (target.refused) return target.refused;
  if (target.in_place) return WriteWhole(target.path, content);
  const std::string temporary = TemporaryName(target.path);
  std::error_code error = WriteWhole(temporary, content);
  if (!error) {
    CopyPermissions(target.path, temporary);
    error = Calls().rename(temporary, target.path);
  }
  if (error) {
    Calls().remove(temporary);
    return error;
  }
  return Calls().sync_name(target.path);
}

}  // namespace vexor
