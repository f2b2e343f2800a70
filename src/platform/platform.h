// The operating system as the library sees it. What differs between systems stands in posix.cpp and
// windows.cpp, of which one is built; nothing else in the library knows which.
//
// Paths are narrow texts as the system's narrow calls take them. A function that can fail returns
// the system's error, which is "no error" (false) on success. Any thread may call.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace vexor {

// Clocks and waits.

struct LocalTime {
  std::tm calendar = {};
  int millisecond = 0;
};

LocalTime ReadLocalTime();

// Nanoseconds of the steady clock of the highest resolution, from a start of the system's choosing.
std::uint64_t ReadPerformanceCounter();

// The processor's time-stamp counter; the performance counter on a processor that has none.
std::uint64_t ReadTimeStampCounter();

// Tells the processor that the thread is spinning.
void HintSpinWait();

// Files by their path.

// What ends a line of a text file on this system.
extern const std::string_view kLineEnd;

// Gives the text such line ends in place of line feeds, but those that have a return before them.
void UseSystemLineEnds(std::string& text);

// Whether the system knows a file or a folder of this path.
bool HasFileStatus(const std::string& path);

// The path from the root on, by the current folder of the moment; the path itself when there is
// none.
std::string MakeAbsolute(const std::string& path);

// The names, sorted, of the regular files in a folder; those that were found before an error, which
// is there for an empty name, too.
std::vector<std::string> ListFiles(const std::string& folder, std::error_code& error);
inline std::vector<std::string> ListFiles(const std::string& folder) {
  std::error_code ignored;
  return ListFiles(folder, ignored);
}

// Whether the names of files are those of Windows: case does not matter, some names stand for
// devices, and a ":" leads to a stream of a file.
extern const bool kHasWindowsNames;

// Makes one folder in a folder that exists. No error when it is there already.
std::error_code MakeFolder(const std::string& path);

// Gives the file at `path` this content: its old content or the new one is found there afterwards,
// never a part of either, and the new one is on the disk when there is no error. A link is followed
// and the file's permissions stay; what is no regular file, such as a device, is written in place.
std::error_code ReplaceFileContent(const std::string& path, std::string_view content);

// Does the same as far as the folder permits: a file in a folder that takes no new file is written
// in place, and a folder that cannot be synchronised is no error.
std::error_code RewriteFile(const std::string& path, std::string_view content);

// Open files.

using FileHandle = std::intptr_t;
inline constexpr FileHandle kNoFile = -1;

// All modes but kInPlace open regular files alone.
enum class OpenMode : std::uint8_t {
  kAppend,
  kTruncate,
  kCreate,   // fails when the file exists
  kInPlace,  // empties a regular file; opens a device as well, and a pipe once somebody reads it
};

// What the library refuses although the system would open something. The errors are equivalent to
// std::errc::invalid_argument.
enum class PathFault : std::uint8_t { kNone, kZeroByte, kReserved, kNotRegular };
std::error_code MakeError(PathFault fault);

// Returns an error for a zero byte in the path, at which the system would end it.
std::error_code CheckPath(const std::string& path);

struct FileStatus {
  std::uint64_t size = 0;
  bool removed = false;  // no folder names the file any more: closed, it is gone
};

// The system calls behind open files and ReplaceFileContent. Every file is opened to append, for
// other programs to read and write meanwhile, and is not inherited by child processes. No call
// throws.
struct FileCalls {
  std::error_code (*open)(const std::string& path, OpenMode mode, FileHandle& handle);
  // One call of the system: it may take fewer bytes than it was given without an error.
  std::error_code (*write)(FileHandle handle, std::string_view bytes, std::size_t& written);
  // Returns when the disk has what was written before.
  std::error_code (*flush)(FileHandle handle);
  std::error_code (*read_status)(FileHandle handle, FileStatus& status);
  std::error_code (*cut)(FileHandle handle, std::uint64_t size);
  void (*close)(FileHandle handle);
  // Returns when the disk has the file's name, which a new or renamed file needs once.
  std::error_code (*sync_name)(const std::string& path);
  std::error_code (*rename)(const std::string& from, const std::string& to);
  void (*remove)(const std::string& path);
};

extern const FileCalls kSystemFileCalls;

// The calls in use. Tests put their own in between, to fail or to observe.
inline constinit std::atomic<const FileCalls*> file_calls = &kSystemFileCalls;

// An open file that is closed at the end of its life.
class File {
 public:
  File() = default;
  File(File&& other) noexcept : handle_(std::exchange(other.handle_, kNoFile)) {}
  File& operator=(File&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File();

  // Opens the file, created if need be.
  std::error_code Open(const std::string& path, OpenMode mode);

  // Returns when the disk has the name of the file at `path`, which a new file needs once.
  static std::error_code SyncName(const std::string& path);

  // Appends the bytes, in one call unless the system takes fewer. After an error nothing of them is
  // left behind if the system lets them be cut off again.
  std::error_code Append(std::string_view bytes);

  // Returns when the disk has what was written before.
  std::error_code Flush();

  // What the system says of the file; the size is 0 for devices. Nothing when it says nothing.
  [[nodiscard]] std::optional<FileStatus> ReadStatus() const;

 private:
  FileHandle handle_ = kNoFile;
};

enum class PathKind : std::uint8_t { kMissing, kFolder, kRegularFile, kOther };
PathKind LookUpPath(const std::string& path);

// Files that are read while others write, rename or remove them. The handles are closed with
// CloseReadFile.

struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t file = 0;
  std::uint64_t size = 0;
  bool regular = false;  // no folder, pipe or device

  [[nodiscard]] bool IsSameFile(const FileIdentity& other) const {
    return device == other.device && file == other.file;
  }
};

// A folder is std::errc::is_a_directory.
std::error_code OpenReadFile(const std::string& path, FileHandle& handle);

// Reads on from where the last call stopped. A count of 0 without an error is the end of the data.
// A pipe that no program opens for writing, within two seconds, is std::errc::broken_pipe.
std::error_code ReadFileBytes(FileHandle handle, char* bytes, std::size_t size, std::size_t& count);

// Only regular files can be read from somewhere else.
std::error_code SeekReadFile(FileHandle handle, std::uint64_t offset);

std::error_code IdentifyFile(FileHandle handle, FileIdentity& identity);
void CloseReadFile(FileHandle handle);

// Pieces of ReplaceFileContent that differ between systems.

struct ReplaceTarget {
  std::string path;         // with links resolved
  bool in_place = false;    // no regular file: it cannot be replaced by another
  std::error_code refused;  // the file must not be written
};
ReplaceTarget ResolveReplaceTarget(const std::string& path);

// Gives `to` the permissions of `from`, if that exists.
void CopyPermissions(const std::string& from, const std::string& to);

std::uint64_t ReadProcessId();

}  // namespace vexor
