// What all systems share: error texts, open files, and files that are replaced as a whole.

#include <algorithm>
#include <array>
#include <atomic>
#include <cassert>
#include <string>

#include "platform/immortal.h"
#include "platform/platform.h"

namespace vexor {

namespace {

const FileCalls& Calls() { return *file_calls.load(std::memory_order_acquire); }

class PathCategory final : public std::error_category {
 public:
  [[nodiscard]] const char* name() const noexcept override { return "path"; }
  [[nodiscard]] std::string message(int fault) const override {
    constexpr std::array<const char*, 4> kMessages = {
        "no error", "the name has a zero byte in it",
        "the name is one of a device or a stream, not of a file", "it is no regular file"};
    return kMessages.at(static_cast<std::size_t>(fault));
  }
  [[nodiscard]] std::error_condition default_error_condition(
      int /*fault*/) const noexcept override {
    return std::errc::invalid_argument;
  }
};

std::error_code WriteWhole(const std::string& path, std::string_view content, OpenMode mode) {
  File file;
  std::error_code error = file.Open(path, mode);
  if (!error) error = file.Append(content);
  if (!error) error = file.Flush();
  return error;
}

// Returns a name in the folder of the target (a rename must not cross file systems) that no other
// thread or process uses at the same time.
std::string TemporaryName(const std::string& target) {
  static constinit std::atomic<unsigned> count = 0;
  return target + "." + std::to_string(ReadProcessId()) + "-" + std::to_string(++count) + ".tmp";
}

// Writes the content to a temporary file and renames that to the target. The content is flushed
// before the rename: otherwise a power cut could leave the new name with an empty file.
std::error_code ReplaceByRename(const std::string& target, std::string_view content) {
  const std::string temporary = TemporaryName(target);
  std::error_code error = WriteWhole(temporary, content, OpenMode::kTruncate);
  if (!error) {
    CopyPermissions(target, temporary);
    error = Calls().rename(temporary, target);
  }
  if (error) Calls().remove(temporary);
  return error;
}

// Whether the error may mean that nothing can be created or renamed in the folder.
bool IsFolderFault(const std::error_code& error) {
  constexpr std::array kFaults = {std::errc::permission_denied, std::errc::operation_not_permitted,
                                  std::errc::read_only_file_system,
                                  std::errc::device_or_resource_busy};
  return std::find(kFaults.begin(), kFaults.end(), error) != kFaults.end();
}

}  // namespace

std::error_code MakeError(PathFault fault) {
  // Never destroyed: an error_code refers to its category, and may be printed at exit.
  static constinit Immortal<PathCategory> category;
  return {static_cast<int>(fault), *category};
}

std::error_code CheckPath(const std::string& path) {
  const bool is_cut = path.find('\0') != std::string::npos;
  return is_cut ? MakeError(PathFault::kZeroByte) : std::error_code();
}

File::~File() {
  if (handle_ != kNoFile) Calls().close(handle_);
}

std::error_code File::Open(const std::string& path, OpenMode mode) {
  if (const std::error_code error = CheckPath(path)) return error;
  File opened;  // takes the old handle in the swap below, and closes it
  if (const std::error_code error = Calls().open(path, mode, opened.handle_)) return error;
  *this = std::move(opened);
  return {};
}

std::error_code File::SyncName(const std::string& path) { return Calls().sync_name(path); }

std::error_code File::Append(std::string_view bytes) {
  assert(handle_ != kNoFile);
  std::size_t done = 0;
  while (done < bytes.size()) {
    std::size_t written = 0;
    std::error_code error = Calls().write(handle_, bytes.substr(done), written);
    assert(written <= bytes.size() - done);
    done += written;
    // No progress without an error: trying again could take for ever.
    if (!error && written == 0) error = std::make_error_code(std::errc::no_space_on_device);
    if (!error) continue;
    // A part was written. Half a line would corrupt a log, so it is cut off again.
    FileStatus status;
    if (done > 0 && !Calls().read_status(handle_, status) && status.size >= done) {
      Calls().cut(handle_, status.size - done);
    }
    return error;
  }
  return {};
}

std::error_code File::Flush() {
  assert(handle_ != kNoFile);
  return Calls().flush(handle_);
}

std::optional<FileStatus> File::ReadStatus() const {
  FileStatus status;
  if (Calls().read_status(handle_, status)) return std::nullopt;
  return status;
}

std::error_code ReplaceFileContent(const std::string& path, std::string_view content) {
  if (const std::error_code error = CheckPath(path)) return error;
  const ReplaceTarget target = ResolveReplaceTarget(path);
  if (target.refused) return target.refused;
  if (target.in_place) return WriteWhole(target.path, content, OpenMode::kInPlace);
  if (const std::error_code error = ReplaceByRename(target.path, content)) return error;
  // Until the folder is on the disk as well, a power cut can bring the old content back.
  return Calls().sync_name(target.path);
}

std::error_code RewriteFile(const std::string& path, std::string_view content) {
  if (const std::error_code error = CheckPath(path)) return error;
  const ReplaceTarget target = ResolveReplaceTarget(path);
  if (target.refused) return target.refused;
  if (!target.in_place) {
    const std::error_code error = ReplaceByRename(target.path, content);
    if (!error) Calls().sync_name(target.path);
    if (!IsFolderFault(error)) return error;
  }
  return WriteWhole(target.path, content, OpenMode::kInPlace);
}

}  // namespace vexor
