#include "vexor/util/files.h"

#include <fstream>

#include "platform/platform.h"
#include "util/read_stream.h"
#include "util/standard_output.h"

namespace vexor {

namespace {

constexpr std::string_view kSeparators = "/\\";

std::size_t BaseNameAt(std::string_view path) {
  const std::size_t separator = path.find_last_of(kSeparators);
  return separator == std::string_view::npos ? 0 : separator + 1;
}

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Returns the number of the first line that contains the text and stores the line; 0 if none does.
std::int32_t FindInLines(std::istream& lines, std::string_view text, std::string& line) {
  std::string candidate;
  for (std::int32_t number = 1; ReadLine(lines, candidate); ++number) {
    if (!candidate.empty() && candidate.back() == '\r') candidate.pop_back();
    if (candidate.find(text) == std::string::npos) continue;
    line = std::move(candidate);
    return number;
  }
  return 0;
}

// Replaces "\r\n" and "\r" by "\n".
std::string UnifyLineEnds(std::string_view text) {
  std::string unified;
  unified.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool ends_line = text[i] == '\r';
    if (ends_line && i + 1 < text.size() && text[i + 1] == '\n') continue;
    unified += ends_line ? '\n' : text[i];
  }
  return unified;
}

// Makes a folder and has its name written to the disk: otherwise a power cut could take away the
// folder with flushed files in it. A folder that cannot be synchronised is no error.
std::error_code MakeLastingFolder(const std::string& folder) {
  const std::error_code error = MakeFolder(folder);
  if (!error) File::SyncName(folder);
  return error;
}

}  // namespace

std::error_code MakeFolders(const std::string& path) {
  const std::string folder = path.substr(0, path.find_last_not_of(kSeparators) + 1);
  if (folder.empty()) return {};  // the current folder or the root
  const std::error_code error = MakeLastingFolder(folder);
  if (error != std::errc::no_such_file_or_directory) return error;
  const std::string parent = GetFilePath(folder);
  if (parent.empty()) return error;
  const std::error_code parent_error = MakeFolders(parent);
  return parent_error ? parent_error : MakeLastingFolder(folder);
}

std::error_code SaveFile(const std::string& path, std::string_view content) {
  return ReplaceFileContent(path, content);
}

}  // namespace vexor

using namespace vexor;

bool DoesFileExist(const std::string& path) { return HasFileStatus(path); }

bool IsFileEmpty(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return file.peek() == std::ifstream::traits_type::eof();
}

std::string GetFileBaseName(std::string_view path) {
  return std::string(path.substr(BaseNameAt(path)));
}

std::string GetFilePath(std::string_view path) {
  return std::string(path.substr(0, BaseNameAt(path)));
}

bool FindLineInFile(const std::string& file, std::string_view text, std::string& line) {
  std::ifstream lines(file, std::ios::binary);
  if (!lines) {
    StandardOutput() << "can't open\n";
    return false;
  }
  return FindInLines(lines, text, line) > 0;
}

std::int32_t FindStrInFile(const std::string& file, std::string_view text) {
  std::ifstream lines(file, std::ios::binary);
  if (!lines) return -1;
  std::string line;
  return FindInLines(lines, text, line);
}

std::string ReadFile(const std::string& file, bool unify_line_ends) {
  std::ifstream stream(file, std::ios::binary);
  std::string bytes = ReadRest(stream);
  return unify_line_ends ? UnifyLineEnds(bytes) : bytes;
}

std::vector<std::string> GetFilesInFolder(const std::string& folder) { return ListFiles(folder); }

bool IsRelativePath(std::string_view path) {
  if (path.empty()) return true;
  if (kSeparators.find(path[0]) != std::string_view::npos) return false;
  const bool has_drive = path.size() > 2 && IsLetter(path[0]) && path[1] == ':';
  return !has_drive || kSeparators.find(path[2]) == std::string_view::npos;
}
