#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <algorithm>
#include <limits>

#include "platform/platform.h"

namespace vexor {

namespace {

// Not FILE_SHARE_DELETE: Windows then refuses to remove or rename a file that is open for writing.
constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE;

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

std::error_code ErrorUnless(BOOL succeeded) {
  return succeeded != 0 ? std::error_code() : LastError();
}

HANDLE Native(FileHandle handle) {
  return reinterpret_cast<HANDLE>(handle);  // NOLINT(performance-no-int-to-ptr)
}

DWORD DispositionOf(OpenMode mode) {
  if (mode == OpenMode::kAppend) return OPEN_ALWAYS;
  return mode == OpenMode::kCreate ? CREATE_NEW : CREATE_ALWAYS;
}

std::error_code OpenFile(const std::string& path, OpenMode mode, FileHandle& handle) {
  // With append access alone, every write goes to the end of the file, even if other processes
  // append to it. FlushFileBuffers accepts such a handle as well.
  const HANDLE opened =
      CreateFileA(path.c_str(), FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, kSharing,
                  nullptr, DispositionOf(mode), FILE_ATTRIBUTE_NORMAL, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return LastError();
  if (mode != OpenMode::kInPlace && GetFileType(opened) != FILE_TYPE_DISK) {
    CloseHandle(opened);
    return MakeError(PathFault::kNotRegular);
  }
  handle = reinterpret_cast<FileHandle>(opened);
  return {};
}

std::error_code AppendFile(FileHandle handle, std::string_view bytes, std::size_t& written) {
  const std::size_t most = std::numeric_limits<DWORD>::max();
  DWORD count = 0;
  const BOOL succeeded =
      ::WriteFile(Native(handle), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), most)),
                  &count, nullptr);
  written = count;
  return ErrorUnless(succeeded);
}

std::error_code FlushFile(FileHandle handle) {
  return ErrorUnless(FlushFileBuffers(Native(handle)));
}

std::error_code ReadStatus(FileHandle handle, FileStatus& status) {
  FILE_STANDARD_INFO found = {};
  if (GetFileInformationByHandleEx(Native(handle), FileStandardInfo, &found, sizeof found) == 0) {
    return LastError();
  }
  status.size = static_cast<std::uint64_t>(found.EndOfFile.QuadPart);
  status.removed = found.DeletePending != 0;
  return {};
}

// Reopens the file, as a handle with append access alone cannot truncate it.
std::error_code CutFile(FileHandle handle, std::uint64_t size) {
  const HANDLE writer = ReOpenFile(Native(handle), GENERIC_WRITE, kSharing, 0);
  if (writer == INVALID_HANDLE_VALUE) return LastError();
  LARGE_INTEGER position = {};
  position.QuadPart = static_cast<LONGLONG>(size);
  const bool cut =
      SetFilePointerEx(writer, position, nullptr, FILE_BEGIN) != 0 && SetEndOfFile(writer) != 0;
  const std::error_code error = ErrorUnless(cut ? TRUE : FALSE);
  CloseHandle(writer);
  return error;
}

void CloseFile(FileHandle handle) { CloseHandle(Native(handle)); }

// Nothing to do: FlushFileBuffers also flushes the file's directory entry.
std::error_code SyncName(const std::string& /*path*/) { return {}; }

