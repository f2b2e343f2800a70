#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "platform/platform.h"

namespace vexor {

namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

struct FreeMemory {
  void operator()(char* text) const { std::free(text); }
};

std::error_code LastError() { return {errno, std::system_category()}; }

int Descriptor(FileHandle handle) { return static_cast<int>(handle); }

// EINVAL means a special file, which has nothing to synchronise.
std::error_code FlushError() { return errno == EINVAL ? std::error_code() : LastError(); }

int FlagsOf(OpenMode mode) {
  constexpr int kFlags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY;
  if (mode == OpenMode::kAppend) return kFlags;
  return kFlags | (mode == OpenMode::kCreate ? O_EXCL : O_TRUNC);
}

// If the program runs with a standard stream closed, open() returns that stream's number, and what
// the program prints would end up in the file.
int MoveAboveStandardStreams(int descriptor) {
  if (descriptor < 0 || descriptor > STDERR_FILENO) return descriptor;
  const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const int error = errno;
  close(descriptor);
  errno = error;
  return moved;
}

std::error_code OpenFile(const std::string& path, OpenMode mode, FileHandle& handle) {
  constexpr mode_t kPermissions = 0666;
  // Checked before opening: open() of a pipe blocks until some program reads it.
  if (mode != OpenMode::kInPlace && LookUpPath(path) == PathKind::kOther) {
    return MakeError(PathFault::kNotRegular);
  }
  int descriptor = -1;
  do {
    descriptor = open(path.c_str(), FlagsOf(mode), kPermissions);
  } while (descriptor < 0 && errno == EINTR);
  descriptor = MoveAboveStandardStreams(descriptor);
  if (descriptor < 0) return LastError();
  handle = descriptor;
  return {};
}

std::error_code WriteFile(FileHandle handle, std::string_view bytes, std::size_t& written) {
  ssize_t count = -1;
  do {
    count = write(Descriptor(handle), bytes.data(), bytes.size());
  } while (count < 0 && errno == EINTR);
  if (count < 0) return LastError();
  written = static_cast<std::size_t>(count);
  return {};
}

std::error_code FlushFile(FileHandle handle) {
  int result = -1;
  do {
    result = fdatasync(Descriptor(handle));
  } while (result < 0 && errno == EINTR);
  return result < 0 ? FlushError() : std::error_code();
}

std::error_code ReadStatus(FileHandle handle, FileStatus& status) {
  struct stat found = {};
  if (fstat(Descriptor(handle), &found) < 0) return LastError();
  status.size = static_cast<std::uint64_t>(found.st_size);
  status.removed = found.st_nlink == 0;
  return {};
}

std::error_code CutFile(FileHandle handle, std::uint64_t size) {
  return ftruncate(Descriptor(handle), static_cast<off_t>(size)) < 0 ? LastError()
                                                                     : std::error_code();
}

void CloseFile(FileHandle handle) { close(Descriptor(handle)); }

// Synchronises the file's folder. Allocates nothing, as it may follow a rename: std::bad_alloc must
// not suggest that the file is unchanged.
std::error_code SyncName(const std::string& path) {
  const std::size_t length = path.find_last_of('/') + 1;  // 0 when there is none
  std::array<char, PATH_MAX> folder = {'.'};
  if (length >= folder.size()) return {ENAMETOOLONG, std::system_category()};
  std::copy_n(path.begin(), length, folder.begin());
  const int descriptor = open(folder.data(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return LastError();
  const std::error_code error = fsync(descriptor) < 0 ? FlushError() : std::error_code();
  close(descriptor);
  return error;
}

std::error_code RenameFile(const std::string& from, const std::string& to) {
  return rename(from.c_str(), to.c_str()) < 0 ? LastError() : std::error_code();
}

void RemoveFile(const std::string& path) { unlink(path.c_str()); }

}  // namespace

constinit const FileCalls kSystemFileCalls = {
    .open = OpenFile,
    .write = WriteFile,
    .flush = FlushFile,
    .read_status = ReadStatus,
    .cut = CutFile,
    .close = CloseFile,
    .sync_name = SyncName,
    .rename = RenameFile,
    .remove = RemoveFile,
};

constinit const std::string_view kLineEnd = "\n";

constinit const bool kHasWindowsNames = false;

void UseSystemLineEnds(std::string& /*text*/) {}

LocalTime ReadLocalTime() {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);
  LocalTime time;
  localtime_r(&now.tv_sec, &time.calendar);
  time.millisecond = static_cast<int>(now.tv_nsec / 1'000'000);
  return time;
}

std::uint64_t ReadPerformanceCounter() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000U +
         static_cast<std::uint64_t>(now.tv_nsec);
}

bool HasFileStatus(const std::string& path) {
  struct stat found = {};
  return stat(path.c_str(), &found) == 0;
}

std::string MakeAbsolute(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.string();
}

