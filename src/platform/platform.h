// The operating system as the library sees it. posix.cpp or windows.cpp implements this header, and
// file.cpp what both share; the rest of the library does not depend on the system.
//
// Paths are passed unchanged to the system's narrow-character calls. A function that can fail
// returns the system's error, which is false on success. Any thread may call these functions.
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

// Returns nanoseconds of the monotonic clock with the highest resolution, since an arbitrary start.
std::uint64_t ReadPerformanceCounter();

// Returns the processor's time-stamp counter, or the performance counter if it has none.
std::uint64_t ReadTimeStampCounter();

// Tells the processor that the thread is in a spin loop, to save power and let the sibling thread
// of the core run.
void HintSpinWait();

// Files by their path.

// The line end of text files on this system.
extern const std::string_view kLineEnd;

// Replaces each line feed by the system's line end, except where a carriage return precedes it.
void UseSystemLineEnds(std::string& text);

// Whether a file, folder or device of this path exists and its status can be read.
bool HasFileStatus(const std::string& path);

// Returns the absolute path, based on the current folder; the path unchanged if that fails.
std::string MakeAbsolute(const std::string& path);

// Returns the sorted names of the regular files in a folder. After an error, the names that were
// found before it. An empty folder name is an error.
std::vector<std::string> ListFiles(const std::string& folder, std::error_code& error);
inline std::vector<std::string> ListFiles(const std::string& folder) {
  std::error_code ignored;
  return ListFiles(folder, ignored);
}

// Whether file names follow the rules of Windows: case does not matter, some names are devices, and
// a ":" separates the name of a stream inside the file.
extern const bool kHasWindowsNames;

// Makes one folder; its parent must exist. No error if the folder exists already.
std::error_code MakeFolder(const std::string& path);

// Replaces the content of the file at `path` atomically: at any time, even after a crash, the file
// has either its old or its new content. On success the new content is on the disk. Links are
// followed, and the file keeps its permissions. A device or a pipe is written in place.
std::error_code ReplaceFileContent(const std::string& path, std::string_view content);

// The same, except that a file whose folder does not allow new files is written in place, and a
// folder that cannot be synchronised is no error. For settings files, which may be the only file of
// their folder that the user can write.
std::error_code RewriteFile(const std::string& path, std::string_view content);

// Open files.

using FileHandle = std::intptr_t;
inline constexpr FileHandle kNoFile = -1;

// All modes but kInPlace accept only regular files.
enum class OpenMode : std::uint8_t {
  kAppend,
  kTruncate,
  kCreate,   // fails if the file exists
  kInPlace,  // truncates a regular file; also opens devices, and waits for a reader of a pipe
};

// Paths that the library refuses although the system would open something, but not the file that
// was meant. The errors are equivalent to std::errc::invalid_argument.
enum class PathFault : std::uint8_t { kNone, kZeroByte, kReserved, kNotRegular };
std::error_code MakeError(PathFault fault);

// Returns an error if the path has a zero byte, where the system would cut it.
std::error_code CheckPath(const std::string& path);

struct FileStatus {
  std::uint64_t size = 0;
  bool removed = false;  // the file has no name any more and vanishes when it is closed
};

// The system calls behind open files and ReplaceFileContent. Files are opened for appending, shared
// for reading and writing with other programs, and not inherited by child processes. No call
// throws.
struct FileCalls {
  std::error_code (*open)(const std::string& path, OpenMode mode, FileHandle& handle);
  // One system call: it may write fewer bytes than it was given without an error.
  std::error_code (*write)(FileHandle handle, std::string_view bytes, std::size_t& written);
  // Returns when the data written before is on the disk.
  std::error_code (*flush)(FileHandle handle);
  std::error_code (*read_status)(FileHandle handle, FileStatus& status);
  // Truncates the file to this size.
  std::error_code (*cut)(FileHandle handle, std::uint64_t size);
  void (*close)(FileHandle handle);
  // Returns when the file's entry in its folder is on the disk, as needed after creating or
  // renaming it.
  std::error_code (*sync_name)(const std::string& path);
  std::error_code (*rename)(const std::string& from, const std::string& to);
  void (*remove)(const std::string& path);
};

extern const FileCalls kSystemFileCalls;

// The calls in use. Tests replace them to inject faults, to count calls, or to lose unflushed data.
inline constinit std::atomic<const FileCalls*> file_calls = &kSystemFileCalls;

// Owns an open file and closes it in the destructor.
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

  // Opens the file, and creates it if it is missing. On failure, a file that was open stays open.
  std::error_code Open(const std::string& path, OpenMode mode);

  // Returns when the entry of the file at `path` in its folder is on the disk, as a new file needs
  // once.
  static std::error_code SyncName(const std::string& path);

  // Appends the bytes, in one system call unless that writes fewer. After an error, truncates the
  // file to remove the part that was written, if the system lets it.
  std::error_code Append(std::string_view bytes);

  // Returns when the data written before is on the disk.
  std::error_code Flush();

  // Returns the file's status (size 0 for devices), or nothing if the system cannot tell it.
  [[nodiscard]] std::optional<FileStatus> ReadStatus() const;

 private:
  FileHandle handle_ = kNoFile;
};

enum class PathKind : std::uint8_t { kMissing, kFolder, kRegularFile, kOther };
PathKind LookUpPath(const std::string& path);

// Reading files that other programs may write, rename or remove meanwhile. Handles are closed with
// CloseReadFile.

struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t file = 0;
  std::uint64_t size = 0;
  bool regular = false;  // not a folder, pipe or device

  [[nodiscard]] bool IsSameFile(const FileIdentity& other) const {
    return device == other.device && file == other.file;
  }
};

// Fails with std::errc::is_a_directory for a folder.
std::error_code OpenReadFile(const std::string& path, FileHandle& handle);

// Reads on from where the last call stopped. A count of 0 without an error is the end of the data.
// Fails with std::errc::broken_pipe for a pipe that no program opens for writing within two
// seconds.
std::error_code ReadFileBytes(FileHandle handle, char* bytes, std::size_t size, std::size_t& count);

// Sets where the next read begins. Only for regular files.
std::error_code SeekReadFile(FileHandle handle, std::uint64_t offset);

std::error_code IdentifyFile(FileHandle handle, FileIdentity& identity);
void CloseReadFile(FileHandle handle);

// The parts of ReplaceFileContent that differ between systems.

struct ReplaceTarget {
  std::string path;         // with links resolved: a rename would replace the link
  bool in_place = false;    // a device or a pipe, which no file can replace
  std::error_code refused;  // a read-only file must not be written, and a rename would not notice
};
ReplaceTarget ResolveReplaceTarget(const std::string& path);

// Gives `to` the permissions of `from`, if `from` exists.
void CopyPermissions(const std::string& from, const std::string& to);

std::uint64_t ReadProcessId();

}  // namespace vexor