std::error_code RenameFile(const std::string& from, const std::string& to) {
  return ErrorUnless(
      MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

void RemoveFile(const std::string& path) { DeleteFileA(path.c_str()); }

}  // namespace

constinit const FileCalls kSystemFileCalls = {
    .open = OpenFile,
    .write = AppendFile,
    .flush = FlushFile,
    .read_status = ReadStatus,
    .cut = CutFile,
    .close = CloseFile,
    .sync_name = SyncName,
    .rename = RenameFile,
    .remove = RemoveFile,
};

constinit const std::string_view kLineEnd = "\r\n";

constinit const bool kHasWindowsNames = true;

void UseSystemLineEnds(std::string& text) {
  std::string result;
  char before = '\0';
  for (const char c : text) {
    if (c == '\n' && before != '\r') result += '\r';
    result += c;
    before = c;
  }
  text = std::move(result);
}

LocalTime ReadLocalTime() {
  SYSTEMTIME now = {};
  ::GetLocalTime(&now);
  LocalTime time;
  time.calendar.tm_year = now.wYear - 1900;
  time.calendar.tm_mon = now.wMonth - 1;
  time.calendar.tm_mday = now.wDay;
  time.calendar.tm_wday = now.wDayOfWeek;
  time.calendar.tm_hour = now.wHour;
  time.calendar.tm_min = now.wMinute;
  time.calendar.tm_sec = now.wSecond;
  time.calendar.tm_isdst = -1;
  time.millisecond = now.wMilliseconds;
  return time;
}

std::uint64_t ReadPerformanceCounter() {
  constexpr std::uint64_t kNanoseconds = 1'000'000'000;
  LARGE_INTEGER ticks = {};
  LARGE_INTEGER frequency = {};
  QueryPerformanceCounter(&ticks);
  QueryPerformanceFrequency(&frequency);
  const auto count = static_cast<std::uint64_t>(ticks.QuadPart);
  const auto rate = static_cast<std::uint64_t>(frequency.QuadPart);
  return count / rate * kNanoseconds + count % rate * kNanoseconds / rate;
}

// Not with stat(): some C runtimes do not find a folder whose path ends with a separator.
bool HasFileStatus(const std::string& path) {
  return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string MakeAbsolute(const std::string& path) {
  const DWORD size = GetFullPathNameA(path.c_str(), 0, nullptr, nullptr);
  std::string absolute(size, '\0');
  const DWORD length = GetFullPathNameA(path.c_str(), size, absolute.data(), nullptr);
  if (length == 0 || length >= size) return path;
  absolute.resize(length);
  return absolute;
}

std::vector<std::string> ListFiles(const std::string& folder, std::error_code& error) {
  constexpr DWORD kNotRegular = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE;
  std::vector<std::string> names;
  error = folder.empty() ? std::make_error_code(std::errc::no_such_file_or_directory)
                         : CheckPath(folder);
  if (error) return names;
  // "C:" is the current folder of the drive; with a separator after it, it would be the root.
  const bool is_complete = std::string_view("/\\:").find(folder.back()) != std::string_view::npos;
  WIN32_FIND_DATAA entry = {};
  const HANDLE search = FindFirstFileA((folder + (is_complete ? "*" : "\\*")).c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    error = LastError();
    // Any other folder has at least the entry ".".
    if (error.value() == ERROR_FILE_NOT_FOUND) error.clear();  // the root of an empty drive
    return names;
  }
  do {
    if ((entry.dwFileAttributes & kNotRegular) == 0) names.emplace_back(entry.cFileName);
  } while (FindNextFileA(search, &entry) != 0);
  error = LastError();
  if (error.value() == ERROR_NO_MORE_FILES) error.clear();
  FindClose(search);
  std::sort(names.begin(), names.end());
  return names;
}

PathKind LookUpPath(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return PathKind::kMissing;
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return PathKind::kFolder;
  return (attributes & FILE_ATTRIBUTE_DEVICE) != 0 ? PathKind::kOther : PathKind::kRegularFile;
}

// With FILE_SHARE_DELETE, so that reading a log does not keep others from renaming or removing it.
std::error_code OpenReadFile(const std::string& path, FileHandle& handle) {
  if (LookUpPath(path) == PathKind::kFolder) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  const HANDLE opened = CreateFileA(path.c_str(), GENERIC_READ, kSharing | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return LastError();
  handle = reinterpret_cast<FileHandle>(opened);
  return {};
}

std::error_code ReadFileBytes(FileHandle handle, char* bytes, std::size_t size,
                              std::size_t& count) {
  const std::size_t most = std::numeric_limits<DWORD>::max();
  DWORD got = 0;
  const BOOL succeeded =
      ::ReadFile(Native(handle), bytes, static_cast<DWORD>(std::min(size, most)), &got, nullptr);
  count = got;
  if (succeeded != 0) return {};
  const DWORD error = GetLastError();
  const bool at_end = error == ERROR_HANDLE_EOF || error == ERROR_BROKEN_PIPE;
  return at_end ? std::error_code()
                : std::error_code(static_cast<int>(error), std::system_category());
}

std::error_code SeekReadFile(FileHandle handle, std::uint64_t offset) {
  LARGE_INTEGER position = {};
  position.QuadPart = static_cast<LONGLONG>(offset);
  return ErrorUnless(SetFilePointerEx(Native(handle), position, nullptr, FILE_BEGIN));
}

std::error_code IdentifyFile(FileHandle handle, FileIdentity& identity) {
  identity = {};
  if (GetFileType(Native(handle)) != FILE_TYPE_DISK) return {};
  BY_HANDLE_FILE_INFORMATION found = {};
  if (GetFileInformationByHandle(Native(handle), &found) == 0) return LastError();
  const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32U | low; };
  identity = {.device = found.dwVolumeSerialNumber,
              .file = join(found.nFileIndexHigh, found.nFileIndexLow),
              .size = join(found.nFileSizeHigh, found.nFileSizeLow),
              .regular = true};
  return {};
}

void CloseReadFile(FileHandle handle) { CloseFile(handle); }

std::error_code MakeFolder(const std::string& path) {
  if (const std::error_code error = CheckPath(path)) return error;
  if (CreateDirectoryA(path.c_str(), nullptr) != 0) return {};
  const std::error_code error = LastError();
  const DWORD attributes = GetFileAttributesA(path.c_str());
  const bool is_folder =
      attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return is_folder ? std::error_code() : error;
}

ReplaceTarget ResolveReplaceTarget(const std::string& path) {
  return {.path = path, .in_place = false, .refused = {}};
}

// Nothing to do: a new file inherits its permissions from the folder, as the old one did.
void CopyPermissions(const std::string& /*from*/, const std::string& /*to*/) {}

std::uint64_t ReadProcessId() { return GetCurrentProcessId(); }

}  // namespace vexor
