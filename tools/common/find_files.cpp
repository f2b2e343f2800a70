#include "common/find_files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "common/files.h"
#include "vexor/util/strings.h"

namespace tools {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kWildcards = "*?";

bool IsSeparator(char c) { return kSeparators.find(c) != std::string_view::npos; }

// Makes names that differ only in case equal if the system does not distinguish them.
std::string FoldCase(std::string_view name) {
  return kIsWindows ? StringToUpper(name) : std::string(name);
}

bool IsHidden(std::string_view name) { return name.starts_with('.'); }

// Returns the number of bytes of the first character. Names are UTF-8 on every system.
std::size_t FirstCharacter(std::string_view text) {
  const auto is_inner = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  const auto end = std::find_if_not(text.begin() + 1, text.end(), is_inner);
  return static_cast<std::size_t>(end - text.begin());
}

// Whether the pattern matches the whole name. Backtracks only to the last "*", so the time is at
// most the product of the lengths.
bool Matches(std::string_view pattern, std::string_view name) {
  std::string_view behind_star;
  std::string_view taken;  // the rest of the name after what the last "*" has matched
  bool has_star = false;
  while (!name.empty()) {
    if (pattern.starts_with('*')) {
      pattern.remove_prefix(1);
      behind_star = pattern;
      taken = name;
      has_star = true;
    } else if (pattern.starts_with('?')) {
      pattern.remove_prefix(1);
      name.remove_prefix(FirstCharacter(name));
    } else if (!pattern.empty() && pattern[0] == name[0]) {
      pattern.remove_prefix(1);
      name.remove_prefix(1);
    } else if (has_star) {
      taken.remove_prefix(FirstCharacter(taken));
      name = taken;
      pattern = behind_star;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*') == std::string_view::npos;
}

struct Entry {
  std::string name;
  bool is_folder;
  bool is_link;
  bool is_file;
};

// Returns the entries of a folder sorted by name; none if it cannot be read.
std::vector<Entry> ListFolder(const std::string& folder, std::error_code& error) {
  std::vector<Entry> entries;
  fs::directory_iterator entry(PathOf(folder), error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const std::u8string name = entry->path().filename().u8string();
    std::error_code unknown;
    entries.push_back({.name = {name.begin(), name.end()},
                       .is_folder = entry->is_directory(unknown),
                       .is_link = entry->is_symlink(unknown),
                       .is_file = entry->is_regular_file(unknown)});
  }
  std::ranges::sort(entries, {}, &Entry::name);
  return entries;
}

std::string Join(std::string folder, const std::string& name) {
  if (!folder.empty() && !IsSeparator(folder.back())) folder += '/';
  return folder += name;
}

void AddFolder(const std::string& folder, std::string_view extension,
               std::vector<FoundFile>& found) {
  std::error_code error;
  for (const Entry& entry : ListFolder(folder, error)) {
    const std::string path = Join(folder, entry.name);
    if (entry.is_folder) {
      if (!IsHidden(entry.name) && !entry.is_link) AddFolder(path, extension, found);
    } else if (entry.is_file && StringEndsWith(entry.name, extension, true)) {
      found.push_back({path, ""});
    }
  }
  if (error) {
    found.push_back({folder, "cannot be read: " + error.default_error_condition().message()});
  }
}

// Returns the names in a folder that match. Hidden ones match only a pattern that begins with ".".
std::vector<std::string> MatchNames(const std::string& folder, std::string_view pattern,
                                    bool folders_only) {
  std::vector<std::string> names;
  std::error_code ignored;
  for (Entry& entry : ListFolder(folder.empty() ? "." : folder, ignored)) {
    if (folders_only && !entry.is_folder) continue;
    if (IsHidden(entry.name) && !IsHidden(pattern)) continue;
    if (Matches(FoldCase(pattern), FoldCase(entry.name))) names.push_back(std::move(entry.name));
  }
  return names;
}

// Returns the paths that match. Each part of the pattern is matched against the names in a folder.
std::vector<std::string> MatchPaths(std::string_view pattern) {
  std::vector<std::string> paths = {""};
  while (!pattern.empty()) {
    const std::size_t end = std::min(pattern.find_first_of(kSeparators), pattern.size());
    const std::size_t next = std::min(pattern.find_first_not_of(kSeparators, end), pattern.size());
    const std::string_view piece = pattern.substr(0, end);
    const std::string_view separators = pattern.substr(end, next - end);
    const bool is_plain = piece.find_first_of(kWildcards) == std::string_view::npos;
    pattern.remove_prefix(next);
    std::vector<std::string> longer;
    for (const std::string& path : paths) {
      const auto names = is_plain ? std::vector<std::string>{std::string(piece)}
                                  : MatchNames(path, piece, !separators.empty());
      for (const std::string& name : names) longer.push_back((path + name).append(separators));
    }
    paths = std::move(longer);
  }
  std::erase_if(paths, [](const std::string& path) { return KindOf(path) == FileKind::kNone; });
  return paths;
}

void AddPath(const std::string& path, std::string_view extension, std::vector<FoundFile>& found) {
  if (path == "-" || KindOf(path) != FileKind::kFolder) {
    found.push_back({path, ""});
    return;
  }
  const std::size_t before = found.size();
  AddFolder(path, extension, found);
  if (found.size() == before) {
    found.push_back({path, "the folder holds no *" + std::string(extension) + " file"});
  }
}

bool IsWildcard(const std::string& argument) {
  return argument.find_first_of(kWildcards) != std::string::npos &&
         KindOf(argument) == FileKind::kNone;
}

}  // namespace

std::vector<std::string> ExpandWildcard(const std::string& argument) {
  if (!IsWildcard(argument)) return {argument};
  std::vector<std::string> paths = MatchPaths(argument);
  if (paths.empty()) paths.push_back(argument);
  return paths;
}

std::vector<FoundFile> FindFiles(const std::string& argument, std::string_view extension) {
  std::vector<FoundFile> found;
  if (!IsWildcard(argument)) {
    AddPath(argument, extension, found);
    return found;
  }
  for (const std::string& path : MatchPaths(argument)) AddPath(path, extension, found);
  if (found.empty()) found.push_back({argument, "no file matches"});
  return found;
}

}  // namespace tools