// Not with std::filesystem::directory_iterator, which ends the process if memory runs out.
std::vector<std::string> ListFiles(const std::string& folder, std::error_code& error) {
  std::vector<std::string> names;
  error = CheckPath(folder);
  if (error) return names;
  const std::unique_ptr<DIR, CloseFolder> opened(opendir(folder.c_str()));
  if (!opened) error = LastError();
  while (opened) {
    errno = 0;
    const dirent* const entry = readdir(opened.get());
    if (entry == nullptr) {
      if (errno != 0) error = LastError();
      break;
    }
    struct stat found = {};
    const bool has_status = fstatat(dirfd(opened.get()), entry->d_name, &found, 0) == 0;
    if (has_status && S_ISREG(found.st_mode)) names.emplace_back(entry->d_name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

PathKind LookUpPath(const std::string& path) {
  struct stat found = {};
  if (stat(path.c_str(), &found) != 0) return PathKind::kMissing;
  if (S_ISDIR(found.st_mode)) return PathKind::kFolder;
  return S_ISREG(found.st_mode) ? PathKind::kRegularFile : PathKind::kOther;
}

std::error_code OpenReadFile(const std::string& path, FileHandle& handle) {
  // O_NONBLOCK, because open() of a pipe would block until some program opens it for writing.
  int descriptor = -1;
  do {
    descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
  } while (descriptor < 0 && errno == EINTR);
  if (descriptor < 0) return LastError();
  struct stat found = {};
  if (fstat(descriptor, &found) == 0 && S_ISDIR(found.st_mode)) {
    close(descriptor);
    return std::make_error_code(std::errc::is_a_directory);
  }
  handle = descriptor;
  return {};
}

namespace {

bool IsPipe(int descriptor) {
  struct stat found = {};
  return fstat(descriptor, &found) == 0 && S_ISFIFO(found.st_mode);
}

enum class PipeEnd : std::uint8_t { kData, kClosed, kSilent };

// Waits until there is something to read, the last writer closes the pipe, or time is up.
PipeEnd WaitForPipe(int descriptor, int milliseconds) {
  pollfd wanted = {.fd = descriptor, .events = POLLIN, .revents = 0};
  int count = 0;
  do {
    count = poll(&wanted, 1, milliseconds);
  } while (count < 0 && errno == EINTR);
  if (count == 0) return PipeEnd::kSilent;
  return (wanted.revents & POLLIN) != 0 ? PipeEnd::kData : PipeEnd::kClosed;
}

}  // namespace

std::error_code ReadFileBytes(FileHandle handle, char* bytes, std::size_t size,
                              std::size_t& count) {
  constexpr int kForEver = -1;
  constexpr int kPatience = 2000;  // milliseconds for a program to open a pipe for writing
  const int descriptor = Descriptor(handle);
  bool was_silent = false;
  count = 0;
  while (true) {
    const ssize_t got = read(descriptor, bytes, size);
    if (got > 0) {
      count = static_cast<std::size_t>(got);
      return {};
    }
    if (got < 0 && errno == EINTR) continue;
    if (got < 0 && errno != EAGAIN) return LastError();
    if (got < 0) {  // EAGAIN: a program has the pipe open for writing but has written nothing yet
      WaitForPipe(descriptor, kForEver);
      continue;
    }
    if (size == 0 || !IsPipe(descriptor)) return {};
    // 0 from a pipe: no program has it open for writing, either not yet or not any more. Only the
    // second is the end of the data; poll() tells them apart by a hang-up.
    if (was_silent) return std::make_error_code(std::errc::broken_pipe);
    const PipeEnd end = WaitForPipe(descriptor, kPatience);
    if (end == PipeEnd::kClosed) return {};
    was_silent = end == PipeEnd::kSilent;
  }
}

std::error_code SeekReadFile(FileHandle handle, std::uint64_t offset) {
  return lseek(Descriptor(handle), static_cast<off_t>(offset), SEEK_SET) < 0 ? LastError()
                                                                             : std::error_code();
}

std::error_code IdentifyFile(FileHandle handle, FileIdentity& identity) {
  struct stat found = {};
  if (fstat(Descriptor(handle), &found) < 0) return LastError();
  identity = {.device = static_cast<std::uint64_t>(found.st_dev),
              .file = static_cast<std::uint64_t>(found.st_ino),
              .size = static_cast<std::uint64_t>(found.st_size),
              .regular = S_ISREG(found.st_mode)};
  return {};
}

void CloseReadFile(FileHandle handle) { CloseFile(handle); }

std::error_code MakeFolder(const std::string& path) {
  if (const std::error_code error = CheckPath(path)) return error;
  constexpr mode_t kPermissions = 0777;
  struct stat found = {};
  // mkdir first, stat after: another process may make the folder at the same time.
  if (mkdir(path.c_str(), kPermissions) == 0) return {};
  const std::error_code error = LastError();
  return stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode) ? std::error_code() : error;
}

ReplaceTarget ResolveReplaceTarget(const std::string& path) {
  ReplaceTarget target = {.path = path, .in_place = false, .refused = {}};
  struct stat found = {};
  if (stat(path.c_str(), &found) != 0) return target;
  target.in_place = !S_ISREG(found.st_mode);
  if (access(path.c_str(), W_OK) != 0) target.refused = LastError();
  const std::unique_ptr<char, FreeMemory> resolved(realpath(path.c_str(), nullptr));
  if (resolved) target.path = resolved.get();
  return target;
}

void CopyPermissions(const std::string& from, const std::string& to) {
  struct stat found = {};
  if (stat(from.c_str(), &found) == 0) chmod(to.c_str(), found.st_mode & ALLPERMS);
}

std::uint64_t ReadProcessId() { return static_cast<std::uint64_t>(getpid()); }

}  // namespace vexor
